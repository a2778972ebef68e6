#include "support/support.h"

using namespace qev;
using namespace test;

using Ranges = std::vector<PosRange>;

const auto kPath = Polyline(kSquare);

// The zone holds exactly the positions whose distance along the contour is in reach.
TEST(InvalidRanges, ZonesAgainstDistances) {
    for (Random random; random.Rounds(300);) {
        const auto contour = RandomPolyline(random, 6);
        const int count = contour->GetSegmentCount();
        const double total = contour->GetLength();
        if (!contour->IsClose() || total < 1 || count < 2) continue;
        const double back = total * random.Uniform(0, 1.2), on = total * random.Uniform(0, 1.2);
        const POLYPOS pos = random.Pos(count), probe = random.Pos(count);
        PosRange zone({0, 0}, {0, 0}, 7);
        const bool made = GenerateInvalidRange(contour.get(), pos, back, on, zone);
        const bool isWhole = back + on >= total;
        ASSERT_EQ(made, !IsInvalidRange(contour.get(), zone) || isWhole);
        if (isWhole) EXPECT_TRUE(IsAt(zone, {{0, 0}, {count - 1, 1}, 7}));
        PosRange own(pos, {0, 0}, 7);
        GenerateInvalidRange(contour.get(), own.start, back, on, own);
        EXPECT_TRUE(IsAt(own, zone)) << "the position is the range's own start";
        const double ahead = std::fmod(LengthTo(*contour, probe) - LengthTo(*contour, pos) + total, total);
        const double toEdge = std::min(std::abs(ahead - on), std::abs(total - ahead - back));
        const bool isReached = ahead <= on || total - ahead <= back || isWhole;
        if (toEdge > 1e-6) EXPECT_EQ(IsRangeIntersected(probe, zone), isReached);
    }
}

TEST(InvalidRanges, ZonesWithoutLengthAndOffTheContour) {
    PosRange zone({9, 0}, {9, 0});
    EXPECT_FALSE(GenerateInvalidRange(kPath.get(), {4, 0}, 1, 1, zone));
    EXPECT_TRUE(IsAt(zone, {{9, 0}, {9, 0}})) << "something was written";
    EXPECT_FALSE(GenerateInvalidRange(kPath.get(), {1, 0.2}, 0, 0, zone));
    EXPECT_TRUE(IsAt(zone, {{1, 0.2}, {1, 0.2}})) << "empty, but written";
}

TEST(InvalidRanges, WithoutAZoneTheFirstHalfSegmentIsTested) {
    const PosRange range({0, 0.4}, {0, 0.6});
    EXPECT_TRUE(IsRangeIntersected(kPath.get(), {7, 0}, 1, 1, range)) << "off the contour";
    EXPECT_FALSE(IsRangeIntersected(kPath.get(), {2, 0.5}, 1, 1, range));
    EXPECT_TRUE(IsRangeIntersected(kPath.get(), {0, 0.7}, 1, 1, range));
}

// Whether exact neighbours merge, at a distance of 5, is a matter of the last bit.
TEST(InvalidRanges, ZonesRoundCorners) {
    Ranges apart, overlapping;
    EXPECT_TRUE(GenerateCornerInvalidRange(kPath.get(), 2, 90, &apart));
    EXPECT_TRUE(IsAt(
        apart, {{{0, 0.8}, {1, 0.2}}, {{1, 0.8}, {2, 0.2}}, {{2, 0.8}, {3, 0.2}}, {{3, 0.8}, {0, 0.2}}}));
    EXPECT_TRUE(GenerateCornerInvalidRange(kPath.get(), 6, 90, &overlapping));
    EXPECT_TRUE(IsAt(overlapping, {{{0, 0}, {4, 0}}})) << "the whole contour";
    Ranges zones{{{0, 0.5}, {0, 0.6}}, {{0, 0.1}, {0, 0.2}}};
    EXPECT_FALSE(GenerateCornerInvalidRange(kPath.get(), 0, 90, &zones)) << "zones without length";
    EXPECT_EQ(zones[0].start.dRatio, 0.5) << "left unsorted";
}
