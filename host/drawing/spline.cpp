// A B-spline is a polynomial on each knot span, so that its pieces can be given as Bezier pieces without an
// error up to degree three. The tool is the blossom: the one function of as many arguments as the degree that
// does not care about their order, is affine in each, and gives the curve when all are equal. De Boor's
// scheme computes it by blending neighbouring control points, one argument a level. The Bezier points of the
// span from a to b are the blossom at (a, a, a), (a, a, b), (a, b, b) and (b, b, b). Degrees one and two are
// then raised to three, which is exact too. (Ramshaw, "Blossoms are polar forms", 1989.)
//
// Rational splines run through the same scheme in homogeneous coordinates (w*x, w*y, w); only the point at
// the end is divided by w. Their pieces are no cubics, and neither are those of higher degree: these spans
// are cut into equal parts, each the cubic with the points and derivatives of the curve at both ends
// (Hermite). The error falls with the fourth power of the parts; 32 leave 6e-8 of the radius of a quarter
// circle, which is what drawings mostly store that way. An adaptive cut was rejected: the fixed one is below
// what a machine can do for any curve of a reasonable drawing, and every span has a known number of pieces.
//
// Points alone, without control points, are joined by Catmull-Rom pieces: the tangent at a point is half the
// step from its predecessor to its successor. The program that drew the spline may have had other tangents;
// the drawing does not tell.

#include "spline.h"

#include <algorithm>

namespace host {
namespace {

using math::DPOINT2;

// A control point with its weight: (w*x, w*y, w).
struct Homogeneous {
    DPOINT2 p;
    double w;
};

Homogeneous Mix(const Homogeneous& a, const Homogeneous& b, double t) {
    return {a.p + (b.p - a.p) * t, a.w + (b.w - a.w) * t};
}

// One knot span of a usable spline; it must not be empty. The span is counted by the index of its first knot,
// and the control points that it depends on are the last ones up to that index.
class Span {
public:
    Span(const Spline& spline, int span) : m_spline(spline), m_span(span) {}

    double From() const { return m_spline.knots[m_span]; }
    double To() const { return m_spline.knots[m_span + 1]; }

    // De Boor's scheme. The last level blends two points, whose difference is the derivative up to a factor,
    // as long as all arguments are equal.
    Homogeneous Blossom(const std::vector<double>& arguments, Homogeneous* derivative = nullptr) const {
        const int degree = m_spline.degree;
        std::vector<Homogeneous> d;
        for (int i = m_span - degree; i <= m_span; ++i) {
            const double w = m_spline.weights.empty() ? 1 : m_spline.weights[i];
            d.push_back({m_spline.controls[i] * w, w});
        }
        for (int level = 1; level <= degree; ++level) {
            if (level == degree && derivative) {
                const double factor = degree / (To() - From());
                *derivative = {(d[1].p - d[0].p) * factor, (d[1].w - d[0].w) * factor};
            }
            for (int i = 0; i <= degree - level; ++i) {
                const double low = m_spline.knots[m_span - degree + level + i];
                const double high = m_spline.knots[m_span + 1 + i];
                d[i] = Mix(d[i], d[i + 1], (arguments[level - 1] - low) / (high - low));
            }
        }
        return d[0];
    }

    // The span as one cubic piece, of a spline up to degree three without weights: its own Bezier points,
    // raised to degree three.
    math::CubicBezier Exact() const {
        std::vector<DPOINT2> b;
        for (int k = 0; k <= m_spline.degree; ++k) {
            std::vector<double> arguments(m_spline.degree, From());
            std::fill(arguments.end() - k, arguments.end(), To());
            b.push_back(Blossom(arguments).p);
        }
        if (b.size() == 2) return {b[0], b[0] + (b[1] - b[0]) / 3, b[1] + (b[0] - b[1]) / 3, b[1]};
        if (b.size() == 3)
            return {b[0], b[0] + (b[1] - b[0]) * (2 / 3.0), b[2] + (b[1] - b[2]) * (2 / 3.0), b[2]};
        return {b[0], b[1], b[2], b[3]};
    }

    // The stretch between two parameters as the cubic with its points and derivatives at both ends.
    math::CubicBezier Hermite(double from, double to) const {
        DPOINT2 points[2];
        DPOINT2 tangents[2];
        for (int i = 0; i < 2; ++i) {
            Homogeneous slope{};
            const Homogeneous h = Blossom(std::vector<double>(m_spline.degree, i == 0 ? from : to), &slope);
            points[i] = h.p / h.w;
            // the derivative of p/w, for a third of the stretch
            tangents[i] = (slope.p - points[i] * slope.w) / h.w * ((to - from) / 3);
        }
        return {points[0], points[0] + tangents[0], points[1] - tangents[1], points[1]};
    }

private:
    const Spline& m_spline;
    int m_span;
};

} // namespace

const char* FaultOf(const Spline& spline) {
    constexpr int kHighestDegree = 15; // far above what is drawn; it bounds the work of a damaged file
    const auto controls = spline.controls.size();
    const auto degree = static_cast<std::size_t>(spline.degree);
    if (spline.degree < 1 || spline.degree > kHighestDegree) return "has an unusable degree";
    if (controls <= degree) return "has too few control points";
    if (spline.knots.size() != controls + degree + 1) return "has the wrong number of knots";
    if (!std::is_sorted(spline.knots.begin(), spline.knots.end())) return "has knots that fall";
    if (!spline.weights.empty() && spline.weights.size() != controls)
        return "has the wrong number of weights";
    if (std::any_of(spline.weights.begin(), spline.weights.end(), [](double w) { return !(w > 0); }))
        return "has a weight that is not positive";
    return nullptr;
}

std::vector<math::CubicBezier> ToBeziers(const Spline& spline) {
    constexpr int kPiecesOfSpan = 32; // a quarter circle then deviates by 6e-8 of its radius
    const bool sameWeights =
        std::adjacent_find(spline.weights.begin(), spline.weights.end(), std::not_equal_to<>())
        == spline.weights.end();
    Spline plain = spline; // equal weights cancel, and the spline is none with weights
    if (sameWeights) plain.weights.clear();
    std::vector<math::CubicBezier> pieces;
    for (int i = plain.degree; i < static_cast<int>(plain.controls.size()); ++i) {
        const Span span(plain, i);
        if (!(span.From() < span.To())) continue; // a repeated knot
        if (plain.degree <= 3 && plain.weights.empty()) {
            pieces.push_back(span.Exact());
            continue;
        }
        const double step = (span.To() - span.From()) / kPiecesOfSpan;
        for (int k = 0; k < kPiecesOfSpan; ++k)
            pieces.push_back(span.Hermite(span.From() + k * step, span.From() + (k + 1) * step));
    }
    return pieces;
}

std::vector<math::CubicBezier> ThroughPoints(const std::vector<DPOINT2>& points, bool closed) {
    const int count = static_cast<int>(points.size());
    const int spans = closed ? count : count - 1;
    // behind the ends an open curve repeats its end points, a closed one goes round
    const auto at = [&](int i) {
        return closed ? points[(i + count) % count] : points[std::clamp(i, 0, count - 1)];
    };
    std::vector<math::CubicBezier> pieces;
    pieces.reserve(static_cast<std::size_t>(spans));
    for (int i = 0; i < spans; ++i)
        pieces.push_back(
            {at(i), at(i) + (at(i + 1) - at(i - 1)) / 6, at(i + 1) - (at(i + 2) - at(i)) / 6, at(i + 1)});
    return pieces;
}

} // namespace host
