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
