#include <climits>
#include <cmath>
#include <memory>
#include <string>

#include <qev/contour.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;
using math::POLYPOS;

const auto kSquare = test::Polyline("0 0 L 10 0 L 10 10 L 0 10 L 0 0");
const auto kOpen = test::Polyline("0 0 L 10 0 L 10 10 L 0 10");

// The length from the start, summed segment by segment.
double LengthTo(const CCadMultiSegments& contour, const POLYPOS& pos) {
    double length = contour.GetSegment(pos.nSegIndex).GetLength() * pos.dRatio;
    for (int i = 0; i < pos.nSegIndex; ++i) length += contour.GetSegment(i).GetLength();
    return length;
}

// Walks of up to some laps either way against the sum of lengths, modulo the whole.
TEST(OffsetWalk, AgainstSummedLengths) {
    test::Random random;
    double worst = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto contour = test::RandomPolylineEx(random, 8);
        const double total = contour->GetLength();
        if (total == 0) continue;
        POLYPOS pos{random.Int(0, contour->GetSegmentCount() - 1), random.Uniform(0, 0.999)}, out;
        const double offset = total * random.Uniform(-3.5, 3.5);
        const int laps = GetPosByOffset(contour.get(), pos, offset, out);
        const double travelled = LengthTo(*contour, pos) + offset;
        const double error = std::remainder(LengthTo(*contour, out) - travelled, total);
        worst = std::max(worst, std::abs(error) / total);
        EXPECT_EQ(laps, static_cast<int>(std::abs(offset) / total)) << i;
    }
    EXPECT_LE(worst, 1e-12);
    RecordProperty("worst_relative", std::to_string(worst * 1e15) + "e-15");
}

TEST(OffsetWalk, LongContoursThereAndBack) {
    CCadPolyline contour;
    test::Random random;
    contour.SetStartPoint({1e4, 1e4});
    for (int i = 0; i < 100'000; ++i)
        contour.AddArc(random.Point() + math::DPOINT2{1e4, 1e4}, random.Bulge());
    for (int i = 0; i < 20; ++i) {
        const POLYPOS pos{random.Int(0, 99'999), random.Uniform(0, 1)};
        const double offset = random.Uniform(-1e6, 1e6);
        POLYPOS there, back;
        ASSERT_EQ(GetPosByOffset(&contour, pos, offset, there), 0);
        ASSERT_EQ(GetPosByOffset(&contour, there, -offset, back), 0);
        EXPECT_NEAR(PolyPosToDouble(back), PolyPosToDouble(pos), 1e-7)
            << "sums of 1e6 mm over thousands of segments";
    }
}

TEST(OffsetWalk, LapsJointsAndEnds) {
    const CCadLine line({0, 0}, {10, 0});
    const CCadCircle circle({0, 0}, 10 / math::kTwoPi);
    const CCadPolyline empty;
    const auto single = test::Polyline("0 0 L 10 0"), zero = test::Polyline("0 0 L 0 0 L 0 0");
    const struct {
        const CCadObject* object;
        POLYPOS pos;
        double offset;
        int laps;
        POLYPOS out;
    } cases[] = {
        {kSquare.get(), {0, 0.5}, 45, 1, {1, 0}},
        {kSquare.get(), {0, 0.5}, 40, 1, {0, 0.5}},
        {kSquare.get(), {0, 0.5}, 3, 0, {0, 0.8}},
        {kSquare.get(), {0, 0.5}, -40, 1, {0, 0.5}},
        {kSquare.get(), {0, 0.5}, -5, 0, {0, 0}},
        {kSquare.get(), {0, 0}, -5, 0, {3, 0.5}},
        {kSquare.get(), {0, 0.5}, 38, 0, {0, 0.3}},
        {kSquare.get(), {0, 0.5}, 1e-10, 0, {0, 0.5}},
        {kSquare.get(), {0, 0.5}, 4e9 + 3, 100000000, {0, 0.8}},
        {kSquare.get(), {0, 1}, 1, -1, {}},
        {kOpen.get(), {0, 0.5}, 25, 0, {2, 1}},
        {kOpen.get(), {0, 0.5}, 26, 0, {0, 0.1}},
        {kOpen.get(), {2, 1}, -10, 0, {2, 0}},
        {kOpen.get(), {0, 0}, -1, 0, {2, 0.9}},
        {&line, {0, 0.5}, 7, 0, {0, 0.2}},
        {&line, {0, 0.5}, 5, 0, {0, 1}},
        {&line, {0, 0.5}, -27, 2, {0, 0.8}},
        {&circle, {0, 0.5}, 5, 0, {0, 0}},
        {&circle, {0, 0.25}, 10, 1, {0, 0.25}},
        {single.get(), {0, 0.5}, 27, 2, {0, 0.2}},
        {zero.get(), {0, 0}, 1, -1, {}},
        {&empty, {0, 0}, 1, -1, {}},
        {nullptr, {0, 0}, 1, -1, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.pos.nSegIndex << "+" << c.pos.dRatio << " by " << c.offset);
        POLYPOS out;
        EXPECT_EQ(GetPosByOffset(c.object, c.pos, c.offset, out), c.laps);
        if (c.laps >= 0) EXPECT_NEAR(PolyPosToDouble(out), PolyPosToDouble(c.out), 1e-8);
        if (c.laps >= 0) EXPECT_EQ(out.nSegIndex, c.out.nSegIndex);
        for (const double hostile : {test::kNaN, test::kInf, -test::kInf, 1e300, -1e300})
            EXPECT_EQ(GetPosByOffset(c.object, c.pos, hostile, out), -1);
        for (const int index : {INT_MIN, INT_MAX})
            EXPECT_EQ(GetPosByOffset(c.object, {index, 0.5}, 1, out), -1);
    }
}

TEST(OffsetWalk, StepTable) {
    const struct {
        double back, forward, step;
        std::vector<int> steps;
    } cases[] = {{2.5, 1.2, 1, {1, -1, -2}}, {0, 0, 1, {}}, {3, 0, 1, {-1, -2, -3}},
                 {-3, 2, 1, {1, 2}},         {1, 1, 0, {}}, {test::kNaN, 1, 1, {}},
                 {1e300, 1, 1, {}}};
    for (const auto& c : cases) {
        std::vector<int> out{7};
        GetOffsetTable(c.back, c.forward, c.step, out);
        out.erase(out.begin());
        EXPECT_EQ(out, c.steps) << c.back;
    }
}

TEST(SharpJoints, TurnsAndTheHull) {
    const struct {
        const char* contour;
        double angle;
        std::vector<int> joints;
    } cases[] = {{"0 0 L 10 0 L 10 10 L 0 10 L 0 0", 90, {1, 2, 3, 0}},
                 {"0 0 L 10 0 L 10 10 L 0 10 L 0 0", 91, {}},
                 {"0 0 L 10 0 L 10 10 L 0 10", 45, {1, 2}},
                 {"0 0 L 10 0 L 20 0 L 20 5", 30, {2}},
                 {"0 0 L 10 0 A 10 10 1 L 0 10", 30, {}},
                 {"0 0 L 10 0 A 10 10 -1 L 0 10", 170, {1, 2}}};
    for (const auto& c : cases) {
        std::vector<int> joints;
        CollectPos(test::Polyline(c.contour).get(), c.angle, joints);
        EXPECT_EQ(joints, c.joints) << c.contour;
    }
    std::vector<int> joints, second;
    const CCadEllipse ellipse({0, 0}, 2, 1, 0);
    CollectPos(&ellipse, 10, joints);
    EXPECT_EQ(joints, std::vector<int>{0});
    joints.clear();
    CollectPos(test::PolylineEx("0 0 L 10 0 B 10 5 5 10 0 10 L 0 0").get(), 10, joints);
    EXPECT_EQ(joints, std::vector<int>{0}) << "a Bezier piece gives no direction";
    // an L: five corners turn left, the one at (4, 4) right
    const auto bracket = test::Polyline("4 4 L 4 10 L 0 10 L 0 0 L 10 0 L 10 4 L 4 4");
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
    const auto triangle = test::Polyline("0 0 L 1 0 L 3 0 L 0 0"),
               open = test::Polyline("0 0 L 1 0 L 3 0 L 6 0");
    const CCadLine line({0, 0}, {10, 0});
    const CCadCircle circle({0, 0}, 10 / math::kTwoPi);
    const double kept = -77;
    const struct {
        const CCadObject* object;
        POLYPOS from, to;
        double first, second;
    } cases[] = {
        {triangle.get(), {1, 0.5}, {1, 0.25}, -0.5, 5.5},
        {triangle.get(), {1, 0.5}, {1, 0.5}, 0, 6},
        {triangle.get(), {2, 0.5}, {0, 0.5}, 2, 2},
        {triangle.get(), {0, 0.5}, {2, 0.5}, 4, 4},
        {open.get(), {2, 0.5}, {0, 0.5}, 2, -4},
        {open.get(), {0, 0.5}, {2, 0.5}, 4, 4},
        {open.get(), {1, 0.5}, {1, 0.5}, 0, 0},
        {open.get(), {0, 0}, {7, 0}, kept, kept},
        {&line, {0, 0.75}, {0, 0.25}, -5, -5},
        {&circle, {0, 0.75}, {0, 0.25}, 5, 5},
        {&circle, {0, 0.5}, {0, 0.5}, 10, 10},
        {nullptr, {0, 0}, {0, 1}, kept, kept},
        {open.get(), {INT_MIN, 0}, {INT_MAX, 0}, kept, kept},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.from.nSegIndex << "+" << c.from.dRatio << " to " << c.to.nSegIndex);
        double first = kept, second = kept;
        GetLineLength_Dot2Dot(c.object, c.from, c.to, first);
        GetLineLength_Dot2Dot2(c.object, c.from, c.to, second);
        EXPECT_NEAR(first, c.first, 1e-12);
        EXPECT_NEAR(second, c.second, 1e-12);
    }
    double length = kept;
    GetLineLength_Dot2Dot2(test::PolylineEx("0 0 L 1 0 L 2 0").get(), {1, 0}, {0, 0}, length);
    EXPECT_EQ(length, kept) << "the extended polyline is left out";
}

} // namespace
