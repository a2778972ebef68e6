// A B-spline is a polynomial on each knot span, so that its pieces can be given as Bezier pieces without an
// error up to degree three. The tool is the blossom: the one function of as many arguments as the degree that
// does not care about their order, is affine in each, and gives the curve when all are equal. De Boor's
// scheme computes it by blending neighbouring control points, one argument a level. The Bezier points of the
// span from a to b are the blossom at (a, a, a), (a, a, b), (a, b, b) and (b, b, b). Degree two is then
// raised to three, which is exact too. (Ramshaw, "Blossoms are polar forms", 1989.)
//
// Rational splines run through the same scheme in homogeneous coordinates (w*x, w*y, w); only the point at
// the end is divided by w. Their spans are no cubics, and neither are those of higher degree: these are
// followed by cubic pieces that are fitted to points of them. A place on the spline is counted in spans, so
// that 2.5 is the middle of the third. A piece begins where the one before it ended and as long as it was,
// is halved until it fits, and doubled as long as it still fits, over the knots where the spline is smooth;
// it ends at a corner in any case. Halving and doubling keep every place exact, and a piece of n spans costs
// no more than 4n spans of points to find, so that the whole is linear. A fixed number of pieces a span was
// rejected: enough for the worst span is a hundredfold of what smooth ones need, and each piece is a joint
// and a place to begin a cut at for who works with the contour.
//
// Points alone, without control points, are joined by Catmull-Rom pieces: the tangent at a point is half the
// step from its predecessor to its successor. The program that drew the spline may have had other tangents;
// the drawing does not tell.

#include "spline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <utility>

#include "bezier_fit.h"

namespace host {
namespace {

using math::CubicBezier;
using math::DPOINT2;
using qev::SEGMENT;

constexpr int kHighestDegree = 15; // far above what is drawn; it bounds the work of a damaged file

// A piece is not halved below this part of a span: what still does not fit there is a cusp, and is given as
// its chord.
constexpr double kShortest = 1.0 / 256;

// So many pieces are searched for, fifty times as many as the longest splines of drawings have; then each
// span is a chord. It bounds the time and the memory that a damaged file can take.
constexpr std::size_t kMostPieces = 250'000;

// How far inside a span, as a part of it, its direction is taken where a doubled control point stops the
// derivative at its end.
constexpr double kInside = 1e-6;

// Radians that a spline may turn at a knot that pieces run over. What is more is a corner that was drawn;
// less is the rounding of a file, and whether it matters is seen by whether the piece fits.
constexpr double kSmoothTurn = 1e-3;

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
    Span(const Spline& spline, int span) : m_spline(&spline), m_nSpan(span) {}

    // The span as one cubic piece, of a spline of degree two or three without weights: its own Bezier points,
    // raised to degree three.
    SEGMENT Exact() const {
        std::array<DPOINT2, 4> b;
        const int degree = m_spline->degree;
        for (int k = 0; k <= degree; ++k) {
            std::array<double, 3> arguments{};
            for (int i = 0; i < degree; ++i) arguments[i] = i < degree - k ? From() : To();
            b[k] = Blossom(arguments).p;
        }
        if (degree == 2)
            return {b[0], b[0] + (b[1] - b[0]) * (2 / 3.0), b[2] + (b[1] - b[2]) * (2 / 3.0), b[2]};
        return {b[0], b[1], b[2], b[3]};
    }

    // The point at a part of the span, 0 its beginning.
    DPOINT2 PointAt(double part) const {
        const Homogeneous h = At(part, nullptr);
        return h.p / h.w;
    }

    // The unit vector in which the spline runs at a part of the span, seen from within the span; (0, 0) when
    // it stands still.
    DPOINT2 TangentAt(double part) const {
        for (const double at : {part, part < 0.5 ? part + kInside : part - kInside}) {
            Homogeneous slope{};
            const Homogeneous h = At(at, &slope);
            const DPOINT2 derivative = slope.p - h.p * (slope.w / h.w); // of p/w, up to a factor
            const double speed = math::Norm(derivative);
            if (speed > 0) return derivative / speed;
        }
        return {};
    }

private:
    double From() const { return m_spline->knots[m_nSpan]; }
    double To() const { return m_spline->knots[m_nSpan + 1]; }

    Homogeneous At(double part, Homogeneous* slope) const {
        std::array<double, kHighestDegree> arguments{};
        arguments.fill(From() + (To() - From()) * part);
        return Blossom(arguments, slope);
    }

    // De Boor's scheme for as many arguments as the degree, of those that are given. The last level blends
    // two points, whose difference is the derivative up to a factor, as long as all arguments are equal.
    Homogeneous Blossom(std::span<const double> arguments, Homogeneous* slope = nullptr) const {
        const int degree = m_spline->degree;
        std::array<Homogeneous, kHighestDegree + 1> d;
        for (int i = 0; i <= degree; ++i) {
            const int control = m_nSpan - degree + i;
            const double w = m_spline->weights.empty() ? 1 : m_spline->weights[control];
            d[i] = {m_spline->controls[control] * w, w};
        }
        for (int level = 1; level <= degree; ++level) {
            if (level == degree && slope) *slope = {d[1].p - d[0].p, d[1].w - d[0].w};
            for (int i = 0; i <= degree - level; ++i) {
                const double low = m_spline->knots[m_nSpan - degree + level + i];
                const double high = m_spline->knots[m_nSpan + 1 + i];
                d[i] = Mix(d[i], d[i + 1], (arguments[level - 1] - low) / (high - low));
            }
        }
        return d[0];
    }

    const Spline* m_spline;
    int m_nSpan;
};

// Follows a spline by fitted pieces.
class Follower {
public:
    // Takes the spans of a spline that are not empty, at least one.
    Follower(const Spline& spline, std::vector<Span> spans)
        : m_vecSpans(std::move(spans)), m_nSamples(4 * spline.degree + 4) {
        math::Bounds box;
        for (const DPOINT2& control : spline.controls) box.Add(control);
        m_dTolerance = kSplineTolerance * math::Norm(box.upper - box.lower);
    }

    std::vector<SEGMENT> Segments() {
        const auto count = static_cast<double>(m_vecSpans.size());
        std::vector<SEGMENT> segments;
        double from = 0;
        double step = 1;
        double smoothUntil = 0;
        while (from < count) {
            if (from >= smoothUntil) smoothUntil = EndOfRun(from);
            if (segments.size() > kMostPieces) step = std::min(std::floor(from) + 1, smoothUntil) - from;
            const CubicBezier piece = segments.size() > kMostPieces ? Straight(from, from + step)
                                                                    : Longest(from, smoothUntil, step);
            segments.emplace_back(piece.start, piece.ctrl1, piece.ctrl2, piece.end);
            from += step;
        }
        return segments;
    }

private:
    // The place of the first corner behind the beginning of a span, or the end of the spline.
    double EndOfRun(double from) const {
        auto span = static_cast<std::size_t>(from) + 1;
        while (span < m_vecSpans.size() && IsSmoothBefore(span)) ++span;
        return static_cast<double>(span);
    }

    bool IsSmoothBefore(std::size_t span) const {
        const DPOINT2 before = m_vecSpans[span - 1].TangentAt(1);
        const DPOINT2 behind = m_vecSpans[span].TangentAt(0);
        return math::Dot(before, behind) > 0 && std::abs(math::Cross(before, behind)) < kSmoothTurn;
    }

    // The longest piece from a place that is found, not beyond `until`; `step` is how long the one before it
    // was, and becomes how long it is.
    CubicBezier Longest(double from, double until, double& step) const {
        step = std::min(step, until - from);
        auto piece = Fit(from, from + step);
        if (!piece) {
            while (!piece && step > kShortest) piece = Fit(from, from + (step /= 2));
            return piece ? *piece : Straight(from, from + step);
        }
        while (from + 2 * step <= until) {
            const auto longer = Fit(from, from + 2 * step);
            if (!longer) break;
            piece = longer;
            step *= 2;
        }
        return *piece;
    }

    // The span that a place lies in; a place between two of them ends the first.
    static std::size_t SpanBefore(double place) { return static_cast<std::size_t>(std::ceil(place)) - 1; }

    DPOINT2 PointAt(double place) const {
        const auto span = std::min(static_cast<std::size_t>(place), m_vecSpans.size() - 1);
        return m_vecSpans[span].PointAt(place - static_cast<double>(span));
    }

    std::optional<CubicBezier> Fit(double from, double to) const {
        const auto first = static_cast<std::size_t>(from);
        const std::size_t last = SpanBefore(to);
        CurveStretch stretch{{PointAt(from)},
                             m_vecSpans[first].TangentAt(from - static_cast<double>(first)),
                             m_vecSpans[last].TangentAt(to - static_cast<double>(last))};
        for (std::size_t span = first; span <= last; ++span) {
            const auto at = static_cast<double>(span);
            const double low = std::max(from - at, 0.0);
            const double high = std::min(to - at, 1.0);
            for (int i = 1; i <= m_nSamples; ++i)
                stretch.points.push_back(m_vecSpans[span].PointAt(low + (high - low) * i / m_nSamples));
        }
        return FitBezier(stretch, m_dTolerance);
    }

    CubicBezier Straight(double from, double to) const {
        const DPOINT2 a = PointAt(from);
        const DPOINT2 b = PointAt(to);
        return {a, math::Interpolate(a, b, 1 / 3.0), math::Interpolate(a, b, 2 / 3.0), b};
    }

    std::vector<Span> m_vecSpans;
    int m_nSamples; // points of a span that a piece is fitted to: more than a curve of the degree has waves
    double m_dTolerance = 0;
};

} // namespace

const char* FaultOf(const Spline& spline) {
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

std::vector<SEGMENT> ToSegments(const Spline& spline) {
    const bool sameWeights =
        std::adjacent_find(spline.weights.begin(), spline.weights.end(), std::not_equal_to<>())
        == spline.weights.end();
    Spline plain = spline; // equal weights cancel, and the spline is none with weights
    if (sameWeights) plain.weights.clear();
    std::vector<Span> spans;
    for (int i = plain.degree; i < static_cast<int>(plain.controls.size()); ++i)
        if (plain.knots[i] < plain.knots[i + 1]) spans.emplace_back(plain, i); // else a repeated knot
    std::vector<SEGMENT> segments;
    if (plain.degree == 1) // weights move its points along the lines only
        for (const Span& span : spans) segments.emplace_back(span.PointAt(0), span.PointAt(1));
    else if (plain.degree <= 3 && plain.weights.empty())
        for (const Span& span : spans) segments.push_back(span.Exact());
    else if (!spans.empty())
        segments = Follower(plain, std::move(spans)).Segments();
    return segments;
}

std::vector<SEGMENT> ThroughPoints(const std::vector<DPOINT2>& points, bool closed) {
    const int count = static_cast<int>(points.size());
    const int spans = closed ? count : count - 1;
    // behind the ends an open curve repeats its end points, a closed one goes round
    const auto at = [&](int i) {
        return closed ? points[(i + count) % count] : points[std::clamp(i, 0, count - 1)];
    };
    std::vector<SEGMENT> segments;
    segments.reserve(static_cast<std::size_t>(spans));
    for (int i = 0; i < spans; ++i)
        segments.emplace_back(at(i), at(i) + (at(i + 1) - at(i - 1)) / 6, at(i + 1) - (at(i + 2) - at(i)) / 6,
                              at(i + 1));
    return segments;
}

} // namespace host
