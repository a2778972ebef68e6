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
             {"to the right", open, 1, -1},
             {"at the start of an open contour, as if it were closed", open, 0, 1},
             {"lines reverse to the left", "0 0 L 1 0 L 0 0", 1, 2},
             {"into a left arc, which reverses to the right", "0 0 L 1 0 A 1 -2 1", 1, -2},
             {"into an arc smoothly", "0 0 L 1 0 A 1 2 1", 1, 0}})
        EXPECT_NEAR(GetCornerAngle(Polyline(contour).get(), joint), quarters * kPi / 2, 1e-7) << name;
    const CCadPolyline empty;
    EXPECT_EQ(GetCornerAngle(&empty, 0), 0);
    for (const int i : {INT_MIN, INT_MAX})
        EXPECT_TRUE(std::isfinite(GetCornerAngle(Polyline(open).get(), i)));
    EXPECT_EQ(GetTangent(SEGMENT({0, 0}, {1, 0}, {1, 1}, {2, 1}), 0, nullptr), -kInf) << "a Bezier piece";
}

// The ratio is a share of the angle, and on ellipses nearly one of the length.
TEST(Directions, OfObjectsAgainstDifferences) {
    for (const bool ccw : {true, false})
        for (const double ratio : {0.0, 0.2, 0.7}) {
            SCOPED_TRACE(testing::Message() << (ccw ? "counter-clockwise, at " : "clockwise, at ") << ratio);
            const CCadCircle circle({1, 2}, 5, ccw);
            const CCadArc arc({1, 2}, 5, 1, 2, ccw);
            const CCadEllipse ellipse({0, 0}, 50, 25, 0.4, ccw);
            const CCadEllipseArc half({0, 0}, 50, 25, 0.4, 0.3, 3, ccw);
            const double sign = ccw ? 1 : -1, angle = sign * ratio * kTwoPi, step = sign * 1e-7;
            const DPOINT2 chord = circle.GetPoint(angle + step) - circle.GetPoint(angle),
                          part = arc.GetPoint(2 * ratio + 1e-7) - arc.GetPoint(2 * ratio);
            const math::EllipticArc &e = ellipse.GetOutline(), &h = half.GetOutline();
            EXPECT_POINT_NEAR(GetVector(&circle, 3, ratio), Unit(chord) * 5, 1e-6);
            EXPECT_POINT_NEAR(Unit(GetVector(&arc, 0, ratio)), Unit(part), 1e-6);
            const double onE = e.ParameterAt(ratio), onH = h.ParameterAt(ratio);
            EXPECT_POINT_NEAR(Unit(GetVector(&ellipse, 0, ratio)), e.TangentAt(onE) * sign, 0.01);
            EXPECT_POINT_NEAR(Unit(GetVector(&half, 0, ratio)), h.TangentAt(onH) * sign, 0.15);
            EXPECT_POINT_NEAR(Unit(GetVector(&ellipse, 0, 5)), e.TangentAt(0) * sign, 1e-9);
        }
}

TEST(Directions, OfWhatHasNone) {
    const DPOINT2 none{0, 0};
    for (const char* object : {"null", "dot 1 1", "text", "ellipse 0 0 nan 1 0"})
        EXPECT_POINT_NEAR(GetVector(Object(object).get(), 0, 0.5), none, 0) << object;
    EXPECT_POINT_NEAR(GetVector(PolylineEx("0 0 L 1 0").get(), 0, 0.5), none, 0);
    EXPECT_POINT_NEAR(GetVector(Polyline("0 0 L 3 4").get(), INT_MAX, 0.5), none, 0);
}

} // namespace
