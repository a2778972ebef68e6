#include <qev/qev.h>

#include "host/fixture.h"

using namespace test;

namespace {

using math::DPOINT2;
using math::kPi;

// Name, entity, kind, length, start, and direction: 1 clockwise, 2 counter-clockwise.
const Table<const char*, const char*, qev::cad_t, double, double, double, int> kEntities{
    {"line", "0 LINE 10 1 20 2 11 4 21 6", qev::kCadLine, 5, 1, 2, 0},
    {"circle", "0 CIRCLE 10 1 20 2 40 3", qev::kCadCircle, 6 * kPi, 4, 2, 2},
    {"circle from below", "0 CIRCLE 10 1 20 2 40 3 230 -1", qev::kCadCircle, 6 * kPi, 2, 2, 1},
    {"arc from below", "0 ARC 10 0 20 0 40 2 50 90 51 0 230 -1", qev::kCadArc, 3 * kPi, 0, 2, 1},
    {"ellipse", "0 ELLIPSE 10 0 20 0 11 0 21 2 40 0.5", qev::kCadEllipse, kEllipseLength, 0, 2, 2},
    {"round ellipse", "0 ELLIPSE 10 0 20 0 11 2 21 0 40 1 41 0 42 1", qev::kCadArc, 2, 2, 0, 2},
    {"polyline with a frame vertex",
     "0 POLYLINE 0 VERTEX 10 0 20 0 42 -1 0 VERTEX 10 2 20 0 0 VERTEX 70 16 10 9 20 9 0 VERTEX 10 2 20 1",
     qev::kCadPolyline, kPi + 1, 0, 0, 1},
    {"spline of degree 1", "0 SPLINE 71 1 40 0 40 0 40 1 40 2 40 2 10 0 20 0 10 3 20 4 10 3 20 0",
     qev::kCadPolyline, 9, 0, 0, 1},
    {"spline of degree 3",
     "0 SPLINE 71 3 40 0 40 1 40 2 40 3 40 4 40 5 40 6 40 7 10 0 20 0 10 7 20 0 10 14 20 0 10 15 20 0",
     qev::kCadPolylineEx, 6, 7, 0, 0},
    {"spline of degree 2", "0 SPLINE 71 2 40 0 40 0 40 0 40 1 40 1 40 1 10 0 20 0 10 0.5 20 0 10 1 20 1",
     qev::kCadPolylineEx, 1.4789428575446, 0, 0, 2},
    {"spline by points", "0 SPLINE 11 0 21 0 11 1 21 0 11 5 21 0", qev::kCadPolylineEx, 5, 0, 0, 0},
};

TEST(DxfObjects, EntitiesOfBothForms) {
    for (const auto& [name, entity, kind, length, x, y, direction] : kEntities) {
        SCOPED_TRACE(name);
        const std::string file = DxfFile(entity);
        for (const std::string& bytes : {file, BinaryFile(file)}) {
            const DrawingOf read(bytes);
            ASSERT_EQ(read.objects.size(), 1u);
            EXPECT_EQ(read.objects[0]->GetType(), kind);
            EXPECT_NEAR(read.objects[0]->GetLength(), length, 1e-9);
            EXPECT_POINT_NEAR(read.objects[0]->GetStartPoint(), (DPOINT2{x, y}), 1e-12);
            EXPECT_EQ(qev::GetCadOBjectDir(read.objects[0]), direction);
        }
    }
}

// A has an arc and half a circle round (2, 0), with the base point (1, 0); B has A turned by a right angle.
const std::string kBlocks = "0 BLOCK 2 A 10 1 20 0 0 ARC 10 1 20 0 40 1 50 0 51 90 "
                            "0 LWPOLYLINE 70 0 10 1 20 0 42 1 10 3 20 0 0 ENDBLK "
                            "0 BLOCK 2 B 10 0 20 0 0 INSERT 2 A 10 5 20 0 50 90 0 ENDBLK";

TEST(DxfObjects, InsertsMultiplyTheirMaps) {
    const DrawingOf read(
        DxfFile("0 INSERT 2 B 10 100 20 0 41 -2 42 2 "                          // mirrored
                "0 INSERT 2 A 10 0 20 0 41 3 42 1 50 90 70 2 71 2 44 10 45 20", // a turned grid
                kBlocks));
    ASSERT_EQ(read.objects.size(), 10u);
    EXPECT_POINT_NEAR(read.objects[0]->GetStartPoint(), (DPOINT2{90, 2}), 1e-12);
    EXPECT_POINT_NEAR(read.objects[0]->GetEndPoint(), (DPOINT2{92, 0}), 1e-12);
    EXPECT_EQ(qev::GetCadOBjectDir(read.objects[0]), 1);
    EXPECT_NEAR(read.objects[1]->GetSegment(0).dBulge, -1, 1e-12);
    EXPECT_POINT_NEAR(read.objects[4]->GetStartPoint(), (DPOINT2{0, 13}), 1e-12);
    EXPECT_POINT_NEAR(read.objects[8]->GetStartPoint(), (DPOINT2{-20, 13}), 1e-12);
}

} // namespace
