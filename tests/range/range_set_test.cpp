#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Ranges = std::vector<PosRange>;

const auto kClosed = Polyline(kSquare);
const auto kOpen = Polyline("0 0 L 10 0 L 10 10 L 0 10 L 0 5");

struct Case {
    const char* name;
    const CCadObject* contour;
    Ranges ranges, zones, free;
};

PosRange Z(int from, double fromRatio, int to, double toRatio) {
    return {{from, fromRatio}, {to, toRatio}};
}

TEST(RangeSet, ZonesAndFreeStretches) {
    const CCadObject *closed = kClosed.get(), *open = kOpen.get();
    const Ranges none, whole{Z(0, 0, 4, 0)}, over{Z(3, 0.5, 0, 0.5)}, lap{Z(0, 0, 3, 1)}, one{Z(1, 0, 2, 0)};
    const Ranges around{Z(2, 0.5, 1, 0), Z(1, 0, 2, 0.5 - 5e-10)}, beyond{Z(1, 0, 4, 0.5), Z(5, 0, 0, 0.5)};
    const Ranges joined{Z(0, 0, 0, 1), Z(1, 0, 2, 0)}, first{Z(0, 0, 2, 0)};
    for (const Case& c : {Case{"no contour", nullptr, one, none, none},
                          {"closed without zones", closed, none, none, whole},
                          {"open without zones", open, none, none, lap},
                          {"a whole lap", closed, lap, lap, none},
                          {"a whole lap as merged", closed, whole, whole, none},
                          {"round to its own start", closed, around, whole, none},
                          {"over the start point", closed, over, over, {Z(0, 0.5, 3, 0.5)}},
                          {"behind the contour", closed, beyond, none, whole},
                          {"zones that meet at a joint", open, joined, joined, {Z(2, 0, 3, 1)}},
                          {"free over the start point", closed, one, one, {Z(2, 0, 1, 0)}},
                          {"free up to the start point", closed, first, first, {Z(2, 0, 0, 0)}}}) {
        const CRangeSet set(c.contour, c.ranges);
        Ranges free = beyond;
        set.GetFree(free);
        EXPECT_TRUE(IsAt(set.GetRanges(), c.zones)) << c.name;
        EXPECT_TRUE(IsAt(free, c.free)) << c.name;
    }
}

} // namespace
