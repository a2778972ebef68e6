#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Line, FootLiesOnTheInfiniteLine) {
    DPOINT2 foot;
    math::D2GetProjectionPoint({7, 5}, {1, 1}, {1, 1}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{1, 1}), 0);
    for (const DPOINT2& p : {math::NoPoint(), DPOINT2{0, 0}})
        EXPECT_EQ(1 / math::GetLineFootRatio(p, {0, 0}, {-2, -2}), kInf) << "a zero without a sign";
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
