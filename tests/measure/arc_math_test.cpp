#include "support/support.h"

using namespace qev;
using namespace test;

TEST(CalcArcParam, RoundTripsBetweenBulgeAndCentre) {
    for (Random random; random.Rounds(2000);) {
        const DPOINT2 start = random.Point(), end = random.Point();
        double bulge = random.Bulge();
        if (std::abs(bulge) < 1e-4) bulge = 1e-4; // a far centre cannot give it back to the last digits
        DPOINT2 centre, again;
        double radius = 0, from = 0, to = 0, back = 0;
        bool clockwise = false;
        ASSERT_TRUE(CalcArcParam(start, end, bulge, centre, radius, from, to));
        const double tolerance = 1e-10 * (100 + radius);
        EXPECT_POINT_NEAR(centre + math::Rotated({radius, 0}, from), start, tolerance);
        EXPECT_POINT_NEAR(centre + math::Rotated({radius, 0}, to), end, tolerance);
        ASSERT_TRUE(CalcArcParam(start, end, bulge, again, clockwise));
        EXPECT_EQ(clockwise, bulge < 0);
        EXPECT_POINT_NEAR(again, centre, 0);
        ASSERT_TRUE(CalcArcParam(start, end, centre, clockwise, back));
        EXPECT_NEAR(back / bulge, 1, 1e-7);
        double unfolded = 0, unfoldedEnd = 0, radiusAgain = 0;
        RetrieveArcInf(start, end, bulge, &again, &unfolded, &unfoldedEnd, &radiusAgain);
        EXPECT_EQ(from, unfoldedEnd > kTwoPi ? unfolded - kTwoPi : unfolded) << "only the upper side folds";
        EXPECT_NEAR(unfoldedEnd - unfolded, 4 * std::atan(bulge), 1e-12);
        EXPECT_EQ(radiusAgain, radius);
        DPOINT2 s = start, e = end; // inputs that are outputs too
        CalcArcParam(s, e, bulge, s, e.x, from, e.y);
        EXPECT_POINT_NEAR(s, centre, 0);
        EXPECT_POINT_NEAR(e, (DPOINT2{radius, to}), 0);
        s = start;
        RetrieveArcInf(s, end, bulge, &s, nullptr, nullptr, &bulge);
        EXPECT_POINT_NEAR((DPOINT2{s.x, bulge}), (DPOINT2{centre.x, radius}), 0);
    }
}

TEST(CalcArcParam, DegenerateArcs) {
    DPOINT2 centre{9, 9};
    double radius = 9, from = 9, to = 9;
    bool clockwise = false;
    const auto written = [&] { return std::vector{centre.x, centre.y, radius, from, to}; };
    for (const double bad : {0.0, 2e-10, kNaN, 1e12}) { // 1e12: the half angle's sine vanishes
        EXPECT_FALSE(CalcArcParam({0, 0}, {1, 0}, bad, centre, radius, from, to)) << bad;
        EXPECT_FALSE(CalcArcParam({0, 0}, {1, 0}, bad, centre, clockwise)) << bad;
        RetrieveArcInf({0, 0}, {1, 0}, bad, &centre, &from, &to, &radius);
        EXPECT_EQ(written(), std::vector<double>(5, 9)) << bad;
    }
    EXPECT_TRUE(CalcArcParam({3, 4}, {3, 4}, 0, centre, radius, from, to)) << "no chord";
    EXPECT_EQ(written(), (std::vector<double>{3, 4, 0, 0, 0}));
    EXPECT_TRUE(CalcArcParam({3, 4}, {3, 4}, 1, centre, clockwise));
    EXPECT_TRUE(clockwise) << "whatever the bulge of an arc without a chord says";
}

TEST(Angles, OfOneVector) {
    EXPECT_EQ(ComputeAngle(1, -1e-10), 0) << "so little below the axis lies on it";
    EXPECT_NEAR(ComputeAngle(1, -1e-8), kTwoPi, 2e-8) << "below the axis";
    EXPECT_EQ(ComputeAngle(-2, 0), kPi);
    for (const DPOINT2& none : {DPOINT2{0, 0}, {kNaN, 1}, {kInf, kInf}})
        EXPECT_EQ(ComputeAngle(none.x, none.y), 0);
}

TEST(Angles, BetweenTwoVectors) {
    for (Random random; random.Rounds(500);) {
        const double turn = random.Int(0, 9) == 0 ? 0 : random.Uniform(-3.14, 3.14);
        const DPOINT2 u = random.Point(), v = math::Rotated(u, turn) * 3;
        EXPECT_NEAR(GetAngleDir(u, v), turn, 1e-7);
        EXPECT_NEAR(GetAngle(u, v), std::abs(turn), 1e-7);
        EXPECT_NEAR(IntersectionAngle(u, v), turn, 1e-14);
    }
    EXPECT_EQ(IntersectionAngle({1, 0}, {-1, 0}), -kPi);
    EXPECT_TRUE(std::isnan(GetAngle({0, 0}, {1, 0})));
}
