#include "support/support.h"

using namespace qev;
using namespace test;

// Walks of up to some laps either way against the sum of lengths, modulo the whole.
TEST(OffsetWalk, AgainstSummedLengths) {
    for (Random random; random.Rounds(2000);) {
        const auto contour = RandomPolylineEx(random, 8);
        const double total = contour->GetLength();
        if (total == 0) continue;
        const POLYPOS pos = random.Pos(contour->GetSegmentCount());
        const double offset = total * random.Uniform(-3.5, 3.5);
        POLYPOS out = pos; // both the input and the output
        const int laps = GetPosByOffset(contour.get(), out, offset, out);
        const double travelled = LengthTo(*contour, pos) + offset;
        EXPECT_NEAR(std::remainder(LengthTo(*contour, out) - travelled, total), 0, 1e-12 * total);
        EXPECT_EQ(laps, static_cast<int>(std::abs(offset) / total));
    }
}

double LengthFromStart(const CCadObject& object, const POLYPOS& pos) {
    double length = 0;
    GetLengthStartToPos(&object, pos, length);
    return length;
}

// By the length that is left to an end or back to a joint, and by whole laps: rounding misses them on either
// side.
TEST(OffsetWalk, ExactlyToAnEndAndRound) {
    for (Random random; random.Rounds(3000);) {
        const bool isPiece = random.Coin();
        const auto object = isPiece ? RandomSingle(random, -1) : RandomPolyline(random, 8);
        const POLYPOS pos = random.Pos(GetCadSegments(object.get()));
        const double total = GetCadLength(object.get()), before = LengthFromStart(*object, pos);
        if (before < 1e-6 || total - before < 1e-6) continue;
        POLYPOS out;
        for (const double to : {0.0, LengthFromStart(*object, {pos.nSegIndex, 0}), total}) {
            EXPECT_EQ(GetPosByOffset(object.get(), pos, to - before, out), 0);
            EXPECT_FALSE(IsInvalidPos(object.get(), out)) << testing::PrintToString(out);
            const bool isStart = to == total && object->IsClose();
            EXPECT_NEAR(LengthFromStart(*object, out), isStart ? 0 : to, 1e-12 * total) << object->GetType();
        }
        for (const int laps : {-2, -1, 1, 3}) {
            if (!isPiece) break; // on a segment without length the start counts as not reached
            EXPECT_EQ(GetPosByOffset(object.get(), pos, laps * total, out), std::abs(laps));
            EXPECT_TRUE(IsAt(out, pos, 1e-9));
        }
    }
}

TEST(OffsetWalk, LapsJointsAndEnds) {
    for (const auto& [name, contour, from, offset, laps, to] :
         Table<const char*, const char*, POLYPOS, double, int, POLYPOS>{
             {"from the start of an open contour to its end", kOpenSquare, {0, 0}, 30, 0, {2, 1}},
             {"very many laps", kSquare, {0, 0.5}, 4'000'000'003, 100'000'000, {0, 0.8}},
             {"less than the tolerance into an open contour", kOpenSquare, {0, 0}, 5e-9, 0, {0, 5e-10}},
             {"less than the tolerance back from its end", kOpenSquare, {2, 1}, -5e-9, 0, {2, 1}},
             {"past a short first segment, by rounding", "0 0 L 1e-8 0 L 9 0", {0, 0}, 9 + 2e-15, 0, {1, 1}},
             {"back past a short last segment", "0 0 L 9 0 L 9 1e-8", {0, 1e-9}, -9.00000001e-9, 0, {0, 0}},
             {"back from the end of a line", "line 0 0 10 0", {0, 1}, -5e-9, 0, {0, 1}},
             {"a whole line is a lap", "line 0 0 10 0", {0, 0}, 10, 1, {0, 1}},
             {"laps back on a line", "line 0 0 10 0", {0, 0.5}, -27, 2, {0, 0.8}},
             {"a piece without length", "line 1 1 1 1", {0, 0.5}, 5, 0, {0, 0.5}},
             {"from the start of a closed contour to its end", kSquare, {0, 0}, 40, 1, {0, 0}}}) {
        SCOPED_TRACE(name);
        POLYPOS out;
        EXPECT_EQ(GetPosByOffset(Object(contour).get(), from, offset, out), laps);
        EXPECT_TRUE(IsAt(out, to, 1e-9));
    }
}

TEST(OffsetWalk, Refusals) {
    POLYPOS out;
    for (const char* text : {kSquare, kOpenSquare, "line 0 0 10 0", "0 0 L 0 0 L 0 0", "polyline", "null"})
        for (const double offset : {kNaN, kInf, 1e300, -1e300})
            EXPECT_EQ(GetPosByOffset(Object(text).get(), {0, 0.5}, offset, out), -1) << text << offset;
    for (const POLYPOS& off : {POLYPOS{INT_MIN, 0.5}, {INT_MAX, 0.5}, {0, 1}}) // the end of an inner segment
        EXPECT_EQ(GetPosByOffset(Object(kSquare).get(), off, 1, out), -1) << testing::PrintToString(off);
}

TEST(OffsetWalk, StepsOfATable) {
    for (const auto& [back, forward, step, expected] :
         Table<double, double, double, std::vector<int>>{{2.5, 1.2, 1, {1, -1, -2}},
                                                         {5, 7.4, 2.5, {1, -1, 2, -2}},
                                                         {0.3, 0, 0.1, {-1, -2}}, // 0.3 / 0.1 is below 3
                                                         {1e300, 1, 1, {}}}) {
        std::vector<int> steps;
        GetOffsetTable(back, forward, step, steps);
        EXPECT_EQ(steps, expected) << back << " back, " << forward << " forward by " << step;
    }
}
