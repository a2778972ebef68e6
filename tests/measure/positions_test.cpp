#include "support/support.h"

using namespace qev;
using namespace test;

const auto kOpen = Polyline("0 0 L 10 0 L 10 10 L 0 10");
const auto kClosed = Polyline("0 0 L 10 0 L 10 10 L 0 0");

TEST(Positions, SegmentCounts) {
    for (const auto& [row, object, count] : Rows<std::string, int>(
             "null -1; group -1; text -1; 'dot 0 0' -1; 'circle 0 0 1' 1; 'ellipsearc 0 0 2 1 0 0 1' 1;"
             "'0 0 L 10 0 L 10 10 L 0 10' 3"))
        EXPECT_EQ(GetCadSegments(Object(object).get()), count) << row;
}

// Index, the one before and the one after, on no contour, the open and the closed one.
TEST(Positions, Neighbours) {
    const std::pair<const CCadObject*, const char*> tables[] = {
        {nullptr, "1 -1 -1"},
        {kOpen.get(),
         "0 -1 1; 2 1 -1; -1 -2 0; 2147483647 2147483646 -1; -2147483648 -2147483648 -2147483647"},
        {kClosed.get(), "0 2 1; 2 1 0; 1e99 0 2"}};
    for (const auto& [object, rows] : tables)
        for (const auto& [row, i, before, after] : Rows<int, int, int>(rows)) {
            EXPECT_EQ(GetPreSegmentIndex(object, i), before) << row;
            EXPECT_EQ(GetNextSegmentIndex(object, i), after) << row;
        }
}

// Whether a position is malformed, invalid on the open and on the closed contour, and its normal forms there.
TEST(Positions, ValidityAndNormalForm) {
    for (const auto& [row, pos, malformed, badOpen, badClosed, normalOpen, normalClosed] :
         Rows<POLYPOS, bool, bool, bool, POLYPOS, POLYPOS>(
             "0+0 0 0 0 0+0 0+0; 1+0.5 0 0 0 1+0.5 1+0.5; 2+1 0 0 1 2+1 0+0; 1+1 0 1 1 2+0 2+0;"
             "3+0 0 1 1 2+1 0+0; 3+0.5 0 1 1 3+0.5 0+0.5; 3+1 0 1 1 -1+0 1+0; 7+0.25 0 1 1 7+0.25 1+0.25;"
             "1+1.0000000005 0 1 1 2+0 2+0; 1+1.000000002 1 1 1 1+1.000000002 1+1.000000002;"
             "1+-1e-12 1 1 1 1+-1e-12 1+-1e-12; -1+0.5 1 1 1 -1+0.5 -1+0.5; 1e99+0.5 0 1 1 1e99+0.5 1+0.5")) {
        SCOPED_TRACE(row);
        EXPECT_EQ(IsInvalidPos(pos), malformed);
        EXPECT_EQ(IsInvalidPos(kOpen.get(), pos), badOpen);
        EXPECT_EQ(IsInvalidPos(kClosed.get(), pos), badClosed);
        PosRange open{pos, pos}, closed = open;
        NormalizePosRange(kOpen.get(), open);
        NormalizePosRange(kClosed.get(), closed);
        EXPECT_TRUE(IsAt(open.start, normalOpen) && IsAt(open.end, normalOpen));
        EXPECT_TRUE(IsAt(closed.start, normalClosed) && IsAt(closed.end, normalClosed));
    }
    EXPECT_TRUE(IsInvalidPos({0, kNaN}));
    PosRange joint{{0, 1}, {-1, 0}}, beyond{{4, 0.5}, {4, 0.5}};
    for (PosRange* each : {&joint, &beyond}) NormalizePosRange(nullptr, *each);
    EXPECT_TRUE(joint.start.nSegIndex == -1 && joint.end.nSegIndex == -1 && beyond.start.nSegIndex == 4);
}

// Whether a range is malformed, and whether it is invalid on the open contour.
TEST(Positions, RangesAndScalarForm) {
    for (const auto& [row, start, end, invalid, invalidOpen] : Rows<POLYPOS, POLYPOS, bool, bool>(
             "0+0 0+1 0 1; 0+0.5 0+0.5000000009 1 1; 0+0.5 0+0.500000002 0 0; 2+0.5 0+0.5 0 0; 0+0 2+1 0 0;"
             "0+0 5+0 0 1; 0+-1 1+0 1 1")) {
        EXPECT_EQ(IsInvalidRange({start, end}), invalid) << row;
        EXPECT_EQ(IsInvalidRange(kOpen.get(), {start, end}), invalidOpen) << row;
    }
    EXPECT_EQ(PolyPosToDouble({2, 0.25}), 2.25);
    for (const auto& [row, value, open, closed] :
         Rows<double, POLYPOS, POLYPOS>("1.25 1+0.25 1+0.25; 3 2+1 0+0; -0.5 -1+0.5 -1+0.5; 1e300 -1+0 "
                                        "-1+0; -1e300 -1+0 -1+0; nan -1+0 -1+0")) {
        EXPECT_TRUE(IsAt(DoubleToPolyPos(kOpen.get(), value), open)) << row;
        EXPECT_TRUE(IsAt(DoubleToPolyPos(kClosed.get(), value), closed)) << row;
    }
}
