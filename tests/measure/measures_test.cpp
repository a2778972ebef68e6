#include <qevmath/elementary.h>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// A host's own kind with any code, whose virtual answers are known.
struct Coded : CCadMultiSegments {
    explicit Coded(int type) : code(static_cast<cad_t>(type)) {}
    cad_t GetType() const override { return code; }
    DPOINT2 GetStartPoint() const override { return {1, 2}; }
    DPOINT2 GetEndPoint() const override { return {3, 4}; }
    int GetSegmentCount() const override { return 1; }
    SEGMENT GetSegment(int) const override { return {{1, 2}, {1, 9}}; }
    double GetLength() const override { return 5; }
    cad_t code;
};

// The code alone says whether an object is asked for segments and ends, for its length only, or for nothing.
TEST(Measures, WhatACodeIsAskedFor) {
    for (const auto& [codes, segments, length, segmentLength, hasEnds] :
         Table<std::vector<int>, int, double, double, bool>{
             {{0x1810, 0x1820, 0x1830, 0x1840, 0x1860}, 1, 5, 7, true},
             {{0x1800, 0x1850}, -1, 5, 0, false},
             {{0x1300, 0x1870, 0x1811, 0x1B00, 0, INT_MIN}, -1, 0, 0, false}})
        for (const int code : codes) {
            SCOPED_TRACE(testing::Message() << "0x" << std::hex << code);
            const Coded object(code);
            EXPECT_EQ(GetCadSegments(&object), segments);
            EXPECT_EQ(GetCadLength(&object), length);
            EXPECT_EQ(GetSegLength(static_cast<const CCadObject*>(&object), 0), segmentLength);
            EXPECT_EQ(!math::IsNoPoint(GetCadEndPoint(&object)), hasEnds);
        }
    EXPECT_EQ(GetSegLength(Polyline("0 0 L 3 4").get(), 0), 5);
    for (const int i : {-1, 1, INT_MAX})
        EXPECT_TRUE(std::isnan(GetSegLength(Polyline("0 0 L 3 4").get(), i))) << i;
}

TEST(Measures, LengthsOfContainersAreSums) {
    auto* circle = new CCadCircle({0, 0}, 1);
    CCadGroup group;
    Fill(group, {circle, TextOf(new CCadLine({0, 0}, {3, 4})), RelationTo(circle), new CCadDot({9, 9})});
    EXPECT_NEAR(GetCadLength(&group), 4 * kPi + 5, 1e-12);
}

TEST(Measures, EndsAreThoseOfTheFirstAndTheLastLeaf) {
    CCadGroup root;
    AddGroup(root)->PushBack(TextOf(new CCadCircle({0, 0}, 2)));
    root.PushBack(new CCadLine({5, 5}, {6, 7}));
    for (const char* each :
         {"circle 1 2 5", "arc 1 2 5 0 1", "ellipse 1 2 5 3 0", "ellipsearc 1 2 5 3 0 0 1"})
        EXPECT_POINT_NEAR(GetCadStartPoint(Object(each).get()), (DPOINT2{6, 2}), 1e-12) << each;
    EXPECT_POINT_NEAR(GetStartPoint(&root), (DPOINT2{2, 0}), 0);
    EXPECT_POINT_NEAR(GetEndPoint(&root), (DPOINT2{6, 7}), 0);
    root.PushBack(new Coded(0x1B00));
    EXPECT_TRUE(math::IsNoPoint(GetEndPoint(&root))) << "a container by its bits, but none";
    AddGroup(root);
    EXPECT_TRUE(math::IsNoPoint(GetEndPoint(&root))) << "an empty group";
    CCadGroup loop;
    AddGroup(*AddGroup(loop))->PushBack(&loop);
    EXPECT_TRUE(math::IsNoPoint(GetStartPoint(&loop)));
    EXPECT_EQ(GetCadLength(&loop), 0);
}

// The sum in its order, to the last bit: an arc's part goes to its trapezoid before both go to the others.
double SummedArea(const CCadPolyline& contour) {
    const DPOINT2 start = contour.GetStartPoint();
    DPOINT2 previous = start;
    double sum = 0;
    for (const auto& [x, y, bulge] : contour.GetNodes()) {
        const DPOINT2 end{x, y};
        const double chord = math::D2GetDistance(previous, end), h = chord * 0.5;
        if (chord < 1e-9) continue;
        const double radius = (h / bulge + h * bulge) * 0.5,
                     trapezoid = (end.y + previous.y) * 0.5 * (end.x - previous.x);
        sum += std::abs(bulge) < 1e-9
                   ? trapezoid
                   : trapezoid - (math::Atan(bulge) * 2 * radius * radius - (radius - h * bulge) * h);
        previous = end;
    }
    return sum + (previous.y + start.y) * 0.5 * (start.x - previous.x);
}

TEST(Measures, AreaAndDirectionAgainstAFinePolygon) {
    for (Random random; random.Rounds(200);) {
        const auto contour = RandomPolyline(random, 8);
        const double fine = SampledArea(Along(*contour), 2000 * contour->GetSegmentCount());
        const double size = 1 + contour->GetLength() * contour->GetLength();
        EXPECT_NEAR(GetCadPolylineArea(contour.get(), true), -fine, 1e-6 * size);
        EXPECT_EQ(GetCadPolylineArea(contour.get(), false), std::abs(SummedArea(*contour)));
        if (std::abs(fine) > 1e-5 * size) EXPECT_EQ(GetCadOBjectDir(contour.get()), fine > 0 ? 2 : 1);
    }
    EXPECT_EQ(GetCadPolylineArea(Polyline("1e308 1e308").get(), true), 0) << "without segments";
}

TEST(Measures, DirectionOfEveryKind) {
    for (const auto& [object, direction] : {std::pair{"circle 0 0 1 cw", CContourDirection::CLOCKWISE},
                                            {"ellipse 0 0 2 1 0", CContourDirection::COUNTERCLOCKWISE},
                                            {"arc 0 0 1 0 1 cw", CContourDirection::CLOCKWISE},
                                            {"ellipsearc 0 0 2 1 0 0 1 cw", CContourDirection::CLOCKWISE},
                                            {"null", CContourDirection::NONE}})
        EXPECT_EQ(GetCadOBjectDir(Object(object).get()), direction) << object;
}

} // namespace
