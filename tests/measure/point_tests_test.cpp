#include "support/support.h"

using namespace qev;
using namespace test;

TEST(PointTests, Rectangle) {
    const CCadRectangle rectangle({1, 1}, 4, 2, 0);
    for (const DPOINT2& p : {DPOINT2{3, 2}, {1, 1}, {5, 3}, {3, 3}, {3, 3 + 5e-10}})
        EXPECT_TRUE(IsPointInRectangle(p, &rectangle)) << testing::PrintToString(p);
    for (const DPOINT2& p : {DPOINT2{3, 3.000001}, {0.999999, 2}, {5.000001, 2}, {3, 0.999999}})
        EXPECT_FALSE(IsPointInRectangle(p, &rectangle)) << testing::PrintToString(p);
    EXPECT_FALSE(IsPointInRectangle(math::NoPoint(), &rectangle));
}

TEST(PointTests, LineAndArc) {
    const CCadLine line({0, 0}, {1, 0});
    EXPECT_TRUE(IsPointInLine({0.5, 0}, &line));
    const CCadArc upper = GetCadArcFromSeg(SEGMENT({0, 0}, {2, 0}, -1));
    EXPECT_TRUE(IsPointInArc({1, 1}, &upper));
    EXPECT_FALSE(IsPointInArc({1, -1}, &upper));
}

TEST(PointTests, IntersectionAngleIsSigned) {
    for (Random random; random.Rounds(500);) {
        const double turn = random.Uniform(-3.14, 3.14);
        const DPOINT2 u = random.Point();
        EXPECT_NEAR(IntersectionAngle(u, math::Rotated(u, turn) * 3), turn, 1e-14);
    }
    EXPECT_EQ(IntersectionAngle({1, 0}, {-1, 0}), -kPi);
}
