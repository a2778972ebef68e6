#include "host/fixture.h"

using namespace test;

namespace {

// A quarter of a square with a vertex that is repeated `extra` times, under an insert that squeezes its arc.
TEST(DxfShapes, RepeatedVerticesHideNoCorner) {
    for (const auto& [name, words, segments, dropped] : Table<const char*, const char*, int, int>{
             {"none", "70 1 10 0 20 0 10 4 20 0 10 4 20 4", 3, 0},
             {"in the middle", "70 1 10 0 20 0 10 4 20 0 10 4 20 0 10 4 20 4", 3, 1},
             {"with a bulge", "70 1 10 0 20 0 10 4 20 0 42 1 10 4 20 0 10 4 20 4", 3, 1},
             {"to rounding", "70 1 10 0 20 0 10 4 20 0 10 4.0000000001 20 0 10 4 20 4", 3, 1},
             {"at the ends", "70 1 10 0 20 0 10 0 20 0 10 4 20 0 10 4 20 4 10 0 20 0", 3, 2},
             {"of an open one", "70 0 10 0 20 0 10 4 20 0 10 4 20 4 10 4 20 4", 2, 1},
             {"all", "70 0 10 3 20 3 10 3 20 3", 0, 1},
         }) {
        SCOPED_TRACE(name);
        const DrawingOf read(DxfFile(std::string("0 LWPOLYLINE ") + words));
        EXPECT_EQ(read.drawing.counts.zeroLength, dropped);
        ASSERT_EQ(read.objects.size(), segments > 0 ? 1u : 0u);
        if (segments == 0) continue;
        EXPECT_EQ(read.objects[0]->GetSegmentCount(), segments);
        EXPECT_EQ(read.objects[0]->IsClose(), segments == 3);
        EXPECT_POINT_NEAR(read.objects[0]->GetSegment(0).ptEnd, (math::DPOINT2{4, 0}), 1e-9);
    }
}

TEST(DxfShapes, EntitiesWithoutLengthAreDropped) {
    const DrawingOf read(DxfFile("0 LINE 10 1 20 2 11 1 21 2 0 CIRCLE 10 0 20 0 40 0 0 POINT 10 3 20 3 "
                                 "0 ELLIPSE 10 0 20 0 11 0 21 0 40 0.5 0 ARC 10 0 20 0 40 0 50 0 51 90"));
    EXPECT_EQ(read.drawing.counts.zeroLength, 4);
    EXPECT_EQ(read.objects.size(), 1u) << "a point is meant to have none";
}

// How many entities are counted as sloped, elevated and wide.
TEST(DxfShapes, WhatThePlaneLosesIsCounted) {
    for (const auto& [name, words, sloped, elevated, wide] : Table<const char*, const char*, int, int, int>{
             {"flat", "LINE 10 0 20 0 30 0 11 1 21 0 31 0", 0, 0, 0},
             {"sloped", "LINE 10 0 20 0 30 0 11 3 21 0 31 4", 1, 0, 0},
             {"elevated", "LINE 10 0 20 0 30 2 11 3 21 0 31 2", 0, 1, 0},
             {"thick", "CIRCLE 39 2 10 0 20 0 30 0 40 1", 0, 1, 0},
             {"elevated polyline", "LWPOLYLINE 38 -1 10 0 20 0 10 1 20 0", 0, 1, 0},
             {"wide polyline", "LWPOLYLINE 43 0.5 10 0 20 0 10 1 20 0", 0, 0, 1},
             {"wide at a vertex", "POLYLINE 0 VERTEX 10 0 20 0 41 2 0 VERTEX 10 1 20 0", 0, 0, 1},
             {"in space", "POLYLINE 70 8 30 0 0 VERTEX 10 0 20 0 30 1 0 VERTEX 10 1 20 0 30 2", 1, 0, 0},
             {"in the plane", "POLYLINE 70 0 30 0 0 VERTEX 10 0 20 0 30 1 0 VERTEX 10 1 20 0 30 2", 0, 0, 0},
             {"sloped axis", "ELLIPSE 10 0 20 0 30 0 11 1 21 0 31 1 40 0.5", 1, 0, 0},
             {"tilted", "ELLIPSE 10 0 20 0 11 2 21 0 40 1 210 0 220 0.8 230 0.6", 1, 0, 0},
         }) {
        SCOPED_TRACE(name);
        const DrawingOf read(DxfFile(std::string("0 ") + words));
        EXPECT_EQ(read.objects.size(), 1u);
        EXPECT_EQ(read.drawing.counts.sloped, sloped);
        EXPECT_EQ(read.drawing.counts.elevated, elevated);
        EXPECT_EQ(read.drawing.counts.wide, wide);
    }
}

// A circle of radius 2 whose plane is tilted about the x axis is seen as an ellipse with the axes 2 and 1.2.
TEST(DxfShapes, ATiltedEllipseIsSeenFromAbove) {
    const DrawingOf read(DxfFile("0 ELLIPSE 10 0 20 0 11 2 21 0 40 1 210 0 220 0.8 230 0.6"));
    const qev::CadRect box = read.objects[0]->GetBoundRect();
    EXPECT_NEAR(box.width, 4, 1e-12);
    EXPECT_NEAR(box.height, 2.4, 1e-12);
}

} // namespace
