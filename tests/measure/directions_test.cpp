#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

DPOINT2 Unit(const DPOINT2& v) {
    return v / math::Norm(v);
}

// Differences of nearby points are the oracle for every direction.
TEST(Directions, OfSegmentsAgainstDifferences) {
    for (Random random; random.Rounds(500);) {
        const SEGMENT a(random.Point(), random.Point(), random.Uniform(-2, 2));
        const SEGMENT b(a.ptEnd, random.Point(), random.Coin() ? random.Uniform(-2, 2) : 0);
        DPOINT2 back, forth, tangent;
        GetVector(a, b, back, forth);
        EXPECT_POINT_NEAR(Unit(back), Unit(a.GetPoint(1 - 1e-7) - a.ptEnd), 1e-6);
        EXPECT_POINT_NEAR(Unit(forth), Unit(b.GetPoint(1e-7) - b.ptStart), 1e-6);
        SEGMENT first = a, second = b;
        GetVector(first, second, second.ptStart, first.ptStart);
        EXPECT_POINT_NEAR(second.ptStart, back, 0);
        EXPECT_POINT_NEAR(first.ptStart, forth, 0);
        EXPECT_NEAR(GetTangent(b, 0, &tangent), b.GetArc().GetCurvature(), 1e-9);
        EXPECT_POINT_NEAR(Unit(tangent), Unit(forth), 1e-9);
        GetTangent(a, 0.5, &tangent); // any value but 0 asks for the end
        EXPECT_POINT_NEAR(Unit(tangent), -Unit(back), 1e-9);
        CCadPolyline contour;
        contour.SetStartPoint(a.ptStart);
        for (const SEGMENT& segment : {a, b}) contour.AddArc(segment.ptEnd, segment.dBulge);
        EXPECT_NEAR(GetCornerAngle(&contour, 1), GetAngleDir(-back, forth), 1e-7);
    }
}

TEST(Directions, CornersInQuarterTurns) {
    const char* const open = "0 0 L 0 1 L 1 1";
    for (const auto& [name, contour, joint, quarters] : Table<const char*, const char*, int, double>{
             {"to the left", kSquare, 1, 1},
             {"at the start of an open contour, as if it were closed", open, 0, 1},
             {"lines reverse to the left", "0 0 L 1 0 L 0 0", 1, 2},
             {"back along an arc to the right", "0 0 A 1 0 1 A 0 0 -1", 1, -2},
             {"without segments", "1 0", 0, 0},
             {"into a left arc, which reverses to the right", "0 0 L 1 0 A 1 -2 1", 1, -2}})
        EXPECT_NEAR(GetCornerAngle(Polyline(contour).get(), joint), quarters * kPi / 2, 1e-7) << name;
    for (const int i : {INT_MIN, INT_MAX})
        EXPECT_TRUE(std::isfinite(GetCornerAngle(Polyline(open).get(), i)));
    EXPECT_EQ(GetTangent(SEGMENT({0, 0}, {1, 0}, {1, 1}, {2, 1}), 0, nullptr), -kInf) << "a Bezier piece";
}

// The lengths of ellipses are not quite those of their angles.
TEST(Directions, OfObjectsAgainstDifferences) {
    for (const auto& [text, tolerance] :
         Table<const char*, double>{{"line 2 1 5 5", 1e-9},
                                    {"circle 1 2 5", 1e-3},
                                    {"circle 1 2 5 cw", 1e-3},
                                    {"arc 1 2 5 1 2 cw", 1e-3},
                                    {"ellipse 0 0 50 25 0.4", 0.01},
                                    {"ellipsearc 0 0 50 25 0.4 0.3 3 cw", 0.15}})
        for (const double ratio : {0.0, 0.2, 0.7}) {
            const auto object = Object(text);
            DPOINT2 from, to;
            PosToCoor(object.get(), 0, ratio, from);
            PosToCoor(object.get(), 0, ratio + 1e-4, to);
            EXPECT_POINT_NEAR(Unit(GetVector(object.get(), 0, ratio)), Unit(to - from), tolerance) << text;
        }
    EXPECT_POINT_NEAR(GetVector(Object("circle 1 2 5").get(), 3, 0), (DPOINT2{0, 5}), 1e-9);
    const CCadEllipse ellipse({0, 0}, 50, 25, 0.4);
    EXPECT_POINT_NEAR(GetVector(&ellipse, 0, 2), GetVector(&ellipse, 0, 0), 0) << "beyond the end";
    EXPECT_POINT_NEAR(GetVector(&ellipse, 3, 1), GetVector(ellipse.GetPolyline(), 3, 1), 0) << "at the end";
    const CCadEllipseArc arc({0, 0}, 50, 25, 0.4, 0.3, 3, false); // the chord of the segment at that length
    const CCadPolyline& polyline = *arc.GetPolyline();
    double before = 0;
    SEGMENT segment;
    for (int k = 0; k < polyline.GetSegmentCount(); ++k) {
        segment = polyline.GetSegment(k);
        const double middle = (before + segment.GetLength() / 2) / polyline.GetLength();
        EXPECT_POINT_NEAR(GetVector(&arc, 0, middle), segment.ptEnd - segment.ptStart, 1e-9);
        before += segment.GetLength();
    }
    EXPECT_POINT_NEAR(GetVector(&arc, 0, 2), segment.ptEnd - segment.ptStart, 0) << "beyond the end";
}

TEST(Directions, OfWhatHasNone) {
    const DPOINT2 none{0, 0};
    for (const char* object : {"null", "dot 1 1", "text", "ellipse 0 0 nan 1 0"})
        EXPECT_POINT_NEAR(GetVector(Object(object).get(), 0, 0.5), none, 0) << object;
    EXPECT_POINT_NEAR(GetVector(PolylineEx("0 0 L 1 0").get(), 0, 0.5), none, 0);
}

} // namespace
