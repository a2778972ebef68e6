#include "support/support.h"

using namespace qev;
using namespace test;

// Both of three segments.
const auto kOpen = Polyline(kOpenSquare);
const auto kClosed = Polyline(kTriangle);

TEST(Positions, NeighboursOfASegment) {
    for (const auto& [contour, index, before, after] :
         Table<const CCadObject*, int, int, int>{{kOpen.get(), 0, -1, 1},
                                                 {kOpen.get(), INT_MIN, INT_MIN, INT_MIN + 1},
                                                 {kClosed.get(), 0, 2, 1},
                                                 {kClosed.get(), INT_MAX, 0, 2},
                                                 {nullptr, 1, -1, -1}}) {
        SCOPED_TRACE(testing::Message() << index << (contour == kClosed.get() ? ", closed" : ""));
        EXPECT_EQ(GetPreSegmentIndex(contour, index), before);
        EXPECT_EQ(GetNextSegmentIndex(contour, index), after);
    }
}

TEST(Positions, ValidityAndNormalForm) {
    enum Valid { kNowhere, kAlone, kOnOpen, kOnBoth }; // kAlone: well formed, but on neither contour
    for (const auto& [name, pos, valid, normalOpen, normalClosed] :
         Table<const char*, POLYPOS, Valid, POLYPOS, POLYPOS>{
             {"the start", {0, 0}, kOnBoth, {0, 0}, {0, 0}},
             {"the end", {2, 1}, kOnOpen, {2, 1}, {0, 0}},
             {"the end of an inner segment", {1, 1}, kAlone, {2, 0}, {2, 0}},
             {"the start of the segment behind the last", {3, 0}, kAlone, {2, 1}, {0, 0}},
             {"the end of the segment behind the last", {3, 1}, kAlone, {-1, 0}, {1, 0}},
             {"beyond the end of a segment", {1, 1 + 2e-9}, kNowhere, {1, 1 + 2e-9}, {1, 1 + 2e-9}},
             {"a negative index", {-1, 0.5}, kNowhere, {-1, 0.5}, {-1, 0.5}}}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(IsInvalidPos(pos), valid == kNowhere);
        EXPECT_EQ(IsInvalidPos(kOpen.get(), pos), valid < kOnOpen);
        EXPECT_EQ(IsInvalidPos(kClosed.get(), pos), valid < kOnBoth);
        PosRange open{pos, {0, 1}}, closed{{0, 1}, pos};
        NormalizePosRange(kOpen.get(), open);
        NormalizePosRange(kClosed.get(), closed);
        EXPECT_TRUE(IsAt(open, {normalOpen, {1, 0}}));
        EXPECT_TRUE(IsAt(closed, {{1, 0}, normalClosed}));
    }
    POLYPOS pos{0, 0};
    NormalizePos(std::make_unique<CCadPolyline>().get(), pos);
    EXPECT_TRUE(IsAt(pos, {-1, 1})) << "the segment behind the last, of none";
}

TEST(Positions, ValidityOfARange) {
    for (const auto& [name, range, isValid, isValidOnOpen] : Table<const char*, PosRange, bool, bool>{
             {"as long as the tolerance", {{0, 0.5}, {0, 0.5 + 2e-9}}, true, true},
             {"shorter than the tolerance", {{0, 0.5}, {0, 0.5 + 9e-10}}, false, false},
             {"to an end that is no normal form", {{0, 0}, {0, 1}}, true, false}}) {
        EXPECT_EQ(IsInvalidRange(range), !isValid) << name;
        EXPECT_EQ(IsInvalidRange(kOpen.get(), range), !isValidOnOpen) << name;
    }
}

TEST(Positions, AsOneNumber) {
    for (const auto& [value, open, closed] : Table<double, POLYPOS, POLYPOS>{{1.25, {1, 0.25}, {1, 0.25}},
                                                                             {3, {2, 1}, {0, 0}},
                                                                             {-0.5, {-1, 0.5}, {-1, 0.5}},
                                                                             {1e300, {-1, 0}, {-1, 0}},
                                                                             {kNaN, {-1, 0}, {-1, 0}}}) {
        EXPECT_TRUE(IsAt(DoubleToPolyPos(kOpen.get(), value), open)) << value;
        EXPECT_TRUE(IsAt(DoubleToPolyPos(kClosed.get(), value), closed)) << value;
    }
}
