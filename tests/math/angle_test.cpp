#include <gp_Vec2d.hxx>

#include "support/support.h"

TEST(Angle, IsRegularizedIntoOneTurn) {
    for (Random random; random.Rounds(1000);) {
        const double angle = random.Uniform(-100, 100), regular = math::RegularizeRadian(angle);
        EXPECT_TRUE(regular >= 0 && regular < kTwoPi) << angle;
        EXPECT_NEAR(std::remainder(regular - angle, kTwoPi), 0, 1e-13);
    }
    for (const double whole : {-1e-20, kTwoPi}) EXPECT_EQ(math::RegularizeRadian(whole), 0); // not 2*pi
    EXPECT_TRUE(std::isnan(math::RegularizeRadian(kInf)) && math::RegularizeRadian(1e300) < kTwoPi);
}

// The angle in quarters of pi.
TEST(Angle, NormalAngleCoversTheAxes) {
    for (const auto& [row, v, quarters] :
         Rows<DPOINT2, double>("0,0 0; 2,0 0; 0,3 2; -1,0 4; -1,-0 4; 0,-1 6; 1,-0 0; 1,-1 7"))
        EXPECT_DOUBLE_EQ(math::D2GetNormalAngle(v), quarters * kPi / 4) << row;
}

TEST(Angle, BetweenVectorsIsPreciseNearZeroAndPi) {
    EXPECT_NEAR(math::D2GetIncludeAngle(gp_Vec2d(1, 0), gp_Vec2d(1, 1e-9)), 1e-9, 1e-24);
    EXPECT_NEAR(math::D2GetIncludeAngle(gp_Vec2d(1, 0), gp_Vec2d(-1, -1e-9)), kPi - 1e-9, 1e-15);
    EXPECT_EQ(math::D2GetIncludeAngle(gp_Vec2d(0, 0), gp_Vec2d(1, 0)), 0);
    EXPECT_EQ(math::D2CrossMultiply(gp_Vec2d(2, 0), gp_Vec2d(1, 3)), 6);
    EXPECT_DOUBLE_EQ(math::AngleToRadian(-90), -kPi / 2);
}

TEST(Line, FootMembershipAndInterpolation) {
    DPOINT2 foot;
    math::D2GetProjectionPoint({7, 5}, {0, 0}, {2, 0}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{7, 0}), 1e-15);
    math::D2GetProjectionPoint({7, 5}, {1, 1}, {1, 1}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{1, 1}), 0);

    for (const auto& [row, p, inside] :
         Rows<DPOINT2, bool>("1,0 1; 1,0.9e-6 1; 1,1.1e-6 0; -0.9e-6,0 1; -1.1e-6,0 0; 3,0 0; none 0"))
        EXPECT_EQ(math::IsPointInLine(p, {0, 0}, {2, 0}), inside) << row;
    for (Random random; random.Rounds(1000);) {
        const DPOINT2 p = random.Point(), q = random.Point(1e-5); // both ends are met exactly
        EXPECT_POINT_NEAR(math::Interpolate(p, q, 0), p, 0);
        EXPECT_POINT_NEAR(math::Interpolate(p, q, 1), q, 0);
    }
}
