#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Ranges = std::vector<PosRange>;

const auto kClosed = Polyline(kSquare);
const auto kOpen = Polyline("0 0 L 10 0 L 10 10 L 0 10 L 0 5");

// Quarters of four segments, at times off by about the tolerance: ends meet, miss and touch each other.
POLYPOS QuarterPos(Random& random) {
    return {random.Int(0, 3),
            std::abs(random.Int(0, 3) / 4.0 + random.Int(-2, 2) * (random.Coin() ? 0 : 6e-10))};
}

Ranges RandomRanges(Random& random) {
    Ranges ranges;
    for (int i = 0, count = random.Int(0, 5); i < count; ++i) {
        const POLYPOS start = QuarterPos(random);
        const POLYPOS near{start.nSegIndex, start.dRatio + 0.2};
        ranges.emplace_back(start, random.Int(0, 3) == 0 ? QuarterPos(random) : near, i);
    }
    return ranges;
}

TEST(RangeSet, AnswersAsTheListOfItsValidRanges) {
    for (Random random; random.Rounds(20000);) {
        const Ranges all = RandomRanges(random);
        Ranges list;
        std::copy_if(all.begin(), all.end(), std::back_inserter(list),
                     [](auto& r) { return !IsInvalidRange(r); });
        const CRangeSet set(random.Coin() ? kClosed.get() : kOpen.get(), all);
        const PosRange range(QuarterPos(random), QuarterPos(random));
        ASSERT_EQ(set.Holds(range.start), IsRangeIntersected(&list, range.start));
        ASSERT_EQ(set.Meets(range), IsRangeIntersected(&list, range));
    }
}

// Odd eighths lie 0.05 of a segment or more from every end.
TEST(RangeSet, WhatNoZoneHoldsIsFree) {
    for (Random random; random.Rounds(5000);) {
        const auto& contour = random.Coin() ? kClosed : kOpen;
        const CRangeSet set(contour.get(), RandomRanges(random));
        Ranges free;
        set.GetFree(free);
        for (double at = 0.125; at < 4; at += 0.25) {
            const POLYPOS pos = DoubleToPolyPos(contour.get(), at);
            ASSERT_EQ(set.Holds(pos), !IsRangeIntersected(&free, pos)) << at;
        }
        EXPECT_EQ(set.IsWhole(), free.empty());
        for (std::size_t i = 0; i < free.size(); ++i) {
            if (!set.GetRanges().empty()) EXPECT_FALSE(IsInvalidRange(contour.get(), free[i]));
            if (i > 0) EXPECT_LT(PolyPosToDouble(free[i - 1].end), PolyPosToDouble(free[i].start));
        }
    }
}

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
