#include "support/support.h"

using namespace qev;
using namespace test;

// Walks of up to some laps either way against the sum of lengths, modulo the whole.
TEST(OffsetWalk, AgainstSummedLengths) {
    for (Random random; random.Rounds(2000);) {
        const auto contour = RandomPolylineEx(random, 8);
        const double total = contour->GetLength();
        if (total == 0) continue;
        POLYPOS pos = random.Pos(contour->GetSegmentCount()), out;
        const double offset = total * random.Uniform(-3.5, 3.5);
        const int laps = GetPosByOffset(contour.get(), pos, offset, out);
        const double travelled = LengthTo(*contour, pos) + offset;
        EXPECT_NEAR(std::remainder(LengthTo(*contour, out) - travelled, total), 0, 1e-12 * total);
        EXPECT_EQ(laps, static_cast<int>(std::abs(offset) / total));
    }
}

TEST(OffsetWalk, LongContoursThereAndBack) {
    CCadPolyline contour;
    Random random;
    contour.SetStartPoint({1e4, 1e4});
    for (int i = 0; i < 100'000; ++i) contour.AddArc(random.Point() + DPOINT2{1e4, 1e4}, random.Bulge());
    while (random.Rounds(20)) {
        const double offset = random.Uniform(-1e6, 1e6);
        POLYPOS pos = random.Pos(100'000), there, back;
        ASSERT_EQ(GetPosByOffset(&contour, pos, offset, there), 0);
        ASSERT_EQ(GetPosByOffset(&contour, there, -offset, back), 0);
        EXPECT_NEAR(PolyPosToDouble(back), PolyPosToDouble(pos), 1e-7); // sums of 1e6 mm
    }
}

TEST(OffsetWalk, LapsJointsAndEnds) {
    for (const auto& [name, contour, from, offset, laps, to] :
         Table<const char*, const char*, POLYPOS, double, int, POLYPOS>{
             {"more than a lap, onto a joint", kSquare, {0, 0.5}, 45, 1, {1, 0}},
             {"a lap on", kSquare, {0, 0.5}, 40, 1, {0, 0.5}},
             {"a lap back", kSquare, {0, 0.5}, -40, 1, {0, 0.5}},
             {"back to the start", kSquare, {0, 0.5}, -5, 0, {0, 0}},
             {"back over the start", kSquare, {0, 0}, -5, 0, {3, 0.5}},
             {"nearly a lap", kSquare, {0, 0.5}, 38, 0, {0, 0.3}},
             {"to the end of a closed contour, which is its start", kSquare, {3, 0.5}, 5, 0, {0, 0}},
             {"nowhere", kSquare, {0, 0.5}, 1e-10, 0, {0, 0.5}},
             {"very many laps", kSquare, {0, 0.5}, 4'000'000'003, 100'000'000, {0, 0.8}},
             {"to the end of an open contour", kOpenSquare, {0, 0.5}, 25, 0, {2, 1}},
             {"over the end of an open contour", kOpenSquare, {0, 0.5}, 26, 0, {0, 0.1}},
             {"back from the end", kOpenSquare, {2, 1}, -10, 0, {2, 0}},
             {"back over the start of an open contour", kOpenSquare, {0, 0}, -1, 0, {2, 0.9}},
             {"over the end of a line", "line 0 0 10 0", {0, 0.5}, 7, 0, {0, 0.2}},
             {"to the end of a line", "line 0 0 10 0", {0, 0.5}, 5, 0, {0, 1}},
             {"laps back on a line", "line 0 0 10 0", {0, 0.5}, -27, 2, {0, 0.8}},
             {"to the end of a circle, which is its start", kCircleOf10, {0, 0.5}, 5, 0, {0, 0}},
             {"a lap on a circle", kCircleOf10, {0, 0.25}, 10, 1, {0, 0.25}},
             {"laps on a polyline of one segment", "0 0 L 10 0", {0, 0.5}, 27, 2, {0, 0.2}}}) {
        SCOPED_TRACE(name);
        POLYPOS out;
        EXPECT_EQ(GetPosByOffset(Object(contour).get(), from, offset, out), laps);
        EXPECT_TRUE(IsAt(out, to, 1e-8));
    }
}

TEST(OffsetWalk, Refusals) {
    POLYPOS out;
    for (const char* text :
         {kSquare, kOpenSquare, "line 0 0 10 0", kCircleOf10, "0 0 L 0 0 L 0 0", "polyline", "null"}) {
        const auto object = Object(text);
        for (const double offset : {kNaN, kInf, -kInf, 1e300, -1e300})
            EXPECT_EQ(GetPosByOffset(object.get(), {0, 0.5}, offset, out), -1) << text << " by " << offset;
        for (const int index : {INT_MIN, INT_MAX})
            EXPECT_EQ(GetPosByOffset(object.get(), {index, 0.5}, 1, out), -1) << text << " at " << index;
    }
    for (const char* text : {"0 0 L 0 0 L 0 0", "polyline", "null"})
        EXPECT_EQ(GetPosByOffset(Object(text).get(), {0, 0}, 1, out), -1) << text;
    EXPECT_EQ(GetPosByOffset(Object(kSquare).get(), {0, 1}, 1, out), -1) << "the end of an inner segment";
}

TEST(OffsetWalk, StepsOfATable) {
    for (const auto& [back, forward, step, expected] :
         Table<double, double, double, std::vector<int>>{{2.5, 1.2, 1, {1, -1, -2}},
                                                         {0, 0, 1, {}},
                                                         {3, 0, 1, {-1, -2, -3}},
                                                         {-3, 2, 1, {1, 2}},
                                                         {1, 1, 0, {}},
                                                         {kNaN, 1, 1, {}},
                                                         {1e300, 1, 1, {}}}) {
        std::vector<int> steps;
        GetOffsetTable(back, forward, step, steps);
        EXPECT_EQ(steps, expected) << back << " back, " << forward << " forward by " << step;
    }
}
