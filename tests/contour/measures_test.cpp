#include <climits>
#include <cmath>

#include <qev/contour.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;
using math::DPOINT2;
using math::kPi;

// A host's own kind with any code, whose virtual answers are known.
class Coded : public CCadMultiSegments {
public:
    explicit Coded(cad_t code) : m_code(code) {}
    cad_t GetType() const override { return m_code; }
    DPOINT2 GetStartPoint() const override { return {1, 2}; }
    DPOINT2 GetEndPoint() const override { return {3, 4}; }
    int GetSegmentCount() const override { return 1; }
    SEGMENT GetSegment(int) const override { return {{1, 2}, {1, 9}}; }
    double GetLength() const override { return 5; }

private:
    cad_t m_code;
};

// What each contour code answers: segments, total length, ends, segment length.
TEST(Measures, KindTable) {
    const struct {
        cad_t code;
        int segments;
        double length, segmentLength;
        bool hasEnds;
    } cases[] = {{0x1800, -1, 5, 0, false}, {0x1810, 1, 5, 7, true},   {0x1820, 1, 5, 7, true},
                 {0x1830, 1, 5, 7, true},   {0x1840, 1, 5, 7, true},   {0x1850, -1, 5, 0, false},
                 {0x1860, 1, 5, 7, true},   {0x1300, -1, 0, 0, false}, {0x1870, -1, 0, 0, false},
                 {0x1811, -1, 0, 0, false}, {0x1B00, -1, 0, 0, false}, {0x1C00, -1, 0, 0, false},
                 {0, -1, 0, 0, false},      {INT_MIN, -1, 0, 0, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        const Coded object(c.code);
        EXPECT_EQ(GetCadSegments(&object), c.segments);
        EXPECT_EQ(GetCadLength(&object), c.length);
        EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(&object), 0), c.segmentLength);
        EXPECT_EQ(!math::IsNoPoint(GetStartPoint(&object)), c.hasEnds);
        EXPECT_EQ(!math::IsNoPoint(GetCadEndPoint(&object)), c.hasEnds);
    }
}

TEST(Measures, LengthsOfSinglePiecesAndContainers) {
    auto* circle = new CCadCircle({0, 0}, 1);
    auto* text = new CCadText("a");
    text->GetTextGroup()->PushBack(new CCadLine({0, 0}, {3, 4}));
    auto* relation = new CCadRelationGroup;
    relation->GetRelationPaths().push_back(circle);
    CCadGroup group;
    for (CCadObject* o : {static_cast<CCadObject*>(circle), static_cast<CCadObject*>(text),
                          static_cast<CCadObject*>(relation), static_cast<CCadObject*>(new CCadDot({9, 9}))})
        group.PushBack(o);
    EXPECT_NEAR(GetCadLength(&group), 4 * kPi + 5, 1e-12);
    EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(circle), 7), circle->GetLength());
    EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(&group), 0), 0);
    EXPECT_EQ(GetCadLength(nullptr), 0);
    const auto polyline = test::Polyline("0 0 L 3 4");
    EXPECT_EQ(GetSegLength(polyline.get(), 0), 5);
    for (const int i : {-1, 1, INT_MAX}) EXPECT_TRUE(std::isnan(GetSegLength(polyline.get(), i)));
}

TEST(Measures, EndsDescendThroughContainers) {
    CCadGroup root;
    CCadGroup* inner = test::AddGroup(root);
    auto* text = new CCadText("a");
    inner->PushBack(text);
    text->GetTextGroup()->PushBack(new CCadCircle({0, 0}, 2));
    EXPECT_POINT_NEAR(GetStartPoint(&root), (DPOINT2{2, 0}), 0);
    root.PushBack(new CCadLine({5, 5}, {6, 7}));
    EXPECT_POINT_NEAR(GetEndPoint(&root), (DPOINT2{6, 7}), 0);
    EXPECT_POINT_NEAR(GetCadStartPoint(&root), (DPOINT2{2, 0}), 0);
    root.PushBack(new Coded(0x1B00)); // looks like a container by its bits
    EXPECT_TRUE(math::IsNoPoint(GetEndPoint(&root)));
    test::AddGroup(root);
    EXPECT_TRUE(math::IsNoPoint(GetEndPoint(&root)) && math::IsNoPoint(GetStartPoint(nullptr)));
    CCadGroup loop;
    test::AddGroup(*test::AddGroup(loop))->PushBack(&loop);
    EXPECT_TRUE(math::IsNoPoint(GetStartPoint(&loop)) && math::IsNoPoint(GetCadEndPoint(&loop)));
    EXPECT_EQ(GetCadLength(&loop), 0);
}

TEST(Measures, AreaAgainstAFinePolygon) {
    test::Random random;
    for (int i = 0; i < 200; ++i) {
        const auto contour = test::RandomPolyline(random, 8);
        const int n = contour->GetSegmentCount();
        double fine = 0;
        for (int k = 0; k < n; ++k) {
            const SEGMENT segment = contour->GetSegment(k);
            fine += test::SampledArea([&](double r) { return segment.GetPoint(r); }, 2000);
            fine += math::Cross(segment.ptStart - contour->GetStartPoint(),
                                segment.ptEnd - contour->GetStartPoint())
                    / 2;
        }
        const double size = 1 + contour->GetLength() * contour->GetLength();
        EXPECT_NEAR(GetCadPolylineArea(contour.get(), true), -fine, 1e-6 * size);
        EXPECT_EQ(GetCadPolylineArea(contour.get(), false),
                  std::abs(GetCadPolylineArea(contour.get(), true)));
        if (std::abs(fine) > 1e-5 * size) EXPECT_EQ(GetCadOBjectDir(contour.get()), fine > 0 ? 2 : 1);
    }
    EXPECT_DOUBLE_EQ(GetCadPolylineArea(test::Polyline("0 0 L 1 0 L 1 0 L 1 1 L 0 1 L 0 0").get(), true), -1);
    EXPECT_DOUBLE_EQ(GetCadPolylineArea(test::Polyline("1 0 A -1 0 1 A 1 0 1").get(), false), kPi);
    EXPECT_EQ(GetCadPolylineArea(nullptr, true), 0);
}

TEST(Measures, Directions) {
    const CCadCircle circle({0, 0}, 1, false);
    const CCadEllipse ellipse({0, 0}, 2, 1, 0);
    const CCadArc arc({0, 0}, 1, 0, 1, false);
    const CCadLine line({0, 0}, {1, 0});
    const Coded curve(0x1850);
    const std::pair<const CCadObject*, int> cases[] = {{&circle, 1}, {&ellipse, 2}, {&arc, 1},
                                                       {&line, 0},   {&curve, 0},   {nullptr, 0}};
    for (const auto& [object, direction] : cases) EXPECT_EQ(GetCadOBjectDir(object), direction);
}

TEST(PointTests, RectangleLineAndArc) {
    const CCadRectangle rectangle({1, 1}, 4, 2, 0);
    const struct {
        DPOINT2 p;
        bool inside;
    } cases[] = {{{3, 2}, true},          {{1, 1}, true},         {{5, 3}, true},
                 {{3, 3}, true},          {{3, 3 + 1e-6}, false}, {{1 - 1e-6, 2}, false},
                 {{5 + 1e-6, 2}, false},  {{3, 1 - 1e-6}, false}, {{3, 3 + 5e-10}, true},
                 {math::NoPoint(), false}};
    for (const auto& c : cases)
        EXPECT_EQ(IsPointInRectangle(c.p, &rectangle), c.inside) << c.p.x << " " << c.p.y;
    const CCadLine line({0, 0}, {1, 0});
    const CCadArc arc = GetCadArcFromSeg(SEGMENT({0, 0}, {2, 0}, -1));
    EXPECT_TRUE(IsPointInLine({0.5, 0}, &line) && IsPointInArc({1, 1}, &arc) && !IsPointInArc({1, -1}, &arc));
    EXPECT_FALSE(IsPointInLine({0, 0}, nullptr) || IsPointInArc({0, 0}, nullptr)
                 || IsPointInRectangle({0, 0}, nullptr));
    EXPECT_EQ(GetCadArcFromSeg(SEGMENT({0, 0}, {2, 0})).GetRadius(), 0);
}

TEST(PointTests, SignedAngles) {
    EXPECT_DOUBLE_EQ(IntersectionAngle({1, 0}, {0, 1}), kPi / 2);
    EXPECT_DOUBLE_EQ(IntersectionAngle({1, 0}, {0, -1}), -kPi / 2);
    EXPECT_DOUBLE_EQ(IntersectionAngle({1, 0}, {-1, 0}), -kPi);
    test::Random random;
    for (int i = 0; i < 1000; ++i) {
        const double turn = random.Uniform(-3.14, 3.14);
        const DPOINT2 u = random.Point();
        EXPECT_NEAR(IntersectionAngle(u, math::Rotated(u, turn) * random.Uniform(0.1, 9)), turn, 1e-14);
    }
}

} // namespace
