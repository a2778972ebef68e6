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
