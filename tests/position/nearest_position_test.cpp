#include <utility>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// Opens what derived calculators see.
struct Calculator : CPosCalculator {
    using CPosCalculator::_RetrieveNearestPos, CPosCalculator::_SelectObject,
        CPosCalculator::_SelectClosedObject, CPosCalculator::_Line, CPosCalculator::_Arc,
        CPosCalculator::_Circle, CPosCalculator::_Ellipse, CPosCalculator::_EllipseArc,
        CPosCalculator::_MultiSegments;
};

PosInfo Pick(const CCadGroup& group, const DPOINT2& p, double tolerance, bool closedOnly = false) {
    CPosCalculator calculator;
    calculator.Init(&group, &p, tolerance);
    PosInfo info;
    const bool found = calculator.CalculatePosition(&info, closedOnly);
    EXPECT_EQ(found, info.pObject != nullptr);
    return info;
}

TEST(NearestPosition, JointsTiesAndEnds) {
    for (const auto& [name, contour, p, pos] : Table<const char*, const char*, DPOINT2, POLYPOS>{
             {"a joint is the start of its later segment", kOpenSquare, {10, 10}, {2, 0}},
             {"the end of an open contour", kOpenSquare, {0, 10}, {2, 1}},
             {"the end of a closed contour is its start", kTriangle, {0, 0}, {0, 0}},
             {"as near to two segments: the first", kOpenSquare, {7, 3}, {0, 0.7}},
             {"the nearer end, the end, clockwise", "10 0 A 0 0 -1", {2, 3}, {0, 1}}}) {
        CCadGroup group;
        group.PushBack(Polyline(contour).release());
        const PosInfo info = Pick(group, p, 10);
        EXPECT_TRUE(IsAt({info.nIndex, info.dRatio}, pos)) << name;
    }
}

TEST(NearestPosition, HostileNumbers) {
    EXPECT_EQ(CPosCalculator::GetMinDistance({0, 1000}, {0, 0}, {1e-6, 0}, 0), 1000) << "to nearly a point";
    for (const double bad : {kNaN, kInf})
        EXPECT_TRUE(std::isfinite(CPosCalculator::GetPerpendicularFootRatio({bad, 1}, {0, 0}, {1, 0}, bad)));
}

TEST(NearestPosition, OnAHostsContourAndOneWithoutSegments) {
    struct : CCadMultiSegments {
        cad_t GetType() const override { return kCad1820; }
        int GetSegmentCount() const override { return 1; }
        SEGMENT GetSegment(int) const override { return segment; }
        SEGMENT segment;
    } contour;
    contour.segment.ptEnd = {10, 0};
    contour.segment.dBulge = 1; // of the line type, whose bulge counts for nothing
    Calculator calculator;
    const DPOINT2 p{2, 0.5};
    calculator.Init(nullptr, &p, 0);
    PosInfo info;
    EXPECT_TRUE(calculator._RetrieveNearestPos(&contour, &info, false));
    EXPECT_TRUE(IsAt({info.nIndex, info.dRatio}, {0, 0.2}));
    EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio({2, 0}, &contour), 0.2, 1e-12);
    const CCadPolyline empty;
    EXPECT_TRUE(calculator._RetrieveNearestPos(&empty, &info, false)) << "its kind has positions";
    EXPECT_TRUE(IsAt({info.nIndex, info.dRatio}, {-1, 0}));
}

// Each segment is nearer than the one before it, but by less than the tolerance.
TEST(NearestPosition, OfASpiralEverySecondSegmentIsTaken) {
    CCadPolyline spiral;
    spiral.SetStartPoint({0.01, 0});
    for (int i = 1; i <= 30; ++i) spiral.AddLine(math::Rotated({0.01 - 9e-10 * i, 0}, 0.2 * i));
    POLYPOS pos;
    EXPECT_TRUE(CoorToPos(&spiral, {0, 0}, pos, 1));
    EXPECT_EQ(pos.nSegIndex, 28);
}

TEST(NearestPosition, RatioAlongAContour) {
    const auto circle = Polyline("10 0 A -10 0 1 A 10 0 1"), point = Polyline("0 0 L 0 0 A 0 0 1");
    EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio({0, -10}, circle.get()), 0.75, 1e-12);
    EXPECT_EQ(CPosCalculator::GetPtInMultiRatio({0, 0}, circle.get()), 1) << "on no segment";
    EXPECT_EQ(CPosCalculator::GetPtInMultiRatio({0, 0}, point.get()), 0) << "no length";
}

TEST(NearestPosition, OnOtherKindsAndInContainers) {
    CCadGroup group;
    auto* circle = new CCadCircle({0, 0}, 5, false);
    auto* text = TextOf(new CCadLine({40, 0}, {50, 0}));
    CCadLine line({20, 0}, {30, 0});
    AddGroup(*AddGroup(group))->PushBack(circle);
    Fill(group, {RelationTo(&line), text});
    EXPECT_NEAR(Pick(group, {0, 5}, 1).dRatio, 0.75, 1e-12) << "the circle runs clockwise";
    EXPECT_NEAR(Pick(group, {23, 4}, 5).dRatio, 0.5, 1e-12) << "the point itself, not its foot";
    EXPECT_EQ(Pick(group, {45, 0}, 1).pObject, text) << "hit, though a text has no positions";
    EXPECT_EQ(Pick(group, {5, 0}, 1, true).pObject, circle);
    EXPECT_EQ(Pick(group, {25, 0}, 1, true).pObject, nullptr) << "open";
    const auto expectSelected = [&](const auto* from, const auto* nothing) {
        CCadGroup all, closed;
        Calculator::_SelectObject(from, &all), Calculator::_SelectObject(nothing, &all);
        Calculator::_SelectClosedObject(from, &closed), Calculator::_SelectClosedObject(nothing, &closed);
        EXPECT_EQ(std::exchange(all.GetObjectsList(), {}), (std::list<CCadObject*>{circle, &line, text}));
        EXPECT_EQ(std::exchange(closed.GetObjectsList(), {}), (std::list<CCadObject*>{circle}));
    };
    expectSelected(&group, static_cast<const CCadGroup*>(nullptr));
    expectSelected(&group.GetObjectsList(), static_cast<const std::list<CCadObject*>*>(nullptr));
    const DPOINT2 p{23, 4};
    Calculator calculator;
    calculator.Init(nullptr, &p, 0);
    for (const auto handler :
         {&Calculator::_Line, &Calculator::_Arc, &Calculator::_Circle, &Calculator::_Ellipse,
          &Calculator::_EllipseArc, &Calculator::_MultiSegments}) {
        PosInfo info;
        (calculator.*handler)(&line, nullptr), (calculator.*handler)(&line, &info);
        EXPECT_NEAR(info.dRatio, 0.5, 1e-12);
    }
}

} // namespace
