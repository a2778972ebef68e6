#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// A host's own kind with any code, whose virtual answers are known.
struct Coded : CCadMultiSegments {
    explicit Coded(cad_t type) : code(type) {}
    cad_t GetType() const override { return code; }
    DPOINT2 GetStartPoint() const override { return {1, 2}; }
    DPOINT2 GetEndPoint() const override { return {3, 4}; }
    int GetSegmentCount() const override { return 1; }
    SEGMENT GetSegment(int) const override { return {{1, 2}, {1, 9}}; }
    double GetLength() const override { return 5; }
    cad_t code;
};

// What each contour code answers: segments, total length, segment length, whether it has ends.
TEST(Measures, KindTable) {
    for (const auto& [row, code, segments, length, segmentLength, hasEnds] :
         Rows<int, int, double, double, bool>(
             "0x1800 -1 5 0 0; 0x1810 1 5 7 1; 0x1820 1 5 7 1; 0x1830 1 5 7 1; 0x1840 1 5 7 1;"
             "0x1850 -1 5 0 0; 0x1860 1 5 7 1; 0x1300 -1 0 0 0; 0x1870 -1 0 0 0; 0x1811 -1 0 0 0;"
             "0x1B00 -1 0 0 0; 0 -1 0 0 0; -1e99 -1 0 0 0")) {
        SCOPED_TRACE(row);
        const Coded object(static_cast<cad_t>(code));
        EXPECT_TRUE(GetCadSegments(&object) == segments && GetCadLength(&object) == length);
        EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(&object), 0), segmentLength);
        EXPECT_EQ(!math::IsNoPoint(GetStartPoint(&object)), hasEnds);
        EXPECT_EQ(!math::IsNoPoint(GetCadEndPoint(&object)), hasEnds);
    }
}

TEST(Measures, LengthsOfSinglePiecesAndContainers) {
    auto* circle = new CCadCircle({0, 0}, 1);
    CCadGroup group;
    Fill(group, {circle, TextOf(new CCadLine({0, 0}, {3, 4})), RelationTo(circle), new CCadDot({9, 9})});
    EXPECT_NEAR(GetCadLength(&group), 4 * kPi + 5, 1e-12);
    EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(circle), 7), circle->GetLength());
    EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(&group), 0), 0);
    EXPECT_EQ(GetCadLength(nullptr), 0);
    const auto polyline = Polyline("0 0 L 3 4");
    EXPECT_EQ(GetSegLength(polyline.get(), 0), 5);
    for (const int i : {-1, 1, INT_MAX}) EXPECT_TRUE(std::isnan(GetSegLength(polyline.get(), i)));
}

TEST(Measures, EndsDescendThroughContainers) {
    CCadGroup root;
    AddGroup(root)->PushBack(TextOf(new CCadCircle({0, 0}, 2)));
    EXPECT_POINT_NEAR(GetStartPoint(&root), (DPOINT2{2, 0}), 0);
    root.PushBack(new CCadLine({5, 5}, {6, 7}));
    EXPECT_POINT_NEAR(GetEndPoint(&root) - GetCadStartPoint(&root), (DPOINT2{4, 7}), 0);
    root.PushBack(new Coded(0x1B00)); // looks like a container by its bits
    EXPECT_TRUE(math::IsNoPoint(GetEndPoint(&root)));
    AddGroup(root);
    EXPECT_TRUE(math::IsNoPoint(GetEndPoint(&root)) && math::IsNoPoint(GetStartPoint(nullptr)));
    CCadGroup loop;
    AddGroup(*AddGroup(loop))->PushBack(&loop);
    EXPECT_TRUE(math::IsNoPoint(GetStartPoint(&loop)) && math::IsNoPoint(GetCadEndPoint(&loop)));
    EXPECT_EQ(GetCadLength(&loop), 0);
}

TEST(Measures, AreaAgainstAFinePolygonAndDirection) {
    for (Random random; random.Rounds(200);) {
        const auto contour = RandomPolyline(random, 8);
        const double fine = SampledArea(Along(*contour), 2000 * contour->GetSegmentCount());
        const double size = 1 + contour->GetLength() * contour->GetLength();
        EXPECT_NEAR(GetCadPolylineArea(contour.get(), true), -fine, 1e-6 * size);
        EXPECT_NEAR(GetCadPolylineArea(contour.get(), false), std::abs(fine), 1e-6 * size);
        if (std::abs(fine) > 1e-5 * size) EXPECT_EQ(GetCadOBjectDir(contour.get()), fine > 0 ? 2 : 1);
    }
    EXPECT_EQ(GetCadPolylineArea(nullptr, true), 0);
    for (const auto& [row, object, direction] : Rows<std::string, int>(
             "'circle 0 0 1 cw' 1; 'ellipse 0 0 2 1 0' 2; 'arc 0 0 1 0 1 cw' 1; 'line 0 0 1 0' 0; null 0"))
        EXPECT_EQ(GetCadOBjectDir(Object(object).get()), direction) << row;
    EXPECT_EQ(GetCadOBjectDir(std::make_unique<Coded>(0x1850).get()), 0);
}

TEST(PointTests, RectangleLineAndArc) {
    const CCadRectangle rectangle({1, 1}, 4, 2, 0);
    for (const auto& [row, p, inside] : Rows<DPOINT2, bool>(
             "3,2 1; 1,1 1; 5,3 1; 3,3 1; 3,3.000001 0; 0.999999,2 0; 5.000001,2 0; 3,0.999999 0;"
             "3,3.0000000005 1; none 0"))
        EXPECT_EQ(IsPointInRectangle(p, &rectangle), inside) << row;
    const CCadLine line({0, 0}, {1, 0});
    const CCadArc arc = GetCadArcFromSeg(SEGMENT({0, 0}, {2, 0}, -1));
    EXPECT_TRUE(IsPointInLine({0.5, 0}, &line) && IsPointInArc({1, 1}, &arc) && !IsPointInArc({1, -1}, &arc));
    EXPECT_FALSE(IsPointInLine({0, 0}, nullptr) || IsPointInArc({0, 0}, nullptr)
                 || IsPointInRectangle({0, 0}, nullptr));
    EXPECT_EQ(GetCadArcFromSeg(SEGMENT({0, 0}, {2, 0})).GetRadius(), 0);
}

} // namespace
