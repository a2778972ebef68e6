#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Ranges = std::vector<PosRange>;

// Positions on a contour of six segments, in quarters, so that ends meet often.
constexpr int kSegments = 6;

POLYPOS QuarterPos(Random& random) {
    return {random.Int(0, kSegments - 1), random.Int(0, 3) / 4.0};
}

Ranges RandomRanges(Random& random, int most) {
    Ranges ranges;
    for (int i = 0, count = random.Int(1, most); i < count; ++i)
        ranges.emplace_back(QuarterPos(random), QuarterPos(random), i);
    return ranges;
}

// Whether a place of the contour, as one number, lies in a range, ends included.
bool Covers(const PosRange& range, double at) {
    const double start = PolyPosToDouble(range.start), end = PolyPosToDouble(range.end);
    return start < end ? start <= at && at <= end : start > end && (at >= start || at <= end);
}

// The exchange sort, written out, decides the order of equal starts and of starts that are no number.
TEST(Ranges, SortingLeavesTheOrderOfTheExchangeSort) {
    const auto key = [](const PosRange& range) {
        return std::pair(range.start.nSegIndex, range.start.dRatio);
    };
    for (Random random; random.Rounds(1000);) {
        Ranges literal = RandomRanges(random, random.Coin() ? 12 : 60), sorted;
        if (random.Coin()) // few segments, and some starts that are not a number
            for (PosRange& range : literal) {
                range.start.nSegIndex /= 5;
                if (random.Int(0, 4) == 0) range.start.dRatio = kNaN;
            }
        sorted = literal;
        for (std::size_t i = 0; i + 1 < literal.size(); ++i)
            for (std::size_t j = i + 1; j < literal.size(); ++j)
                if (key(literal[j]) < key(literal[i])) std::swap(literal[i], literal[j]);
        SortRange(&sorted);
        for (std::size_t i = 0; i < literal.size(); ++i) ASSERT_EQ(sorted[i].nTag, literal[i].nTag);
    }
    SortRange(nullptr);
}

// The odd eighths, where no range begins or ends, are covered by the same places before and after.
TEST(Ranges, MergedRangesCoverTheSameAndLieApart) {
    for (Random random; random.Rounds(3000);) {
        const Ranges ranges = RandomRanges(random, 8);
        Ranges merged = ranges;
        SortRange(&merged);
        CombineRange(&merged, kSegments);
        for (double at = 0.125; at < kSegments; at += 0.25) {
            const auto covers = [&](const PosRange& range) { return Covers(range, at); };
            const auto times = std::count_if(merged.begin(), merged.end(), covers);
            ASSERT_EQ(times, std::any_of(ranges.begin(), ranges.end(), covers)) << at;
        }
    }
    Ranges hostile{{{INT_MIN, kNaN}, {0, kInf}}, {{INT_MAX, 7}, {-1, -kInf}}};
    CombineRange(&hostile, INT_MIN);
    CombineRange(nullptr, 4);
}

TEST(Ranges, PositionsInARangeAgainstItsEnds) {
    for (Random random; random.Rounds(5000);) {
        const PosRange range(QuarterPos(random), QuarterPos(random));
        const POLYPOS pos = QuarterPos(random);
        const double at = PolyPosToDouble(pos);
        const bool isValid = !IsInvalidRange(range), holds = Covers(range, at);
        const bool atEnd = at == PolyPosToDouble(range.start) || at == PolyPosToDouble(range.end);
        EXPECT_EQ(IsRangeIntersected(range, pos), isValid && (IsOverStartPoint(range) ? atEnd : holds));
        EXPECT_EQ(IsRangeIntersected(pos, range), holds || atEnd) << "invalid ranges are not refused";
        EXPECT_EQ(IsRangeIntersectedWithoutEndpoint(range, pos), isValid && holds && !atEnd);
        const Ranges list{range};
        EXPECT_EQ(IsRangeIntersected(&list, pos), IsRangeIntersected(pos, range));
    }
    const Ranges list{{{0, 0.75}, {1, 0}}};
    EXPECT_FALSE(IsRangeIntersected(&list, POLYPOS{0, kNaN}));
    EXPECT_FALSE(IsOverStartPoint({3, -1}, {1, 0})) << "malformed";
    EXPECT_FALSE(IsOverStartPoint({2, 0.5}, {2, 0.5 - 5e-10})) << "as short as the tolerance";
}

// Ends are in quarters, so that samples in eighths decide: in the odd ones no range begins or ends.
TEST(Ranges, CommonStretchesAgainstSamples) {
    for (Random random; random.Rounds(5000);) {
        const PosRange a(QuarterPos(random), QuarterPos(random)), b(QuarterPos(random), QuarterPos(random));
        const bool areValid = !IsInvalidRange(a) && !IsInvalidRange(b);
        bool touch = false, overlap = false;
        for (int eighth = 0; areValid && eighth <= 8 * kSegments; ++eighth) {
            const bool both = Covers(a, eighth / 8.0) && Covers(b, eighth / 8.0);
            touch = touch || both;
            overlap = overlap || (both && eighth % 2 == 1);
        }
        EXPECT_EQ(IsRangeIntersected(a, b), touch);
        EXPECT_EQ(IsRangeIntersectedBoundary(a, b), overlap);
        const Ranges list{a}, other{b}, none;
        EXPECT_EQ(IsRangeIntersected(&list, b), touch);
        EXPECT_EQ(IsRangeIntersected(&other, &list), touch);
        EXPECT_FALSE(IsRangeIntersected(&list, &none));
    }
}

// Short ranges behind the quarters against shorter ones before the next, of which few reach it.
TEST(Ranges, TwoLongListsAnswerAsTheirRanges) {
    for (Random random; random.Rounds(2000);) {
        Ranges many = RandomRanges(random, 40), more = RandomRanges(random, 40);
        for (PosRange& own : many) own.end = {own.start.nSegIndex, own.start.dRatio + 0.1};
        for (PosRange& own : more) {
            const auto& [segment, quarter] = own.start;
            own = {{segment, quarter + 0.11}, {segment, quarter + (random.Int(0, 20) == 0 ? 0.25 : 0.2)}};
        }
        if (random.Int(0, 9) == 0) many.back() = {{5, 0.9}, {0, 0}};
        const auto meets = [&](const PosRange& own) { return IsRangeIntersected(&many, own); };
        ASSERT_EQ(IsRangeIntersected(&more, &many), std::any_of(more.begin(), more.end(), meets));
    }
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
