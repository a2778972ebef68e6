#include <cmath>

#include <qevmath/qevmath.h>

#include <gp_Vec2d.hxx>
#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using math::DPOINT2;
using math::kPi;
using math::kTwoPi;

TEST(Angle, IsRegularizedIntoOneTurn) {
    test::Random random;
    for (int i = 0; i < 1000; ++i) {
        const double angle = random.Uniform(-100, 100);
        const double regular = math::RegularizeRadian(angle);
        EXPECT_GE(regular, 0);
        EXPECT_LT(regular, kTwoPi);
        EXPECT_NEAR(std::remainder(regular - angle, kTwoPi), 0, 1e-13);
    }
    EXPECT_EQ(math::RegularizeRadian(-1e-20), 0); // the sum would round to 2*pi
    EXPECT_EQ(math::RegularizeRadian(kTwoPi), 0);
    EXPECT_TRUE(std::isnan(math::RegularizeRadian(test::kInf)));
    EXPECT_LT(math::RegularizeRadian(1e300), kTwoPi);
}

TEST(Angle, NormalAngleCoversTheAxes) {
    const struct {
        DPOINT2 v;
        double angle;
    } cases[] = {{{0, 0}, 0},    {{2, 0}, 0},           {{0, 3}, kPi / 2},
                 {{-1, 0}, kPi}, {{-1, -0.0}, kPi},     {{0, -1}, 3 * kPi / 2},
                 {{1, -0.0}, 0}, {{1, -1}, 7 * kPi / 4}};
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(math::D2GetNormalAngle(c.v), c.angle);
        EXPECT_EQ(math::D2GetNormalAngle(c.v.x, c.v.y), math::D2GetNormalAngle(c.v));
    }
}

TEST(Angle, BetweenVectorsIsPreciseNearZeroAndPi) {
    EXPECT_NEAR(math::D2GetIncludeAngle(gp_Vec2d(1, 0), gp_Vec2d(1, 1e-9)), 1e-9, 1e-24);
    EXPECT_NEAR(math::D2GetIncludeAngle(gp_Vec2d(1, 0), gp_Vec2d(-1, -1e-9)), kPi - 1e-9, 1e-15);
    EXPECT_EQ(math::D2GetIncludeAngle(gp_Vec2d(0, 0), gp_Vec2d(1, 0)), 0);
    EXPECT_EQ(math::D2CrossMultiply(gp_Vec2d(2, 0), gp_Vec2d(1, 3)), 6);
    EXPECT_DOUBLE_EQ(math::AngleToRadian(-90), -kPi / 2);
}

TEST(Line, FootAndMembership) {
    DPOINT2 foot;
    math::D2GetProjectionPoint({7, 5}, {0, 0}, {2, 0}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{7, 0}), 1e-15);
    math::D2GetProjectionPoint({7, 5}, {1, 1}, {1, 1}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{1, 1}), 0);

    const struct {
        DPOINT2 p;
        bool inside;
    } cases[] = {{{1, 0}, true},        {{1, 0.9e-6}, true}, {{1, 1.1e-6}, false},    {{-0.9e-6, 0}, true},
                 {{-1.1e-6, 0}, false}, {{3, 0}, false},     {math::NoPoint(), false}};
    for (const auto& c : cases)
        EXPECT_EQ(math::IsPointInLine(c.p, {0, 0}, {2, 0}), c.inside) << c.p.x << " " << c.p.y;
}

TEST(Line, InterpolationMeetsBothEndsExactly) {
    test::Random random;
    for (int i = 0; i < 1000; ++i) {
        const DPOINT2 p = random.Point();
        const DPOINT2 q = random.Point(1e-5);
        EXPECT_POINT_NEAR(math::Interpolate(p, q, 0), p, 0);
        EXPECT_POINT_NEAR(math::Interpolate(p, q, 1), q, 0);
    }
}

} // namespace
