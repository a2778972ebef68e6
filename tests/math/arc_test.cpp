#include <cmath>
#include <limits>

#include <qevmath/qevmath.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using math::BulgeArc;
using math::DPOINT2;
using math::kPi;

struct Solved {
    DPOINT2 centre;
    double radius = 0, start = 0, sweep = 0;
    bool ok = false;
};

Solved Solve(const BulgeArc& arc) {
    Solved s;
    s.ok = math::SolveArc(arc.start, arc.end, arc.bulge, s.centre, s.radius, s.start, s.sweep);
    return s;
}

BulgeArc RandomArc(test::Random& random) {
    return {random.Point(), random.Point(), random.Bulge()};
}

// The centre form is the oracle for the chord form while the centre is near.
TEST(Arc, ChordFormAgreesWithCentreForm) {
    test::Random random;
    for (int i = 0; i < 2000; ++i) {
        const BulgeArc arc = RandomArc(random);
        const Solved s = Solve(arc);
        ASSERT_TRUE(s.ok == (std::abs(arc.bulge) > 0.25e-9));
        const double tolerance = 1e-12 * (100 + s.radius);
        const double ratio = random.Uniform(0, 1);
        EXPECT_POINT_NEAR(arc.PointAt(ratio),
                          s.centre + math::Rotated({s.radius, 0}, s.start + ratio * s.sweep), tolerance);
        EXPECT_POINT_NEAR(arc.PointAt(0), arc.start, 0);
        EXPECT_POINT_NEAR(arc.PointAt(1), arc.end, 0);
        EXPECT_NEAR(arc.GetLength(), s.radius * std::abs(s.sweep), tolerance * (1 + std::abs(s.sweep)));
        EXPECT_NEAR(arc.GetCurvature() * s.radius, arc.bulge > 0 ? 1 : -1, 1e-12);
        const DPOINT2 forward = math::LeftOf(arc.PointAt(ratio) - s.centre) * (arc.bulge > 0 ? 1 : -1);
        EXPECT_POINT_NEAR(arc.DirectionAt(ratio), forward / s.radius, 1e-9);
    }
}

// With the sagitta chord*bulge/2, the middle of a nearly straight arc is known without any trigonometry.
TEST(Arc, NearlyStraightArcsLoseNothing) {
    for (double bulge = 2e-9; bulge < 1e-4; bulge *= 3) {
        const BulgeArc arc{{1e4, 1e4}, {1e4 + 100, 1e4}, bulge};
        EXPECT_NEAR(arc.PointAt(0.5).y - 1e4, -50 * bulge, 2e-12);
        EXPECT_NEAR(arc.PointAt(0.5).x, 1e4 + 50, 2e-12);
        EXPECT_NEAR(arc.GetLength() / 100 - 1, bulge * bulge * 2 / 3, 4e-16);
        EXPECT_NEAR(arc.GetFootRatio({1e4 + 25, 1e4 + 3}), 0.25 - 0.03 * bulge, 1e-3 * bulge);
        EXPECT_NEAR(arc.GetChordArea() / (100 * 100 * bulge / 3), 1, 1e-6);
    }
}

TEST(Arc, FootIsTheNearestSample) {
    test::Random random;
    for (int i = 0; i < 300; ++i) {
        const BulgeArc arc = RandomArc(random);
        const DPOINT2 p = random.Point(150);
        const double distance = math::D2GetDistance(p, arc.PointAt(arc.GetFootRatio(p)));
        const auto curve = [&](double r) { return arc.PointAt(r); };
        const double sampled = test::SampledDistance(curve, p, 2000);
        EXPECT_LE(distance, sampled + 1e-9);
        EXPECT_GE(distance, sampled - arc.GetLength() / 4000);
        test::ExpectBoxFits(arc.GetBounds(), curve, 2000,
                            arc.GetLength() * arc.GetLength() * std::abs(arc.GetCurvature()) / 3e7 + 1e-12);
        EXPECT_NEAR(arc.GetChordArea(), test::SampledArea(curve, 2000),
                    1e-5 * arc.GetLength() * arc.GetLength());
    }
}

TEST(Arc, SolveRefusesWhatIsNoArc) {
    for (const BulgeArc& arc : {BulgeArc{{1, 1}, {1, 1}, 1}, BulgeArc{{0, 0}, {0.9e-9, 0}, 1},
                                BulgeArc{{0, 0}, {1, 0}, 0}, BulgeArc{{0, 0}, {1, 0}, 2e-10},
                                BulgeArc{{test::kNaN, 0}, {1, 0}, 1}, BulgeArc{{0, 0}, {1, 0}, test::kNaN}}) {
        const Solved s = Solve(arc);
        EXPECT_FALSE(s.ok);
        EXPECT_EQ(std::abs(s.centre.x) + std::abs(s.centre.y) + s.radius + s.start + std::abs(s.sweep), 0);
    }
    const Solved half = Solve({{0, 0}, {2, 0}, -1});
    EXPECT_DOUBLE_EQ(half.start, kPi);
    EXPECT_DOUBLE_EQ(half.sweep, -kPi);
    EXPECT_POINT_NEAR(half.centre, (DPOINT2{1, 0}), 1e-15);
}

TEST(Arc, Membership) {
    const struct {
        DPOINT2 p;
        double start, central;
        bool ccw, inside;
    } cases[] = {
        {{10, 0}, 0, 1, true, true},          {{10.0000009, 0}, 0, 1, true, true},
        {{10.0000011, 0}, 0, 1, true, false}, {{0, 10}, 0, 1, true, false},
        {{0, 10}, 0, kPi / 2, true, true},    {{0, 10}, 0, kPi / 2, false, false},
        {{0, -10}, 0, kPi / 2, false, true},  {{10, -9e-7}, 0, 1, true, true},
        {{10, -2e-6}, 0, 1, true, false},     {{-10, 0}, 3, 7, true, true},
        {{0, 0}, 0, 7, true, false},          {{test::kNaN, 0}, 0, 7, true, false},
        {{10, 0}, 6.2, 0.2, true, true},      {{10, 0}, 0.1, 0.2, false, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(math::IsPointInArc(c.p, {0, 0}, 10, c.start, c.central, c.ccw), c.inside)
            << c.p.x << " " << c.p.y << " " << c.start;
}

TEST(Arc, HostileNumbersEnd) {
    const double values[] = {0, 1, -1, 1e-320, 1e300, -1e300, test::kInf, test::kNaN};
    for (const double a : values)
        for (const double b : values)
            for (const double bulge : {1e9, 1e-12, -1e300, test::kInf, test::kNaN}) {
                const BulgeArc arc{{a, b}, {b, a + 1}, bulge};
                (void)Solve(arc);
                (void)arc.GetBounds();
                (void)arc.GetChordArea();
                EXPECT_FALSE(arc.GetFootRatio({b, b}) < 0 || arc.GetFootRatio({b, b}) > 1);
                EXPECT_FALSE(arc.GetLength() < 0);
            }
    EXPECT_NEAR((BulgeArc{{0, 0}, {1, 0}, 1e9}).GetLength(), kPi * 0.5e9, 1);
}

} // namespace
