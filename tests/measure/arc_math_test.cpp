#include "support/support.h"

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
        EXPECT_TRUE(std::abs(to - from - 4 * std::atan(bulge)) < 1e-12 && to <= kTwoPi);
        ASSERT_TRUE(CalcArcParam(start, end, bulge, again, clockwise));
        EXPECT_EQ(clockwise, bulge < 0);
        EXPECT_POINT_NEAR(again, centre, 0);
        EXPECT_TRUE(CalcArcParam(start, end, centre, clockwise, back) && std::abs(back / bulge - 1) < 1e-7);
        double unfolded = 0, unfoldedEnd = 0;
        RetrieveArcInf(start, end, bulge, &again, &unfolded, &unfoldedEnd, nullptr);
        EXPECT_TRUE(std::abs(std::remainder(unfolded - from, kTwoPi)) < 1e-12 && unfolded >= 0);
    }
}

// Start, end, bulge, both angles and the unfolded one, in eighths of pi.
TEST(CalcArcParam, FoldsOnlyTheUpperSide) {
    for (const auto& [row, start, end, bulge, from, to, unfolded] :
         Rows<DPOINT2, DPOINT2, double, double, double, double>(
             "0,0 2,0 1 8 16 8; 0,0 2,0 -1 8 0 8; 0,-1 0,1 1 -4 4 12; "
             "1,0 0,-1 -0.41421356237309503 0 -4 0")) {
        DPOINT2 centre;
        double radius = 0, first = 0, last = 0, above = 0;
        ASSERT_TRUE(CalcArcParam(start, end, bulge, centre, radius, first, last));
        RetrieveArcInf(start, end, bulge, nullptr, &above, nullptr, nullptr);
        EXPECT_POINT_NEAR((DPOINT2{first, last}), (DPOINT2{from, to} * kPi / 8), 1e-12) << row;
        EXPECT_NEAR(above, unfolded * kPi / 8, 1e-12) << row;
    }
}

TEST(CalcArcParam, DegenerateArcs) {
    DPOINT2 centre{9, 9};
    double radius = 9, from = 9, to = 9, bulge = 9;
    bool clockwise = false;
    for (const double bad : {0.0, 2e-10, kNaN, 1e12}) { // 1e12: the half angle's sine vanishes
        EXPECT_FALSE(CalcArcParam({0, 0}, {1, 0}, bad, centre, radius, from, to));
        EXPECT_FALSE(CalcArcParam({0, 0}, {1, 0}, bad, centre, clockwise));
        RetrieveArcInf({0, 0}, {1, 0}, bad, &centre, &from, &to, &radius);
    }
    EXPECT_EQ(centre.x + radius + from + to, 36) << "nothing was written";
    EXPECT_TRUE(CalcArcParam({3, 4}, {3, 4}, 0, centre, radius, from, to) && centre.x == 3);
    EXPECT_EQ(radius + from + to, 0);
    EXPECT_TRUE(CalcArcParam({3, 4}, {3, 4}, 1, centre, clockwise) && clockwise);
    EXPECT_TRUE(CalcArcParam({1, 0}, {2, 0}, {0, 0}, true, bulge) && bulge == 0);
}

TEST(Angles, OfVectors) {
    for (const auto& [row, v, quarters] : Rows<DPOINT2, double>(
             "1,0 0; 0,0 0; 0,-1 6; 1,-1e-10 0; 1,-1e-8 8; -1,-1e-10 4; -2,0 4; 0,5 2; nan,1 0"))
        EXPECT_NEAR(ComputeAngle(v.x, v.y), quarters * kPi / 4, 2e-8) << row;
    EXPECT_EQ(ComputeAngle(1, -1e-10), 0);
    for (Random random; random.Rounds(500);) {
        const DPOINT2 u = random.Point();
        const double turn = random.Uniform(-3.14, 3.14);
        const DPOINT2 v = math::Rotated(u, turn) * 3;
        EXPECT_NEAR(GetAngleDir(u, v), turn, 1e-7);
        EXPECT_NEAR(IntersectionAngle(u, v), turn, 1e-14);
        EXPECT_NEAR(GetAngle(u, v), std::abs(turn), 1e-7);
    }
    EXPECT_TRUE(GetAngleDir({1, 0}, {-1, 0}) == kPi && IntersectionAngle({1, 0}, {-1, 0}) == -kPi);
    EXPECT_TRUE(std::isnan(GetAngle({0, 0}, {1, 0})));
}
