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
        const double error = std::remainder(LengthTo(*contour, out) - travelled, total);
        EXPECT_LE(std::abs(error), 1e-12 * total);
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

// Position, offset, laps (-1: refused) and the position reached, on one contour after the other.
TEST(OffsetWalk, LapsJointsAndEnds) {
    const std::pair<const char*, const char*> tables[] = {
        {"0 0 L 10 0 L 10 10 L 0 10 L 0 0",
         "0+0.5 45 1 1+0; 0+0.5 40 1 0+0.5; 0+0.5 3 0 0+0.8; 0+0.5 -40 1 0+0.5; 0+0.5 -5 0 0+0; "
         "0+0 -5 0 3+0.5; 0+0.5 38 0 0+0.3; 0+0.5 1e-10 0 0+0.5; 0+0.5 4000000003 1e8 0+0.8; 0+1 1 -1 0+0"},
        {"0 0 L 10 0 L 10 10 L 0 10", "0+0.5 25 0 2+1; 0+0.5 26 0 0+0.1; 2+1 -10 0 2+0; 0+0 -1 0 2+0.9"},
        {"line 0 0 10 0", "0+0.5 7 0 0+0.2; 0+0.5 5 0 0+1; 0+0.5 -27 2 0+0.8"},
        {"circle 0 0 1.5915494309189535", "0+0.5 5 0 0+0; 0+0.25 10 1 0+0.25"}, // of length 10
        {"0 0 L 10 0", "0+0.5 27 2 0+0.2"},
        {"0 0 L 0 0 L 0 0", "0+0 1 -1 0+0"},
        {"polyline", "0+0 1 -1 0+0"},
        {"null", "0+0 1 -1 0+0"}};
    for (const auto& [text, rows] : tables)
        for (const auto& [row, pos, offset, laps, expected] : Rows<POLYPOS, double, int, POLYPOS>(rows)) {
            SCOPED_TRACE(text + (":" + row));
            const auto object = Object(text);
            POLYPOS out;
            EXPECT_EQ(GetPosByOffset(object.get(), pos, offset, out), laps);
            if (laps >= 0) EXPECT_TRUE(IsAt(out, expected, 1e-8)) << out.nSegIndex << "+" << out.dRatio;
            for (const double hostile : {kNaN, kInf, -kInf, 1e300, -1e300})
                EXPECT_EQ(GetPosByOffset(object.get(), pos, hostile, out), -1);
            for (const int index : {INT_MIN, INT_MAX})
                EXPECT_EQ(GetPosByOffset(object.get(), {index, 0.5}, 1, out), -1);
        }
}

// Back, forward, step; the multiples in between.
TEST(OffsetWalk, StepTable) {
    for (const auto& [row, back, forward, step, steps] : Rows<double, double, double, std::vector<int>>(
             "2.5 1.2 1 1,-1,-2; 0 0 1 none; 3 0 1 -1,-2,-3; -3 2 1 1,2; 1 1 0 none; nan 1 1 none;"
             "1e300 1 1 none")) {
        std::vector<int> out;
        GetOffsetTable(back, forward, step, out);
        EXPECT_EQ(out, steps) << row;
    }
}

TEST(SharpJoints, TurnsAndTheHull) {
    for (const auto& [row, object, angle, expected] : Rows<std::string, double, std::vector<int>>(
             "'0 0 L 10 0 L 10 10 L 0 10 L 0 0' 90 1,2,3,0; '0 0 L 10 0 L 10 10 L 0 10 L 0 0' 91 none;"
             "'0 0 L 10 0 L 10 10 L 0 10' 45 1,2; '0 0 L 10 0 L 20 0 L 20 5' 30 2;"
             "'0 0 L 10 0 A 10 10 1 L 0 10' 30 none; '0 0 L 10 0 A 10 10 -1 L 0 10' 170 1,2;"
             "'ellipse 0 0 2 1 0' 10 0; '0 0 L 10 0 B 10 5 5 10 0 10 L 0 0' 10 0")) { // no direction: Bezier
        std::vector<int> joints;
        CollectPos(Object(object).get(), angle, joints);
        EXPECT_EQ(joints, expected) << row;
    }
    std::vector<int> joints, second;
    // an L: five corners turn left, the one at (4, 4) right
    const auto bracket = Polyline("4 4 L 4 10 L 0 10 L 0 0 L 10 0 L 10 4 L 4 4");
    for (const int limit : {1, 6, 4, 0}) {
        joints.clear(), second = {-7};
        CollectTurnDirPos(bracket.get(), 45, joints, limit, second);
        const bool split = limit == 4 || limit == 0;
        EXPECT_EQ(joints, split ? (std::vector{3, 4, 5, 1, 2}) : (std::vector{1, 2, 3, 4, 5, 0})) << limit;
        EXPECT_EQ(second, split ? std::vector{0} : std::vector{-7}) << limit;
    }
}

// Both lengths against sums, on three segments of lengths 1, 2 and 3.
TEST(LengthBetween, BothVariants) {
    const std::pair<const char*, const char*> tables[] = {
        {"0 0 L 1 0 L 3 0 L 0 0", "1+0.5 1+0.25 -0.5 5.5; 1+0.5 1+0.5 0 6; 2+0.5 0+0.5 2 2; 0+0.5 2+0.5 4 4"},
        {"0 0 L 1 0 L 3 0 L 6 0", "2+0.5 0+0.5 2 -4; 0+0.5 2+0.5 4 4; 1+0.5 1+0.5 0 0; 0+0 7+0 -77 -77;"
                                  "-1e99+0 1e99+0 -77 -77"},
        {"line 0 0 10 0", "0+0.75 0+0.25 -5 -5"},
        {"circle 0 0 1.5915494309189535", "0+0.75 0+0.25 5 5; 0+0.5 0+0.5 10 10"},
        {"0 0 L 1 0 B 1 0 2 0 2 0", "1+0 0+0 -77 -77"}, // extended: left out
        {"null", "0+0 0+1 -77 -77"}};
    for (const auto& [text, rows] : tables)
        for (const auto& [row, from, to, once, twice] : Rows<POLYPOS, POLYPOS, double, double>(rows)) {
            SCOPED_TRACE(text + (":" + row));
            const auto object = Object(text);
            double first = -77, second = -77; // kept where there is no answer
            GetLineLength_Dot2Dot(object.get(), from, to, first);
            GetLineLength_Dot2Dot2(object.get(), from, to, second);
            EXPECT_POINT_NEAR((DPOINT2{first, second}), (DPOINT2{once, twice}), 1e-12);
        }
}
