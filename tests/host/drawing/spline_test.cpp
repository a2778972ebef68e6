#include <ctime>

#include "host/drawing/spline.h"
#include "support/shapes.h"

using namespace test;
using host::Spline, math::DPOINT2;

namespace {

// The spline's point by the sum of its control points with their base functions, of Cox and de Boor.
DPOINT2 PointOf(const Spline& s, double u) {
    std::vector<double> base(s.knots.size() - 1);
    for (std::size_t i = 0; i < base.size(); ++i) base[i] = s.knots[i] <= u && u < s.knots[i + 1] ? 1 : 0;
    for (int k = 1; k <= s.degree; ++k)
        for (std::size_t i = 0; i + k + 1 < s.knots.size(); ++i) {
            const auto ratio = [](double a, double b) { return b == 0 ? 0 : a / b; };
            base[i] = ratio(u - s.knots[i], s.knots[i + k] - s.knots[i]) * base[i]
                      + ratio(s.knots[i + k + 1] - u, s.knots[i + k + 1] - s.knots[i + 1]) * base[i + 1];
        }
    DPOINT2 sum;
    double weights = 0;
    for (std::size_t i = 0; i < s.controls.size(); ++i) {
        const double weight = base[i] * (s.weights.empty() ? 1 : s.weights[i]);
        sum = sum + s.controls[i] * weight;
        weights += weight;
    }
    return sum / weights;
}

Spline RandomSpline(Random& random, int degree, int controls, bool rational) {
    Spline spline{degree, {}, {}, {}};
    for (int i = 0; i < controls; ++i) {
        spline.controls.push_back(DPOINT2{i * 3.0, 0} + random.Point(5));
        if (rational) spline.weights.push_back(random.Uniform(0.3, 3));
    }
    for (int i = 0; i < controls + degree + 1; ++i) {
        const int knot = std::clamp(i - degree, 0, controls - degree);
        spline.knots.push_back(knot % 4 == 2 && knot < controls - degree ? knot - 1
                                                                         : knot); // some are double
    }
    return spline;
}

TEST(Spline, SegmentsFollowIt) {
    for (Random random; random.Rounds(60);) {
        const Spline spline = RandomSpline(random, random.Int(2, 6), random.Int(8, 20), random.Coin());
        const std::vector<qev::SEGMENT> segments = host::ToSegments(spline);
        qev::CCadPolylineEx contour;
        math::Bounds box;
        contour.SetStartPoint(segments.front().ptStart);
        for (const qev::SEGMENT& s : segments) {
            EXPECT_POINT_NEAR(s.ptStart, contour.GetEndPoint(), 1e-9) << "it has no gaps";
            if (s.nType == qev::SEGMENT::kBezier)
                contour.AddBezier(s.ptCtrl1, s.ptCtrl2, s.ptEnd);
            else
                contour.AddArc(s.ptEnd, 0);
        }
        for (const DPOINT2& p : spline.controls) box.Add(p);
        const double size = math::Norm(box.upper - box.lower);
        for (int i = 0; i < 100; ++i) {
            const DPOINT2 p = PointOf(spline, spline.knots.back() * (i + 0.5) / 100);
            double nearest = kInf;
            for (const qev::SEGMENT& s : segments)
                nearest = std::min(nearest, math::D2GetDistance(s.GetNearest(p), p));
            EXPECT_LE(nearest, 1.1 * host::kSplineTolerance * size);
        }
    }
}

TEST(Spline, ACircleTakesFewPieces) {
    const double w = std::sqrt(0.5), r = 32;
    const Spline circle{2,
                        {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4},
                        {{r, 0}, {r, r}, {0, r}, {-r, r}, {-r, 0}, {-r, -r}, {0, -r}, {r, -r}, {r, 0}},
                        {1, w, 1, w, 1, w, 1, w, 1}};
    const std::vector<qev::SEGMENT> pieces = host::ToSegments(circle);
    EXPECT_LE(pieces.size(), 16u);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        EXPECT_NEAR(math::Norm(pieces[i].GetBezier().PointAt(0.3)), r, 1e-4);
        const auto next = pieces[(i + 1) % pieces.size()].GetBezier();
        EXPECT_LT(math::Norm(pieces[i].GetBezier().TangentAt(1) - next.TangentAt(0)), 1e-9) << "it is smooth";
    }
}

TEST(Spline, CornersStayCorners) {
    const Spline bent{4, {0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 2}, {}, {}};
    Spline spline = bent; // two straight spans at a right angle
    for (int i = 0; i < 9; ++i) spline.controls.push_back({std::min(i, 4) * 1.0, std::max(i - 4, 0) * 1.0});
    const std::vector<qev::SEGMENT> pieces = host::ToSegments(spline);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_POINT_NEAR(pieces[0].ptEnd, (DPOINT2{4, 0}), 1e-12);
}

TEST(Spline, LongOnesCostAsMuchASpanAsShortOnes) {
    const auto timeOf = [](int controls) {
        Random random;
        const Spline spline = RandomSpline(random, 5, controls, true);
        const std::clock_t start = std::clock();
        host::ToSegments(spline);
        return static_cast<double>(std::clock() - start) / controls;
    };
    EXPECT_LT(timeOf(20'000) / timeOf(2'000), 4);
}

} // namespace
