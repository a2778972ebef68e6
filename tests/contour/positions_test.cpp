#include <climits>
#include <cmath>

#include <qev/contour.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;
using math::POLYPOS;
using math::PosRange;

const auto kOpen = test::Polyline("0 0 L 10 0 L 10 10 L 0 10");
const auto kClosed = test::Polyline("0 0 L 10 0 L 10 10 L 0 0");

TEST(Positions, SegmentCounts) {
    const CCadGroup group;
    const CCadText text("a");
    const CCadDot dot({0, 0});
    const CCadCircle circle({0, 0}, 1);
    const CCadEllipseArc arc({0, 0}, 2, 1, 0, 0, 1, true);
    const std::pair<const CCadObject*, int> counts[] = {
        {nullptr, -1}, {&group, -1}, {&text, -1}, {&dot, -1}, {&circle, 1}, {&arc, 1}, {kOpen.get(), 3}};
    for (const auto& [object, count] : counts) EXPECT_EQ(GetCadSegments(object), count);
}

TEST(Positions, Neighbours) {
    const struct {
        const CCadObject* object;
        int i, before, after;
    } cases[] = {{kOpen.get(), 0, -1, 1},
                 {kOpen.get(), 2, 1, -1},
                 {kClosed.get(), 0, 2, 1},
                 {kClosed.get(), 2, 1, 0},
                 {nullptr, 1, -1, -1},
                 {kOpen.get(), -1, -2, 0},
                 {kClosed.get(), INT_MAX, 0, 2},
                 {kOpen.get(), INT_MAX, INT_MAX - 1, -1},
                 {kOpen.get(), INT_MIN, INT_MIN, INT_MIN + 1}};
    for (const auto& c : cases) {
        EXPECT_EQ(GetPreSegmentIndex(c.object, c.i), c.before) << c.i;
        EXPECT_EQ(GetNextSegmentIndex(c.object, c.i), c.after) << c.i;
    }
}

// Validity on the open and the closed contour, and the normal forms there.
TEST(Positions, ValidityAndNormalForm) {
    const struct {
        POLYPOS pos;
        bool malformed, badOpen, badClosed;
        POLYPOS normalOpen, normalClosed;
    } cases[] = {
        {{0, 0}, false, false, false, {0, 0}, {0, 0}},
        {{1, 0.5}, false, false, false, {1, 0.5}, {1, 0.5}},
        {{2, 1}, false, false, true, {2, 1}, {0, 0}},
        {{1, 1}, false, true, true, {2, 0}, {2, 0}},
        {{3, 0}, false, true, true, {2, 1}, {0, 0}},
        {{3, 0.5}, false, true, true, {3, 0.5}, {0, 0.5}},
        {{3, 1}, false, true, true, {-1, 0}, {1, 0}},
        {{7, 0.25}, false, true, true, {7, 0.25}, {1, 0.25}},
        {{1, 1 + 5e-10}, false, true, true, {2, 0}, {2, 0}},
        {{1, 1 + 2e-9}, true, true, true, {1, 1 + 2e-9}, {1, 1 + 2e-9}},
        {{1, -1e-12}, true, true, true, {1, -1e-12}, {1, -1e-12}},
        {{-1, 0.5}, true, true, true, {-1, 0.5}, {-1, 0.5}},
        {{INT_MAX, 0.5}, false, true, true, {INT_MAX, 0.5}, {INT_MAX % 3, 0.5}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.pos.nSegIndex << " " << c.pos.dRatio);
        EXPECT_EQ(IsInvalidPos(c.pos), c.malformed);
        EXPECT_EQ(IsInvalidPos(kOpen.get(), c.pos), c.badOpen);
        EXPECT_EQ(IsInvalidPos(kClosed.get(), c.pos), c.badClosed);
        for (const auto& [contour, normal] :
             {std::pair{kOpen.get(), c.normalOpen}, std::pair{kClosed.get(), c.normalClosed}}) {
            PosRange range{c.pos, c.pos};
            NormalizePosRange(contour, range);
            EXPECT_EQ(range.start.nSegIndex, normal.nSegIndex);
            EXPECT_EQ(range.end.dRatio, normal.dRatio);
        }
    }
    EXPECT_TRUE(IsInvalidPos({0, test::kNaN}));
    for (POLYPOS pos : {POLYPOS{0, 1}, POLYPOS{-1, 0}, POLYPOS{4, 0.5}}) {
        const bool atEnd = pos.dRatio == 1;
        const int before = pos.nSegIndex;
        NormalizePos(nullptr, pos);
        EXPECT_EQ(pos.nSegIndex, atEnd ? -1 : before);
    }
}

TEST(Positions, Ranges) {
    const struct {
        PosRange range;
        bool invalid, invalidOpen;
    } cases[] = {{{{0, 0}, {0, 1}}, false, true},
                 {{{0, 0.5}, {0, 0.5 + 9e-10}}, true, true},
                 {{{0, 0.5}, {0, 0.5 + 2e-9}}, false, false},
                 {{{2, 0.5}, {0, 0.5}}, false, false},
                 {{{0, 0}, {2, 1}}, false, false},
                 {{{0, 0}, {5, 0}}, false, true},
                 {{{0, -1}, {1, 0}}, true, true}};
    for (const auto& c : cases) {
        EXPECT_EQ(IsInvalidRange(c.range), c.invalid);
        EXPECT_EQ(IsInvalidRange(kOpen.get(), c.range), c.invalidOpen);
    }
}

TEST(Positions, ScalarForm) {
    EXPECT_EQ(PolyPosToDouble({2, 0.25}), 2.25);
    const struct {
        double value;
        POLYPOS open, closed;
    } cases[] = {{1.25, {1, 0.25}, {1, 0.25}}, {3.0, {2, 1}, {0, 0}},      {-0.5, {-1, 0.5}, {-1, 0.5}},
                 {1e300, {-1, 0}, {-1, 0}},    {-1e300, {-1, 0}, {-1, 0}}, {test::kNaN, {-1, 0}, {-1, 0}}};
    for (const auto& c : cases) {
        const POLYPOS open = DoubleToPolyPos(kOpen.get(), c.value);
        const POLYPOS closed = DoubleToPolyPos(kClosed.get(), c.value);
        EXPECT_TRUE(open.nSegIndex == c.open.nSegIndex && open.dRatio == c.open.dRatio) << c.value;
        EXPECT_TRUE(closed.nSegIndex == c.closed.nSegIndex && closed.dRatio == c.closed.dRatio) << c.value;
    }
}

} // namespace
