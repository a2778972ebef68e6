#include <gp_Vec2d.hxx>

#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Angle, IsRegularizedIntoOneTurn) {
    for (Random random; random.Rounds(1000);) {
        const double angle = random.Uniform(-100, 100);
        const double regular = math::RegularizeRadian(angle);
        EXPECT_GE(regular, 0) << angle;
        EXPECT_LT(regular, kTwoPi) << angle;
        EXPECT_NEAR(std::remainder(regular - angle, kTwoPi), 0, 1e-13) << angle;
    }
    for (const double whole : {-1e-20, kTwoPi}) EXPECT_EQ(math::RegularizeRadian(whole), 0) << "not 2*pi";
    EXPECT_LT(math::RegularizeRadian(1e300), kTwoPi);
    EXPECT_TRUE(std::isnan(math::RegularizeRadian(kInf)));
}

TEST(Angle, NormalAngleCoversTheAxes) {
    EXPECT_EQ(math::D2GetNormalAngle({0, 0}), 0);
    EXPECT_EQ(math::D2GetNormalAngle({1, -0.0}), 0);
    EXPECT_EQ(math::D2GetNormalAngle({-1, -0.0}), kPi);
    EXPECT_EQ(math::D2GetNormalAngle({0, -1}), 1.5 * kPi);
}

TEST(Angle, BetweenVectorsIsPreciseNearZeroAndPi) {
    const gp_Vec2d east(1, 0);
    EXPECT_NEAR(math::D2GetIncludeAngle(east, gp_Vec2d(1, 1e-9)), 1e-9, 1e-24);
    EXPECT_NEAR(math::D2GetIncludeAngle(east, gp_Vec2d(-1, -1e-9)), kPi - 1e-9, 1e-15);
    EXPECT_EQ(math::D2GetIncludeAngle(gp_Vec2d(0, 0), east), 0);
    EXPECT_EQ(math::D2CrossMultiply(gp_Vec2d(2, 0), gp_Vec2d(1, 3)), 6);
}

TEST(Line, FootLiesOnTheInfiniteLine) {
    DPOINT2 foot;
    math::D2GetProjectionPoint({7, 5}, {1, 1}, {1, 1}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{1, 1}), 0);
    EXPECT_EQ(math::GetLineFootRatio(math::NoPoint(), {0, 0}, {2, 0}), 0);
    DPOINT2 own{7, 5};
    math::D2GetProjectionPoint(own, {0, 0}, {2, 2}, own);
    EXPECT_POINT_NEAR(own, (DPOINT2{6, 6}), 1e-14);
}

TEST(Line, MembershipEndsAMillionthBeyondTheSegment) {
    for (const DPOINT2& in : {DPOINT2{1, 0.9e-6}, {-0.9e-6, 0}})
        EXPECT_TRUE(math::IsPointInLine(in, {0, 0}, {2, 0})) << testing::PrintToString(in);
    for (const DPOINT2& off : {DPOINT2{1, 1.1e-6}, {-1.1e-6, 0}, {3, 0}, math::NoPoint()})
        EXPECT_FALSE(math::IsPointInLine(off, {0, 0}, {2, 0})) << testing::PrintToString(off);
}
