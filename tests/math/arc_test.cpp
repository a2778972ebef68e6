#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

BulgeArc RandomArc(Random& random) {
    const DPOINT2 start = random.Point();
    const DPOINT2 end = random.Point();
    return {start, end, random.Bulge()};
}

// The centre form is the oracle for the chord form while the centre is near.
TEST(Arc, ChordFormAgreesWithCentreForm) {
    for (Random random; random.Rounds(2000);) {
        const BulgeArc arc = RandomArc(random);
        const auto solved = math::SolveCentreArc(arc.start, arc.end, arc.bulge);
        ASSERT_TRUE(solved) << arc.bulge;
        const double tolerance = 1e-12 * (100 + solved->radius);
        const double ratio = random.Uniform(0, 1);
        const double side = arc.bulge > 0 ? 1 : -1;
        const DPOINT2 spoke = math::Rotated({solved->radius, 0}, solved->startAngle + ratio * solved->sweep);
        EXPECT_POINT_NEAR(arc.PointAt(ratio), solved->centre + spoke, tolerance);
        EXPECT_POINT_NEAR(arc.PointAt(0), arc.start, 0);
        EXPECT_POINT_NEAR(arc.PointAt(1), arc.end, 0);
        EXPECT_NEAR(arc.GetLength(), solved->radius * std::abs(solved->sweep),
                    tolerance * (1 + std::abs(solved->sweep)));
        EXPECT_NEAR(arc.GetCurvature() * solved->radius, side, 1e-12);
        const double square = solved->radius * solved->radius, area = solved->sweep - std::sin(solved->sweep);
        EXPECT_NEAR(arc.GetChordArea(), square / 2 * area, 1e-14 * square) << arc.bulge;
        EXPECT_POINT_NEAR(arc.DirectionAt(ratio), math::LeftOf(spoke) * (side / solved->radius), 1e-9);
    }
}

// With the sagitta chord*bulge/2, the middle of a nearly straight arc is known without any trigonometry.
TEST(Arc, NearlyStraightArcsLoseNothing) {
    for (double bulge = 2e-9; bulge < 1e-4; bulge *= 3) {
        const BulgeArc arc{{1e4, 1e4}, {1e4 + 100, 1e4}, bulge};
        EXPECT_POINT_NEAR(arc.PointAt(0.5) - arc.start, (DPOINT2{50, -50 * bulge}), 3e-12);
        EXPECT_NEAR(arc.GetLength() / 100 - 1, bulge * bulge * 2 / 3, 4e-16);
        EXPECT_NEAR(arc.GetFootRatio({1e4 + 25, 1e4 + 3}), 0.25 - 0.03 * bulge, 1e-3 * bulge);
        EXPECT_NEAR(arc.GetChordArea() / (100 * 100 * bulge / 3), 1, 1e-6);
    }
}

// An arc of any bulge holds the points that it answers, at their ratios, and nothing beside it.
TEST(Arc, HoldsItsOwnPoints) {
    constexpr double kNear = 1e-6; // mm
    for (Random random; random.Rounds(5000);) {
        const double chord = std::pow(10, random.Uniform(-3, 4));
        const double bulge = std::pow(10, random.Uniform(-9, 9)) * (random.Coin() ? 1 : -1);
        const DPOINT2 start = random.Point(1e4);
        const BulgeArc arc{start, start + math::Rotated({chord, 0}, random.Uniform(0, 7)), bulge};
        const double ratio = random.Uniform(0, 1);
        const DPOINT2 p = arc.PointAt(ratio);
        const DPOINT2 normal = math::LeftOf(arc.DirectionAt(ratio));
        SCOPED_TRACE(testing::Message() << "chord " << chord << ", bulge " << bulge << ", ratio " << ratio);
        EXPECT_TRUE(arc.IsWithin(p, 0));
        EXPECT_NEAR(arc.GetFootRatio(p), ratio, 2e-15 + 4e-12 / arc.GetLength());
        EXPECT_EQ(arc.GetFootRatio(arc.start), 0);
        EXPECT_EQ(arc.GetFootRatio(arc.end), 1);
        EXPECT_EQ(arc.GetFootRatio(arc.start - arc.DirectionAt(0) * (chord * 0.01)), 0) << "before it";
        EXPECT_EQ(arc.GetFootRatio(arc.end + arc.DirectionAt(1) * (chord * 0.01)), 1) << "behind it";
        if (arc.GetLength() > 1e7) continue; // there coordinates cannot tell the distances below apart
        EXPECT_TRUE(arc.IsWithin(p + normal * (0.9 * kNear), kNear));
        EXPECT_FALSE(arc.IsWithin(p + normal * (1.1 * kNear), kNear));
        EXPECT_FALSE(arc.IsWithin(arc.end + arc.DirectionAt(1) * (1.1 * kNear), kNear));
    }
}

TEST(Arc, FootBoxAndAreaAgainstSamples) {
    for (Random random; random.Rounds(300);) {
        const BulgeArc arc = RandomArc(random);
        const DPOINT2 p = random.Point(150);
        const auto curve = [&](double r) { return arc.PointAt(r); };
        EXPECT_LE(arc.GetBounds().GetSquaredDistance(arc.PointAt(0.3)), 1e-20) << "the box holds it";
        const double length = arc.GetLength();
        const double square = length * length;
        ExpectFits(curve, 2000, p, arc.PointAt(arc.GetFootRatio(p)), arc.GetBounds(), arc.GetChordArea(),
                   {length / 4000, square * std::abs(arc.GetCurvature()) / 3e7 + 1e-12, 1e-5 * square});
    }
}

TEST(Arc, SolveArcHandsOutTheCentreFormOrZeros) {
    DPOINT2 centre{7, 7};
    double radius = 7, start = 7, sweep = 7;
    const auto solved = [&](double bulge) {
        const bool isArc = math::SolveArc({0, 0}, {2, 0}, bulge, centre, radius, start, sweep);
        return std::tuple(isArc, centre.x, centre.y, radius, start, sweep);
    };
    EXPECT_EQ(solved(-1), std::tuple(true, 1.0, 0.0, 1.0, kPi, -kPi));
    EXPECT_EQ(solved(0), std::tuple(false, 0.0, 0.0, 0.0, 0.0, 0.0));
    DPOINT2 own{0, 0}; // the start and the centre
    math::SolveArc(own, {2, 0}, -1, own, radius, start, sweep);
    EXPECT_EQ(std::tuple(own.x, radius, start, sweep), std::tuple(1.0, 1.0, kPi, -kPi));
}

TEST(Arc, Membership) {
    const auto isIn = [](const DPOINT2& p, double start, double central, bool ccw = true) {
        return math::IsPointInArc(p, {0, 0}, 10, start, central, ccw);
    };
    EXPECT_TRUE(isIn({0, -10}, 0, 1.5707963, false)) << "at the end, clockwise";
    EXPECT_TRUE(isIn({10.0000009, 0}, 0, 1)) << "within the tolerance of the circle";
    EXPECT_FALSE(isIn({10.0000011, 0}, 0, 1)) << "off the circle";
    EXPECT_TRUE(isIn({10, -9e-7}, 0, 1)) << "within the tolerance of the start";
    EXPECT_FALSE(isIn({10, -2e-6}, 0, 1)) << "before the start";
    EXPECT_FALSE(isIn({kNaN, 0}, 0, 7)) << "on a whole circle";
    EXPECT_TRUE(isIn({10, 0}, 0.1, 0.2, false)) << "past the angle 0, clockwise";
}

TEST(Arc, HostileNumbersEnd) {
    for (const double a : {0.0, 1.0, -1.0, 1e-320, 1e300, -1e300, kInf, kNaN})
        for (const double b : {0.0, 1.0, -1.0, 1e-320, 1e300, -1e300, kInf, kNaN})
            for (const double bulge : {1e9, 1e-12, -1e300, kInf, kNaN}) {
                const BulgeArc arc{{a, b}, {b, a + 1}, bulge};
                EXPECT_LE(std::abs(arc.GetFootRatio({b, b}) - 0.5), 0.5) << a << ' ' << b << ' ' << bulge;
                EXPECT_FALSE(arc.IsWithin({kNaN, b}, 1)) << a << ' ' << b << ' ' << bulge;
                const BulgeArc point{{1, 1}, {1, 1}, bulge};
                EXPECT_POINT_NEAR(point.PointAt(a), (DPOINT2{1, 1}), 0) << a << ' ' << bulge;
                EXPECT_EQ(point.GetFootRatio({a, b}) + point.GetLength() + point.GetChordArea(), 0) << bulge;
                const BulgeArc endless{{0, 0}, {1e300, 0}, bulge};
                EXPECT_EQ(endless.IsWithin({0, 0}, 0), std::isfinite(bulge)) << bulge;
                EXPECT_FALSE(endless.IsWithin({5, 5}, 1)) << bulge;
            }
    EXPECT_NEAR((BulgeArc{{0, 0}, {1, 0}, 1e9}).GetLength(), kPi * 0.5e9, 1);
}

} // namespace
