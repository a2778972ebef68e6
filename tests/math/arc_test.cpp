#include "support/support.h"

namespace {

struct Solved {
    explicit Solved(const BulgeArc& arc)
        : ok(math::SolveArc(arc.start, arc.end, arc.bulge, centre, radius, start, sweep)) {}
    DPOINT2 centre;
    double radius = 0, start = 0, sweep = 0;
    bool ok;
};

const auto RandomArc = [](Random& r) { return BulgeArc{r.Point(), r.Point(), r.Bulge()}; };

// The centre form is the oracle for the chord form while the centre is near.
TEST(Arc, ChordFormAgreesWithCentreForm) {
    for (Random random; random.Rounds(2000);) {
        const BulgeArc arc = RandomArc(random);
        const Solved s(arc);
        ASSERT_TRUE(s.ok == (std::abs(arc.bulge) > 0.25e-9));
        const double tolerance = 1e-12 * (100 + s.radius), ratio = random.Uniform(0, 1);
        const DPOINT2 spoke = math::Rotated({s.radius, 0}, s.start + ratio * s.sweep);
        EXPECT_POINT_NEAR(arc.PointAt(ratio), s.centre + spoke, tolerance);
        EXPECT_POINT_NEAR(arc.PointAt(0), arc.start, 0);
        EXPECT_POINT_NEAR(arc.PointAt(1), arc.end, 0);
        EXPECT_NEAR(arc.GetLength(), s.radius * std::abs(s.sweep), tolerance * (1 + std::abs(s.sweep)));
        EXPECT_NEAR(arc.GetCurvature() * s.radius, arc.bulge > 0 ? 1 : -1, 1e-12);
        const DPOINT2 left = math::LeftOf(spoke) / s.radius;
        EXPECT_POINT_NEAR(arc.DirectionAt(ratio), arc.bulge > 0 ? left : -left, 1e-9);
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

TEST(Arc, FootIsTheNearestSample) {
    for (Random random; random.Rounds(300);) {
        const BulgeArc arc = RandomArc(random);
        const DPOINT2 p = random.Point(150);
        const auto curve = [&](double r) { return arc.PointAt(r); };
        const double length = arc.GetLength(), square = length * length;
        ExpectFits(curve, 2000, p, arc.PointAt(arc.GetFootRatio(p)), arc.GetBounds(), arc.GetChordArea(),
                   {length / 4000, square * std::abs(arc.GetCurvature()) / 3e7 + 1e-12, 1e-5 * square});
    }
}

TEST(Arc, SolveRefusesWhatIsNoArc) {
    for (const auto& [row, start, end, bulge] : Rows<DPOINT2, DPOINT2, double>(
             "1,1 1,1 1; 0,0 0.9e-9,0 1; 0,0 1,0 0; 0,0 1,0 2e-10; nan,0 1,0 1; 0,0 1,0 nan")) {
        const Solved s({start, end, bulge});
        EXPECT_FALSE(s.ok);
        EXPECT_EQ(std::abs(s.centre.x) + std::abs(s.centre.y) + s.radius + s.start + std::abs(s.sweep), 0);
    }
    const Solved half({{0, 0}, {2, 0}, -1});
    EXPECT_TRUE(half.start == kPi && half.sweep == -kPi && half.centre.x == 1 && half.centre.y == 0);
}

// Point, start, central angle (7 and 1.5708 for the whole and a quarter), direction: on the circle of
// radius 10.
TEST(Arc, Membership) {
    for (const auto& [row, p, start, central, ccw, inside] : Rows<DPOINT2, double, double, bool, bool>(
             "10,0 0 1 1 1; 10.0000009,0 0 1 1 1; 10.0000011,0 0 1 1 0; 0,10 0 1 1 0; 0,10 0 1.5708 1 1;"
             "0,10 0 1.5708 0 0; 0,-10 0 1.5708 0 1; 10,-9e-7 0 1 1 1; 10,-2e-6 0 1 1 0; -10,0 3 7 1 1;"
             "0,0 0 7 1 0; nan,0 0 7 1 0; 10,0 6.2 0.2 1 1; 10,0 0.1 0.2 0 1"))
        EXPECT_EQ(math::IsPointInArc(p, {0, 0}, 10, start, central, ccw), inside) << row;
}

TEST(Arc, HostileNumbersEnd) {
    for (const double a : {0.0, 1.0, -1.0, 1e-320, 1e300, -1e300, kInf, kNaN})
        for (const double b : {0.0, 1.0, -1.0, 1e-320, 1e300, -1e300, kInf, kNaN})
            for (const double bulge : {1e9, 1e-12, -1e300, kInf, kNaN}) {
                const BulgeArc arc{{a, b}, {b, a + 1}, bulge};
                (void)(Solved(arc).radius + arc.GetBounds().lower.x + arc.GetChordArea());
                const double foot = arc.GetFootRatio({b, b});
                EXPECT_FALSE(foot < 0 || foot > 1 || arc.GetLength() < 0);
            }
    EXPECT_NEAR((BulgeArc{{0, 0}, {1, 0}, 1e9}).GetLength(), kPi * 0.5e9, 1);
}

} // namespace
