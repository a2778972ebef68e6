#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// Opens what derived calculators see.
struct Calculator : CPosCalculator {
    using CPosCalculator::_SelectClosedObject;
    using CPosCalculator::_SelectObject;
};

PosInfo Pick(const CCadGroup& group, const DPOINT2& p, double tolerance, bool closedOnly = false) {
    CPosCalculator calculator;
    calculator.Init(&group, &p, tolerance);
    PosInfo info;
    const bool found = calculator.CalculatePosition(&info, closedOnly);
    EXPECT_EQ(found, info.pObject != nullptr);
    return info;
}

// The nearest of many points of the contour is the oracle; Bezier pieces answer with one of their own 101.
TEST(NearestPosition, AgainstSamples) {
    for (Random random; random.Rounds(300);) {
        CCadGroup group;
        auto* contour = RandomPolylineEx(random, 7).release();
        group.PushBack(contour);
        const DPOINT2 p = random.Point();
        const PosInfo info = Pick(group, p, 1e4);
        ASSERT_TRUE(info.pObject == contour && info.nTag == static_cast<int>(contour->GetID()));
        double gap = 1e-5; // of the samples of a Bezier piece, which may lose to a line that is farther
        for (const SEGMENT& segment : contour->GetNodes())
            if (segment.nType == SEGMENT::kBezier) gap = std::max(gap, segment.GetLength() / 100);
        const double nearest = SampledDistance(Along(*contour), p, 400 * contour->GetSegmentCount());
        DPOINT2 answered;
        ASSERT_TRUE(PosToCoor(contour, info.nIndex, info.dRatio, answered));
        EXPECT_LE(math::D2GetDistance(p, answered) - nearest, gap);
    }
}

// Of two as near the first wins; outside an arc's sweep it is the nearer end, on a clockwise arc too.
TEST(NearestPosition, JointsTiesAndEnds) {
    for (const auto& [row, contour, p, pos] : Rows<std::string, DPOINT2, POLYPOS>(
             "'0 0 L 10 0 L 10 10 L 0 10' 10,10 2+0; '0 0 L 10 0 L 10 10 L 0 10' 0,10 2+1;"
             "'0 0 L 10 0 L 10 10 L 0 10' 5,-1 0+0.5; '0 0 L 10 0 L 10 10 L 0 0' 0,0 0+0;"
             "'0 0 L 10 0 L 10 10 L 0 10' 7,3 0+0.7; '0 0 A 10 0 1 L 20 0' 5,-7 0+0.5;"
             "'0 0 A 10 0 1' 2,3 0+0; '10 0 A 0 0 -1' 8,3 0+0; '10 0 A 0 0 -1' 2,3 0+1")) {
        CCadGroup group;
        group.PushBack(Polyline(contour).release());
        const PosInfo info = Pick(group, p, 10);
        EXPECT_TRUE(IsAt({info.nIndex, info.dRatio}, pos)) << row;
    }
    for (const auto& [row, p, end, bulge, distance] : Rows<DPOINT2, DPOINT2, double, double>(
             "3,4 0,0 1 5; 0,0 1,0 1 0; 1,3 2,0 -1 2; 1,3 2,0 1 3.1622776601683795"))
        EXPECT_NEAR(CPosCalculator::GetMinDistance(p, {0, 0}, end, bulge), distance, 1e-12) << row;
    for (const double bad : {kNaN, kInf}) {
        EXPECT_EQ(CPosCalculator::GetPerpendicularFootRatio({bad, 1}, {0, 0}, {1, 0}, 0.5) * 0, 0);
        EXPECT_EQ(CPosCalculator::GetPerpendicularFootRatio({2, 1}, {0, 0}, {1, 0}, bad) * 0, 0);
    }
}

// A point just before the start still lies on the first arc for the membership test: no whole turn is added.
TEST(NearestPosition, RatioAlongContours) {
    const auto contour = Polyline("10 0 A -10 0 1 A 10 0 1");
    EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio({0, 10}, contour.get()), 0.25, 1e-12);
    EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio({10, -1e-7}, contour.get()), 0, 1e-7);
    EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio({0, 0}, contour.get()), 1, 1e-12) << "on no segment";
    EXPECT_TRUE(std::isnan(CPosCalculator::GetPtInMultiRatio({0, 0}, nullptr)));
}

TEST(NearestPosition, KindsAndSelections) {
    CCadGroup group;
    auto* circle = new CCadCircle({0, 0}, 5, false);
    CCadLine line({20, 0}, {30, 0});
    auto* text = TextOf(new CCadLine({40, 0}, {50, 0}));
    AddGroup(*AddGroup(group))->PushBack(circle);
    Fill(group, {RelationTo(&line), text});
    EXPECT_NEAR(Pick(group, {0, 5}, 1).dRatio, 0.75, 1e-12) << "the circle runs clockwise";
    EXPECT_EQ(Pick(group, {5, 0}, 1).dRatio, 0);
    EXPECT_NEAR(Pick(group, {23, 4}, 5).dRatio, 0.5, 1e-12) << "the point itself, not its foot";
    EXPECT_EQ(Pick(group, {45, 0}, 1).pObject, text) << "hit, though a text has no positions";
    EXPECT_EQ(Pick(group, {25, 0}, 1, true).pObject, nullptr) << "open";
    EXPECT_EQ(Pick(group, {5, 0}, 1, true).pObject, circle);
    CCadGroup all(false), closed(false);
    Calculator::_SelectObject(&group, &all);
    Calculator::_SelectClosedObject(&group.GetObjectsList(), &closed);
    EXPECT_TRUE(all.GetNumOfChild() == 3 && all.GetFront() == circle && all.GetBack() == text);
    EXPECT_TRUE(closed.GetNumOfChild() == 1 && closed.GetFront() == circle);
    for (CCadGroup* borrowed : {&all, &closed}) borrowed->PickOffAll();
}

} // namespace
