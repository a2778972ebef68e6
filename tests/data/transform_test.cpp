#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Transform, RotatesAndMirrorsPoints) {
    EXPECT_POINT_NEAR(RotatePoint({2, 1}, {1, 1}, kPi / 2), (DPOINT2{1, 2}), 1e-15);
    EXPECT_POINT_NEAR(GetMirrorPoint({2, 0}, {5, 5}, kPi / 4), (DPOINT2{0, 2}), 1e-14);
    EXPECT_POINT_NEAR(GetMirrorPoint({2, 3}, {0, 1}, 0), (DPOINT2{2, -1}), 1e-15);
}
