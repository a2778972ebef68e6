#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Rectangle, VerticesRunCounterClockwise) {
    const CCadRectangle turned({1, 1}, 4, 2, math::kHalfPi);
    const DPOINT2 vertices[] = {{1, 1}, {1, 5}, {-1, 5}, {-1, 1}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_POINT_NEAR(turned.GetVertex(i), vertices[i], 1e-15);
        EXPECT_POINT_NEAR(turned.GetSegment(i).ptEnd, vertices[(i + 1) % 4], 1e-15);
    }
    for (const int index : {-1, 4}) EXPECT_TRUE(math::IsNoPoint(turned.GetVertex(index))) << index;
    const CCadRectangle negative({0, 0}, -4, -2);
    EXPECT_POINT_NEAR(negative.GetVertex(0), (DPOINT2{-4, -2}), 0);
}
