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
        ASSERT_EQ(info.pObject, contour);
        EXPECT_EQ(info.nTag, static_cast<int>(contour->GetID()));
        double gap = 1e-5; // of the samples of a Bezier piece, which may lose to a line that is farther
        for (const SEGMENT& segment : contour->GetNodes())
            if (segment.nType == SEGMENT::kBezier) gap = std::max(gap, segment.GetLength() / 100);
        const double nearest = SampledDistance(Along(*contour), p, 400 * contour->GetSegmentCount());
        DPOINT2 answered;
        ASSERT_TRUE(PosToCoor(contour, info.nIndex, info.dRatio, answered));
        EXPECT_LE(math::D2GetDistance(p, answered) - nearest, gap);
    }
}

TEST(NearestPosition, JointsTiesAndEnds) {
    for (const auto& [name, contour, p, pos] : Table<const char*, const char*, DPOINT2, POLYPOS>{
             {"a joint is the start of its later segment", kOpenSquare, {10, 10}, {2, 0}},
             {"the end of an open contour", kOpenSquare, {0, 10}, {2, 1}},
             {"the end of a closed contour is its start", kTriangle, {0, 0}, {0, 0}},
             {"beside a line", kOpenSquare, {5, -1}, {0, 0.5}},
             {"as near to two segments: the first", kOpenSquare, {7, 3}, {0, 0.7}},
             {"beside an arc", "0 0 A 10 0 1 L 20 0", {5, -7}, {0, 0.5}},
             {"outside an arc's sweep: the nearer end", "0 0 A 10 0 1", {2, 3}, {0, 0}},
             {"the nearer end, the start, clockwise", "10 0 A 0 0 -1", {8, 3}, {0, 0}},
             {"the nearer end, the end, clockwise", "10 0 A 0 0 -1", {2, 3}, {0, 1}}}) {
        CCadGroup group;
        group.PushBack(Polyline(contour).release());
        const PosInfo info = Pick(group, p, 10);
        EXPECT_TRUE(IsAt({info.nIndex, info.dRatio}, pos)) << name;
    }
}

// From p to the line or arc from the origin to `end`.
TEST(NearestPosition, DistanceToASegment) {
    for (const auto& [name, p, end, bulge, distance] : Table<const char*, DPOINT2, DPOINT2, double, double>{
             {"an arc of no length", {3, 4}, {0, 0}, 1, 5},
             {"on an end", {0, 0}, {1, 0}, 1, 0},
             {"over an arc", {1, 3}, {2, 0}, -1, 2},
             {"outside an arc's sweep", {1, 3}, {2, 0}, 1, std::sqrt(10)},
             {"beside a line", {1, 3}, {2, 0}, 0, 3},
             {"before a line", {-3, 4}, {2, 0}, 0, 5}})
        EXPECT_NEAR(CPosCalculator::GetMinDistance(p, {0, 0}, end, bulge), distance, 1e-12) << name;
}

TEST(NearestPosition, FootOfHostileNumbersIsFinite) {
    for (const double bad : {kNaN, kInf}) {
        EXPECT_TRUE(std::isfinite(CPosCalculator::GetPerpendicularFootRatio({bad, 1}, {0, 0}, {1, 0}, 0.5)));
        EXPECT_TRUE(std::isfinite(CPosCalculator::GetPerpendicularFootRatio({2, 1}, {0, 0}, {1, 0}, bad)));
    }
}

TEST(NearestPosition, RatioAlongAContour) {
    const auto circle = Polyline("10 0 A -10 0 1 A 10 0 1");
    const auto ratioOf = [&](const DPOINT2& p) { return CPosCalculator::GetPtInMultiRatio(p, circle.get()); };
    EXPECT_NEAR(ratioOf({0, 10}), 0.25, 1e-12);
    EXPECT_NEAR(ratioOf({0, -10}), 0.75, 1e-12);
    EXPECT_NEAR(ratioOf({10, -1e-7}), 0, 1e-7) << "just before the start: no whole turn is added";
    EXPECT_NEAR(ratioOf({0, 0}), 1, 1e-12) << "on no segment";
    const auto lines = Polyline("0 0 L 10 0 L 10 30");
    EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio({10, 10}, lines.get()), 0.5, 1e-12);
    EXPECT_TRUE(std::isnan(CPosCalculator::GetPtInMultiRatio({0, 0}, nullptr)));
}

TEST(NearestPosition, OnOtherKindsAndInContainers) {
    CCadGroup group, all(false), closed(false);
    auto* circle = new CCadCircle({0, 0}, 5, false);
    auto* text = TextOf(new CCadLine({40, 0}, {50, 0}));
    CCadLine line({20, 0}, {30, 0});
    AddGroup(*AddGroup(group))->PushBack(circle);
    Fill(group, {RelationTo(&line), text});
    EXPECT_NEAR(Pick(group, {0, 5}, 1).dRatio, 0.75, 1e-12) << "the circle runs clockwise";
    EXPECT_EQ(Pick(group, {5, 0}, 1).dRatio, 0);
    EXPECT_NEAR(Pick(group, {23, 4}, 5).dRatio, 0.5, 1e-12) << "the point itself, not its foot";
    EXPECT_EQ(Pick(group, {45, 0}, 1).pObject, text) << "hit, though a text has no positions";
    EXPECT_EQ(Pick(group, {5, 0}, 1, true).pObject, circle);
    EXPECT_EQ(Pick(group, {25, 0}, 1, true).pObject, nullptr) << "open";
    Calculator::_SelectObject(&group, &all);
    Calculator::_SelectClosedObject(&group.GetObjectsList(), &closed);
    EXPECT_EQ(all.GetObjectsList(), (std::list<CCadObject*>{circle, &line, text}));
    EXPECT_EQ(closed.GetObjectsList(), std::list<CCadObject*>{circle});
    for (CCadGroup* borrowed : {&all, &closed}) borrowed->PickOffAll();
}

} // namespace
