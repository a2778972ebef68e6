#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Line, FootLiesOnTheInfiniteLine) {
    DPOINT2 foot;
    math::D2GetProjectionPoint({7, 5}, {0, 0}, {2, 0}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{7, 0}), 1e-15);
    math::D2GetProjectionPoint({7, 5}, {1, 1}, {1, 1}, foot);
    EXPECT_POINT_NEAR(foot, (DPOINT2{1, 1}), 0);
    EXPECT_EQ(math::GetLineFootRatio(math::NoPoint(), {0, 0}, {2, 0}), 0);
    DPOINT2 own{7, 5};
    math::D2GetProjectionPoint(own, {0, 0}, {2, 2}, own);
    EXPECT_POINT_NEAR(own, (DPOINT2{6, 6}), 1e-14);
}

TEST(Line, MembershipEndsAMillionthBeyondTheSegment) {
    struct Case {
        DPOINT2 point;
        bool isIn;
    };
    for (const Case& c :
         {Case{{1, 0}, true}, Case{{1, 0.9e-6}, true}, Case{{1, 1.1e-6}, false}, Case{{-0.9e-6, 0}, true},
          Case{{-1.1e-6, 0}, false}, Case{{3, 0}, false}, Case{math::NoPoint(), false}})
        EXPECT_EQ(math::IsPointInLine(c.point, {0, 0}, {2, 0}), c.isIn) << testing::PrintToString(c.point);
}
