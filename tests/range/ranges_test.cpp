#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Ranges = std::vector<PosRange>;

// Positions on a contour of six segments, in quarters, so that ends meet often.
constexpr int kSegments = 6;

const auto QuarterPos = [](Random& r) { return POLYPOS{r.Int(0, kSegments - 1), r.Int(0, 3) / 4.0}; };

Ranges RandomRanges(Random& random, int most) {
    Ranges ranges;
    for (int i = 0, count = random.Int(1, most); i < count; ++i)
        ranges.emplace_back(QuarterPos(random), QuarterPos(random), i);
    return ranges;
}

// Which of the eighths of the contour a range covers, sampled in their middles.
bool Covers(const PosRange& range, double at) {
    const double start = PolyPosToDouble(range.start), end = PolyPosToDouble(range.end);
    return start < end ? start <= at && at <= end : start > end && (at >= start || at <= end);
}
bool Covers(const Ranges& ranges, double at) {
    return std::any_of(ranges.begin(), ranges.end(), [at](const auto& range) { return Covers(range, at); });
}

// "0+0.2 0+0.5 7; ...": start, end and tag.
Ranges RangesOf(const std::string& text) {
    Ranges ranges;
    for (const auto& [row, start, end, tag] : Rows<POLYPOS, POLYPOS, int>(text))
        ranges.emplace_back(start, end, tag);
    return ranges;
}

void ExpectSame(const Ranges& ranges, const Ranges& expected) {
    ASSERT_EQ(ranges.size(), expected.size());
    for (std::size_t i = 0; i < ranges.size(); ++i)
        EXPECT_TRUE(IsAt(ranges[i].start, expected[i].start) && IsAt(ranges[i].end, expected[i].end)
                    && ranges[i].nTag == expected[i].nTag);
}

TEST(Ranges, SortingLeavesTheOrderOfTheExchangeSort) {
    const auto key = [](const PosRange& range) {
        return std::pair(range.start.nSegIndex, range.start.dRatio);
    };
    for (Random random; random.Rounds(500);) {
        Ranges sorted = RandomRanges(random, 12), literal = sorted;
        if (random.Int(0, 8) == 0) literal[0].start.dRatio = sorted[0].start.dRatio = kNaN;
        for (std::size_t i = 0; i + 1 < literal.size(); ++i)
            for (std::size_t j = i + 1; j < literal.size(); ++j)
                if (key(literal[j]) < key(literal[i])) std::swap(literal[i], literal[j]);
        SortRange(&sorted);
        for (std::size_t i = 0; i < literal.size(); ++i) ASSERT_EQ(sorted[i].nTag, literal[i].nTag);
    }
    SortRange(nullptr);
}

// The merged list covers what the list covered, and its ranges are apart.
TEST(Ranges, MergingKeepsWhatIsCovered) {
    for (Random random; random.Rounds(2000);) {
        Ranges ranges = RandomRanges(random, 6);
        std::erase_if(ranges, [](const PosRange& range) { return IsInvalidRange(range); });
        SortRange(&ranges);
        const Ranges before = ranges;
        CombineRange(&ranges, kSegments);
        for (double at = 0.125; at < kSegments; at += 0.25)
            ASSERT_EQ(Covers(ranges, at), Covers(before, at)) << at;
        for (std::size_t i = 0; i + 1 < ranges.size(); ++i)
            EXPECT_TRUE(PolyPosToDouble(ranges[i].end) < PolyPosToDouble(ranges[i + 1].start));
    }
}

TEST(Ranges, MergingInDetail) {
    const std::pair<const char*, const char*> cases[] = {
        {"0+0.2 0+0.5 7; 0+0.5 1+0.3 8", "0+0.2 1+0.3 7"},
        {"0+0.2 0+0.5 0; 0+0.5000001 1+0.3 0", "0+0.2 0+0.5 0; 0+0.5000001 1+0.3 0"},
        {"1+0 1+0.5 0; 3+0.5 0+0.5 9", "1+0 1+0.5 0; 3+0.5 0+0.5 9"},
        {"0+0.5 3+0.6 0; 3+0.5 0+0.5 0", "0+0 4+0 0"},     // the whole contour
        {"3+0.5 0+0.5 0", "3+0.5 0+0.5 0"},                // one alone stays
        {"0+0.5 0+0.5 0; -1+2 0+0.7 0", "0+0.5 0+0.7 0"}}; // invalid ones take part
    for (const auto& [in, out] : cases) {
        Ranges ranges = RangesOf(in);
        CombineRange(&ranges, 4);
        ExpectSame(ranges, RangesOf(out));
        CombineRange(&(ranges = RangesOf(in)), 0);
        ExpectSame(ranges, RangesOf(in)); // no segments
    }
    Ranges many;
    for (int i = 0; i < 100'000; ++i) many.emplace_back(POLYPOS{i, 0.0}, POLYPOS{i, i % 2 ? 0.5 : 1.0});
    CombineRange(&many, INT_MAX);
    EXPECT_EQ(many.size(), 100'000u) << "compared exactly: (i, 1) lies before (i + 1, 0)";
    CombineRange(nullptr, 4);
}

// Every test against membership of dense samples; ends are in quarters, so that samples in eighths decide.
TEST(Ranges, IntersectionsAgainstSamples) {
    for (Random random; random.Rounds(5000);) {
        const PosRange a(QuarterPos(random), QuarterPos(random)), b(QuarterPos(random), QuarterPos(random));
        const POLYPOS pos = QuarterPos(random);
        const double at = PolyPosToDouble(pos);
        const bool valid = !IsInvalidRange(a), wraps = IsOverStartPoint(a);
        const bool atEnd = at == PolyPosToDouble(a.start) || at == PolyPosToDouble(a.end);
        EXPECT_EQ(IsRangeIntersected(a, pos), valid && (wraps ? atEnd : Covers(a, at)));
        EXPECT_EQ(IsRangeIntersected(pos, a), Covers(a, at) || atEnd) << "invalid ranges are not refused";
        EXPECT_EQ(IsRangeIntersectedWithoutEndpoint(a, pos), valid && Covers(a, at) && !atEnd);
        bool shared = false, overlap = false;
        for (double x = 0; valid && !IsInvalidRange(b) && x <= kSegments; x += 0.125) {
            const bool both = Covers(a, x) && Covers(b, x);
            shared = shared || both;
            overlap = overlap || (both && std::fmod(x, 0.25) != 0);
        }
        EXPECT_EQ(IsRangeIntersected(a, b), shared);
        EXPECT_EQ(IsRangeIntersectedBoundary(a, b), overlap);
        const Ranges list{a}, other{b}, none;
        EXPECT_EQ(IsRangeIntersected(&list, b), shared);
        EXPECT_EQ(IsRangeIntersected(&other, &list), shared);
        EXPECT_EQ(IsRangeIntersected(&list, pos), IsRangeIntersected(pos, a));
        EXPECT_FALSE(IsRangeIntersected(&none, b) || IsRangeIntersected(&list, &none));
    }
    const PosRange touching({0, 0.5}, {0, 0.75 + 5e-10}), range({0, 0.75}, {1, 0});
    EXPECT_TRUE(IsRangeIntersected(touching, range) && !IsRangeIntersectedBoundary(touching, range));
    const Ranges list{range};
    EXPECT_FALSE(IsRangeIntersected(&list, POLYPOS{0, kNaN}));
}

// The zone holds exactly the positions whose distance along the contour is in reach.
TEST(InvalidRanges, ZonesAgainstDistances) {
    for (Random random; random.Rounds(300);) {
        const auto contour = RandomPolyline(random, 6);
        const int count = contour->GetSegmentCount();
        const double total = contour->GetLength();
        if (!contour->IsClose() || total < 1 || count < 2) continue;
        const double back = total * random.Uniform(0, 0.7), on = total * random.Uniform(0, 0.7);
        const POLYPOS pos = random.Pos(count), probe = random.Pos(count);
        PosRange zone({0, 0}, {0, 0}, 7);
        const bool made = GenerateInvalidRange(contour.get(), pos, back, on, zone);
        ASSERT_EQ(made, !IsInvalidRange(contour.get(), zone) || back + on >= total);
        const double ahead = std::fmod(LengthTo(*contour, probe) - LengthTo(*contour, pos) + total, total);
        const bool reached = ahead <= on || total - ahead <= back || back + on >= total;
        const bool inside = IsRangeIntersected(probe, zone);
        if (std::abs(ahead - on) > 1e-6 && std::abs(total - ahead - back) > 1e-6) EXPECT_EQ(inside, reached);
        EXPECT_EQ(zone.nTag, 7);
    }
}

TEST(InvalidRanges, FallbacksAndCorners) {
    const auto square = Polyline("0 0 L 10 0 L 10 10 L 0 10 L 0 0");
    PosRange zone({9, 0}, {9, 0});
    EXPECT_FALSE(GenerateInvalidRange(square.get(), {1, 0.2}, 0, 0, zone));
    EXPECT_TRUE(zone.start.nSegIndex == 1 && zone.end.dRatio == 0.2) << "empty, but written";
    EXPECT_FALSE(GenerateInvalidRange(square.get(), {4, 0}, 1, 1, zone)
                 || GenerateInvalidRange(nullptr, {0, 0}, 1, 1, zone));
    for (const auto& [back, on] : {std::pair{20.0, 20.0}, {100.0, 1.0}, {1.0, 40.0}}) {
        EXPECT_TRUE(GenerateInvalidRange(square.get(), {1, 0.2}, back, on, zone));
        EXPECT_TRUE(PolyPosToDouble(zone.start) == 0 && zone.end.nSegIndex == 3 && zone.end.dRatio == 1);
    }
    // the fallback is (0, 0) to (0, 0.5)
    EXPECT_TRUE(IsRangeIntersected(square.get(), {7, 0}, 1, 1, {{0, 0.4}, {0, 0.6}}));
    EXPECT_FALSE(IsRangeIntersected(square.get(), {2, 0.5}, 1, 1, {{0, 0.4}, {0, 0.6}}));
    // whether exact neighbours merge, at a distance of 5, is a matter of the last bit
    const std::tuple<double, double, const char*> cases[] = {
        {2, 90, "0+0.8 1+0.2 0; 1+0.8 2+0.2 0; 2+0.8 3+0.2 0; 3+0.8 0+0.2 0"},
        {6, 90, "0+0 4+0 0"},
        {2, 95, ""}};
    for (const auto& [distance, angle, expected] : cases) {
        Ranges zones;
        EXPECT_TRUE(GenerateCornerInvalidRange(square.get(), distance, angle, &zones));
        ExpectSame(zones, RangesOf(expected));
    }
    Ranges kept{{{0, 0.5}, {0, 0.6}}, {{0, 0.1}, {0, 0.2}}};
    EXPECT_FALSE(GenerateCornerInvalidRange(square.get(), 0, 90, &kept)) << "zones without length";
    EXPECT_EQ(kept[0].start.dRatio, 0.5) << "unsorted";
    EXPECT_TRUE(GenerateCornerInvalidRange(square.get(), 0, 179, &kept) && kept[0].start.dRatio == 0.1);
}

TEST(SegmentMap, ByLengthAndByPoint) {
    for (const auto& [row, from, to, expected] : Rows<std::string, std::string, std::vector<int>>(
             "'0 0 L 2 0 L 4 0' '0 0 L 1 0 L 2 0 L 3 0 L 4 0' 0,0,-1,-1;" // as many as the source has
             "'0 0 L 1 0 L 2 0 L 3 0 L 4 0' '0 0 L 2 0 L 4 0' 0,2; 'circle 0 0 1' '0 0 L 1 0 L 2 0' 5,0;"
             "'0 0 L 1 0 L 2 0' 'circle 0 0 1' 5; null '0 0 L 1 0 L 2 0' 5")) {
        std::vector<int> map{5};
        GetSegMap(Object(from).get(), Object(to).get(), map);
        EXPECT_EQ(map, expected) << row;
    }
    const auto two = Polyline("0 0 L 10 0 L 20 0"), four = Polyline("0 0 L 5 0 L 10 0 L 15 0 L 20 0");
    double before = 9;
    EXPECT_TRUE(FindSegmentIndexByRate(two.get(), 0.5, 0, 0, before) == 0 && before == 0);
    EXPECT_TRUE(FindSegmentIndexByRate(four.get(), 0.6, 1, 5, before) == 2 && before == 10);
    EXPECT_TRUE(FindSegmentIndexByRate(four.get(), 0.3, 3, 15, before) == -1 && before == 0);
    EXPECT_EQ(FindSegmentIndexByRate(four.get(), 0.3, INT_MIN, 0, before), 1);
    EXPECT_EQ(FindSegmentIndexByRate(nullptr, 0.3, 0, 0, before), -1);

    // segment, ratio, the index to begin at, the least ratio, the index found (-1: none) and its ratio
    const std::vector<int> byTwo{0, 0, 1, 1};
    for (const auto& [row, segment, ratio, hint, least, out, outRatio] :
         Rows<int, double, int, double, int, double>(
             "1 0.25 0 0 2 0.5; 1 0.25 2 0.6 2 0.5; 0 0.5 0 1.1 1 0;"
             "0 0.75 1e99 0 1 0.5; 2 0.5 0 0 -1 0; -1 0.5 -1e99 0 -1 0")) {
        int index = hint;
        double found = least;
        ASSERT_EQ(MapPos(two.get(), four.get(), &byTwo, segment, ratio, &index, &found), out >= 0) << row;
        if (out >= 0) EXPECT_TRUE(IsAt({index, found}, {out, outRatio})) << row;
    }
}

// Position, map and the position it becomes as index + ratio; -8: it is left alone.
TEST(SegmentMap, PositionsByLength) {
    const auto source = Polyline("0 0 L 5 0 L 9 0 L 14 0");
    const std::pair<const char*, const char*> tables[] = {
        {"0 0 L 5 0 L 8 0 L 9 0 L 14 0",
         "1+0.375 0,1,1,2 1.5; 1+0.875 0,1,1,2 2.5; 1+0.75 0,1,1,2 2; 1+0.5 0,2,0,1 3.5; 1e99+0.5 7,0 1;"
         "1+0.5 -1,-1 1.5; 2+0.5 -1,-1 1.5; 1+0.5 0,2,2,2 1; 0+0.5 77,-5 0; 1+0.5 none -8; 1+1.5 1 -8"},
        {"line 0 0 14 0", "1+0.5 1 0.5; 1+0.5 2 0"},
        {"null", "1+0.5 1 -8"}};
    for (const auto& [object, rows] : tables)
        for (const auto& [row, pos, map, expected] : Rows<POLYPOS, std::vector<int>, double>(rows)) {
            POLYPOS out{-8, 0};
            GetMapPos(source.get(), pos, Object(object).get(), out, map);
            EXPECT_NEAR(PolyPosToDouble(out), expected, 1e-12) << row;
        }
}

} // namespace
