#include <chrono>

#include "support/support.h"

using namespace qev;
using namespace test;

using Map = std::vector<int>;

// Lines along the x axis: 20 mm in two, and in four.
const char *const kTwoLines = "0 0 L 10 0 L 20 0", *const kFourLines = "0 0 L 5 0 L 10 0 L 15 0 L 20 0";
const auto kTwo = Polyline(kTwoLines), kFour = Polyline(kFourLines), kPoint = Polyline("0 0 L 0 0");

// Each map held 5 before.
TEST(SegmentMap, ByLength) {
    for (const auto& [name, source, destination, expected] :
         Table<const char*, const char*, const char*, Map>{
             {"as many entries as the source has segments", "0 0 L 0.5 0 L 1 0", kFourLines, {0, 0, -1, -1}},
             {"the segments at the middles", kFourLines, kTwoLines, {0, 2}},
             {"to a single piece", kTwoLines, kCircleOf10, {5}},
             {"to nothing", kTwoLines, "null", {5}}}) {
        Map map{5};
        GetSegMap(Object(source).get(), Object(destination).get(), map);
        EXPECT_EQ(map, expected) << name;
    }
}

// The length before the segment found is -9 where it is not written.
TEST(SegmentMap, SegmentAtAShareOfTheLength) {
    for (const auto& [name, contour, share, first, lengthBefore, found, foundBefore] :
         Table<const char*, const CCadMultiSegments*, double, int, double, int, double>{
             {"a boundary belongs to the earlier segment", kTwo.get(), 0.5, 0, 0, 0, 0},
             {"from a segment on", kFour.get(), 0.6, 1, 5, 2, 10},
             {"behind the end", kFour.get(), 1.1, 0, 0, -1, 0},
             {"from far before the start", kFour.get(), 0.3, INT_MIN, 0, 1, 5},
             {"no length", kPoint.get(), 0.3, 0, 0, -1, -9},
             {"no contour", nullptr, 0.3, 0, 0, -1, -9}}) {
        double before = -9;
        EXPECT_EQ(FindSegmentIndexByRate(contour, share, first, lengthBefore, before), found) << name;
        EXPECT_EQ(before, foundBefore) << name;
    }
}

// A position on one contour goes to the other. The hint is the segment to begin at with the least ratio
// there; an answer on segment -1 stands for none.
TEST(SegmentMap, PositionsByPoint) {
    const auto from = Polyline("0 0 L 10 0 L 20 0 A 30 10 1 L 8 0");
    const auto to = Polyline("0 0 L 5 0 L 10 0 L 15 0 L 20 0 A 30 10 1");
    const Map map{0, 0, 1, 1, 2};
    for (const auto& [name, pos, hint, answer] : Table<const char*, POLYPOS, POLYPOS, POLYPOS>{
             {"found at once", {1, 0.25}, {0, 0}, {2, 0.5}},
             {"a joint, on its other segment", {0, 0.5}, {0, 1.1}, {1, 0}},
             {"from far behind the map", {0, 0.75}, {INT_MAX, 0}, {1, 0.5}},
             {"on an arc, level with its start", {2, 0.5}, {0, 0}, {4, 0.5}},
             {"on a segment without entries", {3, 1}, {0, 0}, {-1, 0}},
             {"before the first segment", {-1, 0.5}, {INT_MIN, 0}, {-1, 0}}}) {
        SCOPED_TRACE(name);
        const bool isFound = answer.nSegIndex >= 0;
        auto [j, ratio] = hint;
        EXPECT_EQ(MapPos(from.get(), to.get(), &map, pos.nSegIndex, pos.dRatio, &j, &ratio), isFound);
        EXPECT_TRUE(IsAt({j, ratio}, isFound ? answer : hint));
    }
}

// The answers are segment index + ratio, -8 where nothing is written.
TEST(SegmentMap, PositionsByLength) {
    const auto source = Polyline("0 0 L 5 0 L 9 0 L 14 0");
    const char *const four = "0 0 L 5 0 L 8 0 L 9 0 L 14 0", *const line = "line 0 0 14 0",
                      *const parts = "0 0 L 0.4 0 L 1.7 0 L 4.2 0 L 5 0 L 14 0";
    for (const auto& [name, destination, pos, map, mapped] :
         Table<const char*, const char*, POLYPOS, Map, double>{
             {"between the two", four, {1, 0.75}, {0, 1, 1, 2}, 2},
             {"one keeps the ratio", four, {1, 0.5}, {0, 2, 0, 1}, 3.5},
             {"none: the start of the next", four, {1, 0.5}, {0, 2, 2, 2}, 1},
             {"behind the last segment", four, {INT_MAX, 0.5}, {7, 0}, 1},
             {"nothing but -1: at most the last", four, {2, 0.5}, {-1, -1}, 1.5},
             {"an empty map", four, {1, 0.5}, {}, -8},
             {"the end, of parts shorter by rounding", parts, {0, 1}, {0, 0, 0, 0, 1}, 4},
             {"on a line", line, {1, 0.5}, {1}, 0.5},
             {"on no segment", four, {0, 0.5}, {77, -5}, 0}}) {
        POLYPOS out{-8, 0};
        GetMapPos(source.get(), pos, Object(destination).get(), out, map);
        EXPECT_NEAR(PolyPosToDouble(out), mapped, 1e-12) << name;
    }
}

// A kind that the library does not know has no segments; what needs none is answered.
TEST(SegmentMap, UnknownKinds) {
    const struct : CCadObject {
    } unknown;
    const auto line = Object("line 0 0 14 0");
    Map filled{5, 6};
    GetSegMap(&unknown, kTwo.get(), filled);
    EXPECT_EQ(filled, (Map{5, 6})) << "from an unknown one";
    POLYPOS out;
    GetMapPos(kTwo.get(), {1, 0.5}, &unknown, out, {1});
    EXPECT_TRUE(IsAt(out, {1, 0.5})) << "to an unknown one: itself";
    GetMapPos(&unknown, {1, 0.5}, line.get(), out, {1});
    EXPECT_TRUE(IsAt(out, {0, 0.5})) << "from an unknown one";
    GetMapPos(&unknown, {1, 0.5}, kTwo.get(), out, {-1, 0});
    EXPECT_TRUE(IsAt(out, {1, 0})) << "without an entry: the start";
}

// A polyline that counts how often it is asked for a segment.
struct Counting : CCadPolyline {
    SEGMENT GetSegment(int index) const override {
        ++asked;
        return CCadPolyline::GetSegment(index);
    }
    mutable int asked = 0;
};

TEST(SegmentMap, CostsGrowWithTheSegments) {
    constexpr int kMany = 200'000;
    Counting source;
    CCadPolyline destination;
    source.SetStartPoint({0, 0});
    destination.SetStartPoint({0, 0});
    for (int i = 1; i <= kMany; ++i) source.AddLine({i * 1.0, 0});
    for (int i = 1; i <= 2 * kMany; ++i) destination.AddLine({i * 0.5, 0});
    Map map;
    GetSegMap(&source, &destination, map);
    EXPECT_EQ(map[kMany - 1], kMany / 2 - 1);
    EXPECT_LE(source.asked, 4 * kMany);
    POLYPOS out;
    const auto start = std::chrono::steady_clock::now();
    GetMapPos(&source, {kMany / 2 + 1, 0.5}, &destination, out, map);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2)) << "once over the map";
    EXPECT_TRUE(IsAt(out, {0, 0})) << "round to the first segment with entries";
    for (CCadPolyline* each : std::initializer_list<CCadPolyline*>{&source, &destination}) {
        source.asked = 0;
        each->SetStartPoint({kNaN, 0});
        GetSegMap(&source, &destination, map);
        EXPECT_LE(source.asked, 4 * kMany) << "a length that is no number";
        each->SetStartPoint({0, 0});
    }
}
