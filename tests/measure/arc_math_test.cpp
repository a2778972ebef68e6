#include "support/support.h"

using namespace qev;
using namespace test;

constexpr double kQuarter = kPi / 2;

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
        EXPECT_NEAR(to - from, 4 * std::atan(bulge), 1e-12);
        EXPECT_LE(to, kTwoPi);
        ASSERT_TRUE(CalcArcParam(start, end, bulge, again, clockwise));
        EXPECT_EQ(clockwise, bulge < 0);
        EXPECT_POINT_NEAR(again, centre, 0);
        ASSERT_TRUE(CalcArcParam(start, end, centre, clockwise, back));
        EXPECT_NEAR(back / bulge, 1, 1e-7);
        double unfolded = 0, unfoldedEnd = 0, radiusAgain = 0;
        RetrieveArcInf(start, end, bulge, &again, &unfolded, &unfoldedEnd, &radiusAgain);
        EXPECT_NEAR(std::remainder(unfolded - from, kTwoPi), 0, 1e-12);
        EXPECT_NEAR(unfoldedEnd - unfolded, 4 * std::atan(bulge), 1e-12);
        EXPECT_GE(unfolded, 0);
        EXPECT_EQ(radiusAgain, radius);
    }
}

// The angles in quarter turns: those of CalcArcParam, and the start as RetrieveArcInf leaves it.
TEST(CalcArcParam, FoldsOnlyTheUpperSide) {
    for (const auto& [name, start, end, bulge, expectedFrom, expectedTo, expectedUnfolded] :
         Table<const char*, DPOINT2, DPOINT2, double, double, double, double>{
             {"ends at a whole turn", {0, 0}, {2, 0}, 1, 2, 4, 2},
             {"clockwise down to 0", {0, 0}, {2, 0}, -1, 2, 0, 2},
             {"beyond a whole turn", {0, -1}, {0, 1}, 1, -1, 1, 3},
             {"clockwise below 0", {1, 0}, {0, -1}, -std::tan(kPi / 8), 0, -1, 0}}) {
        SCOPED_TRACE(name);
        DPOINT2 centre;
        double radius = 0, from = 0, to = 0, unfolded = 0;
        ASSERT_TRUE(CalcArcParam(start, end, bulge, centre, radius, from, to));
        RetrieveArcInf(start, end, bulge, nullptr, &unfolded, nullptr, nullptr);
        EXPECT_NEAR(from / kQuarter, expectedFrom, 1e-12);
        EXPECT_NEAR(to / kQuarter, expectedTo, 1e-12);
        EXPECT_NEAR(unfolded / kQuarter, expectedUnfolded, 1e-12);
    }
}

TEST(CalcArcParam, DegenerateArcs) {
    DPOINT2 centre{9, 9};
    double radius = 9, from = 9, to = 9, bulge = 9;
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
    EXPECT_TRUE(CalcArcParam({1, 0}, {2, 0}, {0, 0}, true, bulge));
    EXPECT_EQ(bulge, 0) << "the centre sees both ends in one direction";
}

TEST(Angles, OfOneVector) {
    for (Random random; random.Rounds(500);) {
        const double angle = random.Uniform(0, kTwoPi);
        const DPOINT2 v = math::Rotated({random.Uniform(1, 100), 0}, angle);
        EXPECT_NEAR(ComputeAngle(v.x, v.y), angle, 1e-7);
    }
    EXPECT_EQ(ComputeAngle(1, -1e-10), 0) << "so little below the axis lies on it";
    EXPECT_NEAR(ComputeAngle(1, -1e-8), kTwoPi, 2e-8) << "below the axis";
    EXPECT_EQ(ComputeAngle(-2, 0), kPi);
    for (const DPOINT2& none : {DPOINT2{0, 0}, {kNaN, 1}}) EXPECT_EQ(ComputeAngle(none.x, none.y), 0);
}

TEST(Angles, BetweenTwoVectors) {
    for (Random random; random.Rounds(500);) {
        const double turn = random.Uniform(-3.14, 3.14);
        const DPOINT2 u = random.Point(), v = math::Rotated(u, turn) * 3;
        EXPECT_NEAR(GetAngleDir(u, v), turn, 1e-7);
        EXPECT_NEAR(GetAngle(u, v), std::abs(turn), 1e-7);
    }
    EXPECT_EQ(GetAngleDir({1, 0}, {-1, 0}), kPi);
    EXPECT_TRUE(std::isnan(GetAngle({0, 0}, {1, 0})));
}
