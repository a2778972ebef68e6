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

// De Boor's scheme on one knot span. With all arguments equal it gives the curve's point, with different ones
// the blossom, whose values at the span's ends are the Bezier points of the span.
class Span {
public:
    Span(const Spline& spline, int span) : m_spline(spline), m_span(span) {}

    double From() const { return m_spline.knots[m_span]; }
    double To() const { return m_spline.knots[m_span + 1]; }

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

    // The span as one cubic piece: its own Bezier points, raised to degree three.
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

    // The stretch between two parameters by its points and tangents.
    math::CubicBezier Hermite(double from, double to) const {
        DPOINT2 points[2];
        DPOINT2 tangents[2];
        for (int i = 0; i < 2; ++i) {
            Homogeneous slope{};
            const Homogeneous h = Blossom(std::vector<double>(m_spline.degree, i == 0 ? from : to), &slope);
            points[i] = h.p / h.w;
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
    constexpr int kHighestDegree = 15;
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
    constexpr int kPiecesOfSpan = 32; // the error of an arc of a quarter turn is then 1e-7 of its radius
    const bool sameWeights =
        std::adjacent_find(spline.weights.begin(), spline.weights.end(), std::not_equal_to<>())
        == spline.weights.end();
    Spline plain = spline;
    if (sameWeights) plain.weights.clear();
    std::vector<math::CubicBezier> pieces;
    for (int i = plain.degree; i < static_cast<int>(plain.controls.size()); ++i) {
        const Span span(plain, i);
        if (!(span.From() < span.To())) continue;
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
