#include "support/support.h"

using namespace qev;
using namespace test;

using Map = std::vector<int>;

// Lines along the x axis: 20 mm in two, and in four.
const auto kTwo = Polyline("0 0 L 10 0 L 20 0");
const auto kFour = Polyline("0 0 L 5 0 L 10 0 L 15 0 L 20 0");

// Each map held 5 before.
TEST(SegmentMap, ByLength) {
    const char *const two = "0 0 L 10 0 L 20 0", *const four = "0 0 L 5 0 L 10 0 L 15 0 L 20 0";
    for (const auto& [name, source, destination, expected] :
         Table<const char*, const char*, const char*, Map>{
             {"as many entries as the source has segments", two, four, {0, 0, -1, -1}},
             {"the segments at the middles", four, two, {0, 2}},
             {"from a single piece", kCircleOf10, two, {5, 0}},
             {"to a single piece", two, kCircleOf10, {5}},
             {"from nothing", "null", two, {5}},
             {"to nothing", two, "null", {5}}}) {
        Map map{5};
        GetSegMap(Object(source).get(), Object(destination).get(), map);
        EXPECT_EQ(map, expected) << name;
    }
}

// The length before the segment found is -9 where it is not written.
TEST(SegmentMap, SegmentAtAShareOfTheLength) {
    const auto point = Polyline("0 0 L 0 0");
    for (const auto& [name, contour, share, first, lengthBefore, found, foundBefore] :
         Table<const char*, const CCadMultiSegments*, double, int, double, int, double>{
             {"a boundary belongs to the earlier segment", kTwo.get(), 0.5, 0, 0, 0, 0},
             {"from a segment on", kFour.get(), 0.6, 1, 5, 2, 10},
             {"before the first one searched", kFour.get(), 0.3, 3, 15, -1, 0},
             {"behind the end", kFour.get(), 1.1, 0, 0, -1, 0},
             {"from far before the start", kFour.get(), 0.3, INT_MIN, 0, 1, 5},
             {"without length", point.get(), 0.3, 0, 0, -1, -9},
             {"no contour", nullptr, 0.3, 0, 0, -1, -9}}) {
        double before = -9;
        EXPECT_EQ(FindSegmentIndexByRate(contour, share, first, lengthBefore, before), found) << name;
        EXPECT_EQ(before, foundBefore) << name;
    }
}

// A position on kTwo goes to kFour. The hint is the segment to begin at with the least ratio there; an answer
// on segment -1 stands for none.
TEST(SegmentMap, PositionsByPoint) {
    const Map map{0, 0, 1, 1};
    for (const auto& [name, pos, hint, answer] : Table<const char*, POLYPOS, POLYPOS, POLYPOS>{
             {"found at once", {1, 0.25}, {0, 0}, {2, 0.5}},
             {"in spite of a smaller ratio", {1, 0.25}, {2, 0.6}, {2, 0.5}},
             {"a joint, on its other segment", {0, 0.5}, {0, 1.1}, {1, 0}},
             {"from far behind the map", {0, 0.75}, {INT_MAX, 0}, {1, 0.5}},
             {"behind the last segment", {2, 0.5}, {0, 0}, {-1, 0}},
             {"before the first segment", {-1, 0.5}, {INT_MIN, 0}, {-1, 0}}}) {
        SCOPED_TRACE(name);
        const bool isFound = answer.nSegIndex >= 0;
        POLYPOS out = hint;
        EXPECT_EQ(
            MapPos(kTwo.get(), kFour.get(), &map, pos.nSegIndex, pos.dRatio, &out.nSegIndex, &out.dRatio),
            isFound);
        EXPECT_TRUE(IsAt(out, isFound ? answer : hint));
    }
}

// The answers are segment index + ratio, -8 where nothing is written.
TEST(SegmentMap, PositionsByLength) {
    const auto source = Polyline("0 0 L 5 0 L 9 0 L 14 0");
    const char *const four = "0 0 L 5 0 L 8 0 L 9 0 L 14 0", *const line = "line 0 0 14 0";
    for (const auto& [name, destination, pos, map, mapped] :
         Table<const char*, const char*, POLYPOS, Map, double>{
             {"on the first of two", four, {1, 0.375}, {0, 1, 1, 2}, 1.5},
             {"on the second of two", four, {1, 0.875}, {0, 1, 1, 2}, 2.5},
             {"between the two", four, {1, 0.75}, {0, 1, 1, 2}, 2},
             {"one keeps the ratio", four, {1, 0.5}, {0, 2, 0, 1}, 3.5},
             {"none: the start of the next", four, {1, 0.5}, {0, 2, 2, 2}, 1},
             {"behind the last segment", four, {INT_MAX, 0.5}, {7, 0}, 1},
             {"nothing but -1: itself", four, {1, 0.5}, {-1, -1}, 1.5},
             {"nothing but -1: at most the last", four, {2, 0.5}, {-1, -1}, 1.5},
             {"leads to no segment", four, {0, 0.5}, {77, -5}, 0},
             {"an empty map", four, {1, 0.5}, {}, -8},
             {"a position that is malformed", four, {1, 1.5}, {1}, -8},
             {"on a line", line, {1, 0.5}, {1}, 0.5},
             {"none on a line", line, {1, 0.5}, {2}, 0},
             {"no destination", "null", {1, 0.5}, {1}, -8}}) {
        POLYPOS out{-8, 0};
        GetMapPos(source.get(), pos, Object(destination).get(), out, map);
        EXPECT_NEAR(PolyPosToDouble(out), mapped, 1e-12) << name;
    }
}
