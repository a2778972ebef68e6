#include "support/support.h"

using namespace qev;
using namespace test;

TEST(OffsetWalk, LapsJointsAndEnds) {
    for (const auto& [name, contour, from, offset, laps, to] :
         Table<const char*, const char*, POLYPOS, double, int, POLYPOS>{
             {"to the end of 3,000 km", "0 0 L 1e9 0 L 1e9 1e9 L 0 1e9", {0, 0}, 3e9, 0, {2, 1}},
             {"very many laps", kSquare, {0, 0.5}, 4'000'000'003, 100'000'000, {0, 0.8}},
             {"less than the tolerance into an open contour", kOpenSquare, {0, 0}, 5e-9, 0, {0, 5e-10}},
             {"less than the tolerance back from its end", kOpenSquare, {2, 1}, -5e-9, 0, {2, 1}},
             {"past a short first segment, by rounding", "0 0 L 1e-8 0 L 9 0", {0, 0}, 9 + 2e-15, 0, {1, 1}},
             {"back past a short last segment", "0 0 L 9 0 L 9 1e-8", {0, 1e-9}, -9.5e-9, 0, {0, 0}},
             {"back from the end of 1,000 km by nothing", "line 0 0 1e9 0", {0, 1}, -5e-8, 0, {0, 1}},
             {"back to the start of a line", "line 0 0 10 0", {0, 0.5}, -5 - 4e-9, 0, {0, 0}},
             {"back behind a dot of a piece", "0 0 L 9 0 L 9 0 L 9 9 L 0 9", {3, 0.5}, -13.5, 0, {2, 0}},
             {"a whole line is a lap", "line 0 0 10 0", {0, 0}, 10, 1, {0, 1}},
             {"laps back on a line", "line 0 0 10 0", {0, 0.5}, -27, 2, {0, 0.8}},
             {"laps on one Bezier piece", "0 0 B 1 0 2 0 3 0", {0, 0.5}, 8.1, 2, {0, 0.2}},
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
                                                         {5, 7.6, 2.5, {1, -1, 2, -2, 3}},
                                                         {0.3, 0, 0.1, {-1, -2}}, // 0.3 / 0.1 is below 3
                                                         {1e300, 1, 1, {}}}) {
        std::vector<int> steps;
        GetOffsetTable(back, forward, step, steps);
        EXPECT_EQ(steps, expected) << back << " back, " << forward << " forward by " << step;
    }
}
