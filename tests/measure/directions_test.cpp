#include "support/support.h"

const auto Unit = [](const DPOINT2& v) { return v / math::Norm(v); };

// Differences of nearby points are the oracle for every direction.
TEST(Directions, OfSegmentsAgainstDifferences) {
    for (Random random; random.Rounds(500);) {
        const SEGMENT a(random.Point(), random.Point(), random.Uniform(-2, 2));
        const SEGMENT b(a.ptEnd, random.Point(), random.Coin() ? random.Uniform(-2, 2) : 0);
        DPOINT2 va, vb, tangent;
        GetVector(a, b, va, vb);
        EXPECT_POINT_NEAR(Unit(va), Unit(a.GetPoint(1 - 1e-7) - a.ptEnd), 1e-6);
        EXPECT_POINT_NEAR(Unit(vb), Unit(b.GetPoint(1e-7) - b.ptStart), 1e-6);
        EXPECT_NEAR(GetTangent(b, 0, &tangent), b.GetArc().GetCurvature(), 1e-9);
        EXPECT_POINT_NEAR(Unit(tangent), Unit(vb), 1e-9);
        GetTangent(a, 0.5, &tangent); // any value but 0 asks for the end
        EXPECT_POINT_NEAR(Unit(tangent), -Unit(va), 1e-9);
        // the corner is the signed angle between the two
        CCadPolyline contour;
        contour.SetStartPoint(a.ptStart);
        for (const SEGMENT& segment : {a, b}) contour.AddArc(segment.ptEnd, segment.dBulge);
        EXPECT_NEAR(GetCornerAngle(&contour, 1), GetAngleDir(-va, vb), 1e-7);
    }
}

// Index and angle in halves of pi: cyclic, though a contour is open; a reversal of lines turns by the cross
// product, one into an arc by the curvature.
TEST(Directions, Corners) {
    for (const auto& [row, contour, i, halves] : Rows<std::string, int, double>(
             "'0 0 L 1 0 L 1 1 L 0 1 L 0 0' 1 1; '0 0 L 1 0 L 1 1 L 0 1 L 0 0' 0 1; '0 0 L 0 1 L 1 1' 1 -1;"
             "'0 0 L 0 1 L 1 1' 0 1; '0 0 L 0 1 L 1 1' 3 -1; '0 0 L 1 0 L 2 0' 1 0; '0 0 L 1 0 L 0 0' 1 2;"
             "'0 0 L 1 0 A 1 -2 1' 1 -2; '0 0 L 1 0 A 1 2 -1' 1 2; '0 0 L 1 0 A 1 2 1' 1 0"))
        EXPECT_NEAR(GetCornerAngle(Polyline(contour).get(), i), halves * kPi / 2, 1e-7) << row;
    const auto contour = Polyline("0 0 L 1 0 L 1 1");
    for (const int i : {INT_MIN, INT_MAX}) EXPECT_TRUE(std::isfinite(GetCornerAngle(contour.get(), i)));
    const CCadPolyline empty;
    EXPECT_EQ(GetCornerAngle(nullptr, 0) + GetCornerAngle(&empty, 0), 0);
    EXPECT_EQ(GetTangent(SEGMENT({0, 0}, {1, 0}, {1, 1}, {2, 1}), 0, nullptr), -kInf); // no bulge: Bezier
}

// The ratio is a share of the angle, and on ellipses nearly one of the length.
TEST(Directions, OfObjectsAgainstDifferences) {
    for (const bool ccw : {true, false})
        for (const double ratio : {0.0, 0.2, 0.7}) {
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
    for (const auto& [row, object] : Rows<std::string>("null; 'dot 1 1'; text"))
        EXPECT_POINT_NEAR(GetVector(Object(object).get(), 0, 0.5), (DPOINT2{0, 0}), 0);
    const CCadEllipse unusable({0, 0}, kNaN, 1, 0);
    EXPECT_POINT_NEAR(GetVector(&unusable, 0, 0.5), (DPOINT2{0, 0}), 0);
    EXPECT_POINT_NEAR(GetVector(PolylineEx("0 0 L 1 0").get(), 0, 0.5), (DPOINT2{0, 0}), 0);
    const auto polyline = Polyline("0 0 L 3 4");
    EXPECT_POINT_NEAR(GetVector(polyline.get(), 0, 0.5), (DPOINT2{3, 4}), 0);
    EXPECT_POINT_NEAR(GetVector(polyline.get(), INT_MAX, 0.5), (DPOINT2{0, 0}), 0);
}
