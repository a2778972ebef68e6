#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Ranges = std::vector<PosRange>;

TEST(Ranges, HostileOnes) {
    SortRange(nullptr);
    CombineRange(nullptr, 4);
    Ranges hostile{{{INT_MIN, kNaN}, {0, kInf}}, {{INT_MAX, 7}, {-1, -kInf}}};
    CombineRange(&hostile, INT_MIN);
    const Ranges list{{{0, 0.75}, {1, 0}}}, none;
    EXPECT_FALSE(IsRangeIntersected(&list, &none));
    EXPECT_FALSE(IsRangeIntersected(&list, POLYPOS{0, kNaN}));
    EXPECT_FALSE(IsOverStartPoint({3, -1}, {1, 0})) << "malformed";
    EXPECT_FALSE(IsOverStartPoint({2, 0.5}, {2, 0.5 - 5e-10})) << "as short as the tolerance";
}

TEST(Ranges, EndsTouchWithinTheTolerance) {
    const PosRange range({0, 0.75}, {1, 0});
    for (const double end : {0.75 - 5e-10, 0.75 + 5e-10}) {
        const PosRange touching({0, 0.5}, {0, end});
        EXPECT_TRUE(IsRangeIntersected(touching, range)) << end - 0.75;
        EXPECT_FALSE(IsRangeIntersectedBoundary(touching, range)) << end - 0.75;
    }
}

} // namespace
