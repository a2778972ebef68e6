#include <climits>
#include <cmath>

#include <qev/contour.h>
#include <qev/geometry.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;
using math::DPOINT2;
using math::kPi;

DPOINT2 Unit(const DPOINT2& v) {
    return v / math::Norm(v);
}

// Differences of nearby points are the oracle for every direction.
TEST(Directions, OfSegmentsAgainstDifferences) {
    constexpr double kStep = 1e-7;
    test::Random random;
    for (int i = 0; i < 500; ++i) {
        const SEGMENT a(random.Point(), random.Point(), random.Uniform(-2, 2));
        const SEGMENT b(a.ptEnd, random.Point(), random.Coin() ? random.Uniform(-2, 2) : 0);
        DPOINT2 va, vb, tangent;
        GetVector(a, b, va, vb);
        EXPECT_POINT_NEAR(Unit(va), Unit(a.GetPoint(1 - kStep) - a.ptEnd), 1e-6);
        EXPECT_POINT_NEAR(Unit(vb), Unit(b.GetPoint(kStep) - b.ptStart), 1e-6);
        EXPECT_NEAR(GetTangent(b, 0, &tangent), b.GetArc().GetCurvature(), 1e-9);
        EXPECT_POINT_NEAR(Unit(tangent), Unit(vb), 1e-9);
        GetTangent(a, 0.5, &tangent); // any value but 0 asks for the end
        EXPECT_POINT_NEAR(Unit(tangent), -Unit(va), 1e-9);
        // the corner is the signed angle between the two
        CCadPolyline contour;
        contour.SetStartPoint(a.ptStart);
        contour.AddArc(a.ptEnd, a.dBulge);
        contour.AddArc(b.ptEnd, b.dBulge);
        EXPECT_NEAR(GetCornerAngle(&contour, 1), GetAngleDir(-va, vb), 1e-7);
    }
}

TEST(Directions, Corners) {
    const struct {
        const char* contour;
        int i;
        double angle;
    } cases[] = {
        {"0 0 L 1 0 L 1 1 L 0 1 L 0 0", 1, kPi / 2},
        {"0 0 L 1 0 L 1 1 L 0 1 L 0 0", 0, kPi / 2},
        {"0 0 L 0 1 L 1 1", 1, -kPi / 2},
        {"0 0 L 0 1 L 1 1", 0, kPi / 2},  // cyclic, though the contour is open
        {"0 0 L 0 1 L 1 1", 3, -kPi / 2}, // index 3 is segment 1
        {"0 0 L 1 0 L 2 0", 1, 0},
        {"0 0 L 1 0 L 0 0", 1, kPi},     // reversal of lines: by the cross product
        {"0 0 L 1 0 A 1 -2 1", 1, -kPi}, // reversal into an arc: by the curvature
        {"0 0 L 1 0 A 1 2 -1", 1, kPi},
        {"0 0 L 1 0 A 1 2 1", 1, 0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(GetCornerAngle(test::Polyline(c.contour).get(), c.i), c.angle, 1e-7)
            << c.contour << " " << c.i;
    const auto contour = test::Polyline("0 0 L 1 0 L 1 1");
    for (const int i : {INT_MIN, INT_MAX}) EXPECT_TRUE(std::isfinite(GetCornerAngle(contour.get(), i)));
    const CCadPolyline empty;
    EXPECT_EQ(GetCornerAngle(nullptr, 0) + GetCornerAngle(&empty, 0), 0);
    EXPECT_EQ(GetTangent(SEGMENT({0, 0}, {1, 0}, {1, 1}, {2, 1}), 0, nullptr), -test::kInf)
        << "a Bezier piece has no bulge";
}

TEST(Directions, OfObjectsAgainstDifferences) {
    const CCadCircle circle({1, 2}, 5, false);
    const CCadArc arc({1, 2}, 5, 1, 2, false);
    const CCadArc left({1, 2}, 5, 1, 2, true);
    for (const double ratio : {0.0, 0.2, 0.7}) {
        const double angle = -ratio * math::kTwoPi;
        EXPECT_POINT_NEAR(Unit(GetVector(&circle, 0, ratio)),
                          Unit(circle.GetPoint(angle - 1e-7) - circle.GetPoint(angle)), 1e-6);
        EXPECT_NEAR(math::Norm(GetVector(&circle, 3, ratio)), 5, 1e-12);
        for (const CCadArc* a : {&arc, &left})
            EXPECT_POINT_NEAR(Unit(GetVector(a, 0, ratio)),
                              Unit(a->GetPoint(2 * ratio + 1e-7) - a->GetPoint(2 * ratio)), 1e-6);
    }
    for (const bool ccw : {true, false}) {
        const CCadEllipse ellipse({0, 0}, 50, 25, 0.4, ccw);
        const CCadEllipseArc half({0, 0}, 50, 25, 0.4, 0.3, 3, ccw);
        for (const double ratio : {0.1, 0.45, 0.9}) {
            const math::EllipticArc &e = ellipse.GetOutline(), &h = half.GetOutline();
            EXPECT_POINT_NEAR(Unit(GetVector(&ellipse, 0, ratio)),
                              e.TangentAt(e.ParameterAt(ratio)) * (ccw ? 1 : -1), 0.01);
            EXPECT_POINT_NEAR(Unit(GetVector(&half, 0, ratio)),
                              h.TangentAt(h.ParameterAt(ratio)) * (ccw ? 1 : -1), 0.15);
        }
        EXPECT_POINT_NEAR(Unit(GetVector(&ellipse, 0, 5)), ellipse.GetOutline().TangentAt(0) * (ccw ? 1 : -1),
                          1e-9);
    }
}

TEST(Directions, OfWhatHasNone) {
    const CCadDot dot({1, 1});
    const CCadText text("a");
    const CCadEllipse unusable({0, 0}, test::kNaN, 1, 0);
    const auto extended = test::PolylineEx("0 0 L 1 0");
    const auto polyline = test::Polyline("0 0 L 3 4");
    for (const CCadObject* object :
         {static_cast<const CCadObject*>(nullptr), static_cast<const CCadObject*>(&dot),
          static_cast<const CCadObject*>(&text), static_cast<const CCadObject*>(&unusable),
          static_cast<const CCadObject*>(extended.get())})
        EXPECT_POINT_NEAR(GetVector(object, 0, 0.5), (DPOINT2{0, 0}), 0);
    EXPECT_POINT_NEAR(GetVector(polyline.get(), 0, 0.5), (DPOINT2{3, 4}), 0);
    EXPECT_POINT_NEAR(GetVector(polyline.get(), INT_MAX, 0.5), (DPOINT2{0, 0}), 0);
}

} // namespace
