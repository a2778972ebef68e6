// Nearest points, stationary deviations and feet are the roots of one polynomial: (k C(t) - q) . C'(t), a
// cubic times a quadratic, which is of degree five. In Bernstein form its coefficients bound it: it has at
// most as many roots as they have changes of sign (the variation-diminishing property). So a stretch without
// a change is discarded, one with a single change has exactly one root, which the guarded Newton search
// finds, and any other is halved. No root is missed, whatever the curve; two that fall together end as one
// after 40 halvings, 1e-12 of the parameter. Rejected: Newton's method from sampled starts, which misses
// roots near cusps, and the eigenvalues of a companion matrix, which cost ten times as much and have to be
// sorted out from complex ones.
//
// The length has no closed form; it is integrated adaptively to 1e-10 (quadrature.h). Where the piece turns
// back (a cusp) its speed has a kink, which the rules do not see beside a panel's end, where they take no
// sample. So the integral is divided at extremes of a coordinate where the piece hardly moves: at a cusp both
// coordinates have one. Extremes of a coordinate are the roots of a quadratic, and the area is a polynomial
// of the control points.
#include <array>
#include <cmath>

#include <qevmath/bezier.h>

#include "quadrature.h"

namespace math {
namespace {

// Bernstein coefficients of a polynomial of degree five on [0, 1].
using Quintic = std::array<double, 6>;

// Splits by de Casteljau's scheme: low keeps [0, t], the result is [t, 1].
Quintic Split(Quintic& low, double t) {
    Quintic high = low;
    for (int level = 1; level < 6; ++level)
        for (int i = 5; i >= level; --i) low[i] = low[i - 1] + (low[i] - low[i - 1]) * t;
    for (int level = 1; level < 6; ++level)
        for (int i = 0; i < 6 - level; ++i) high[i] = high[i] + (high[i + 1] - high[i]) * t;
    return high;
}

int CountSignChanges(const Quintic& c) {
    int changes = 0;
    double last = 0;
    for (const double value : c) {
        if (value * last < 0) ++changes;
        if (value != 0) last = std::copysign(1.0, value);
    }
    return changes;
}

// Value and slope: the last step of de Casteljau's scheme holds both.
std::pair<double, double> Evaluate(Quintic c, double t) {
    for (int level = 5; level > 1; --level)
        for (int i = 0; i < level; ++i) c[i] += (c[i + 1] - c[i]) * t;
    return {c[0] + (c[1] - c[0]) * t, 5 * (c[1] - c[0])};
}

// A number with the sign that the polynomial has at the beginning.
double FirstSign(const Quintic& c) {
    for (const double value : c)
        if (value != 0) return value;
    return 0;
}

double IsolatedRoot(const Quintic& c) {
    return FindRoot([&](double t) { return Evaluate(c, t); }, 0, 1, FirstSign(c) < 0);
}

// By the variation-diminishing property there are at most as many roots as sign changes: none is discarded,
// one is searched, more are halved until they part or are one root to the last digits.
void CollectRoots(Quintic c, double from, double to, int depth, Parameters& roots) {
    const int changes = CountSignChanges(c);
    if (changes == 0) return;
    if (changes == 1) {
        roots.Add(from + (to - from) * IsolatedRoot(c));
        return;
    }
    const double middle = 0.5 * (from + to);
    if (depth == 0) {
        roots.Add(middle);
        return;
    }
    const Quintic high = Split(c, 0.5);
    if (high[0] == 0) roots.Add(middle); // a root on the cut belongs to neither half
    CollectRoots(c, from, middle, depth - 1, roots);
    CollectRoots(high, middle, to, depth - 1, roots);
}

// The extremes of one coordinate: a t^2 + b t + c = 0 of the derivative, in the form without cancellation.
template <class Add>
void ForEachExtreme(double p0, double p1, double p2, double p3, const Add& add) {
    const double a = p3 - p0 + 3 * (p1 - p2);
    const double b = 2 * (p0 - 2 * p1 + p2);
    const double c = p1 - p0;
    const double root = std::sqrt(b * b - 4 * a * c); // not a number without extremes, which adds nothing
    const double q = -(b + std::copysign(root, b)) / 2;
    for (const double t : {q / a, c / q})
        if (t > 0 && t < 1) add(t);
}

// Length of the control polygon, which the curve does not exceed.
double ControlExtent(const CubicBezier& bezier) {
    return Norm(bezier.ctrl1 - bezier.start) + Norm(bezier.ctrl2 - bezier.ctrl1)
           + Norm(bezier.end - bezier.ctrl2);
}

// The speed of a piece, and where it may have a kink.
class Speed {
public:
    explicit Speed(const CubicBezier& bezier) : m_bezier(bezier) {
        constexpr double kSlow = 0.05; // of the control polygon: a faster turn is wide enough for the rules
        // of the control polygon: where the piece hardly moves, rounding of the control points is all there
        // is
        constexpr double kNoise = 1e-14;
        const double extent = ControlExtent(bezier), slow = kSlow * extent;
        m_dFloor = std::max(kNoise * extent, kQuadratureFloor);
        const auto add = [&](double t) {
            if (!((*this)(t) < slow)) return;
            int i = m_nKinks++;
            for (; i > 0 && m_kinks[i - 1] > t; --i) m_kinks[i] = m_kinks[i - 1];
            m_kinks[i] = t;
        };
        ForEachExtreme(bezier.start.x, bezier.ctrl1.x, bezier.ctrl2.x, bezier.end.x, add);
        ForEachExtreme(bezier.start.y, bezier.ctrl1.y, bezier.ctrl2.y, bezier.end.y, add);
    }
    double operator()(double t) const { return Norm(m_bezier.DerivativeAt(t)); }

    // Takes the place of the general one, which FindLength calls too. b may lie below a.
    friend double Integrate(const Speed& speed, double a, double b) {
        if (b < a) return -Integrate(speed, b, a);
        double length = 0;
        for (int i = 0; i < speed.m_nKinks; ++i) {
            const double kink = speed.m_kinks[i];
            if (!(a < kink && kink < b)) continue;
            length += math::Integrate(speed, a, kink, speed.m_dFloor);
            a = kink;
        }
        return length + math::Integrate(speed, a, b, speed.m_dFloor);
    }

private:
    const CubicBezier& m_bezier;
    double m_dFloor = 0;             // mm
    std::array<double, 4> m_kinks{}; // sorted
    int m_nKinks = 0;
};

} // namespace

DPOINT2 CubicBezier::PointAt(double t) const {
    const double s = 1 - t;
    return start * (s * s * s) + ctrl1 * (3 * s * s * t) + ctrl2 * (3 * s * t * t) + end * (t * t * t);
}

DPOINT2 CubicBezier::DerivativeAt(double t) const {
    const double s = 1 - t;
    return 3 * ((ctrl1 - start) * (s * s) + (ctrl2 - ctrl1) * (2 * s * t) + (end - ctrl2) * (t * t));
}

DPOINT2 CubicBezier::TangentAt(double t) const {
    constexpr double kVanished = 1e-12; // of the control polygon: the rounding of the derivative
    const double negligible = kVanished * ControlExtent(*this);
    const DPOINT2 second = (start - 2 * ctrl1 + ctrl2) * (1 - t) + (ctrl1 - 2 * ctrl2 + end) * t;
    const DPOINT2 third = end - start + 3 * (ctrl1 - ctrl2);
    // at the end the piece arrives, so there it moves against the second derivative
    for (const DPOINT2& direction : {DerivativeAt(t), t < 1 ? second : -second, third})
        if (const double norm = Norm(direction); norm > negligible) return direction / norm;
    return {};
}

// The inner control points are values of the polar form: de Casteljau's scheme with another parameter on each
// level (L. Ramshaw, "Blossoming: a connect-the-dots approach to splines", 1987).
CubicBezier CubicBezier::Between(double from, double to) const {
    const auto polar = [this](double r, double s, double t) {
        const DPOINT2 first = Interpolate(start, ctrl1, r), second = Interpolate(ctrl1, ctrl2, r),
                      third = Interpolate(ctrl2, end, r);
        return Interpolate(Interpolate(first, second, s), Interpolate(second, third, s), t);
    };
    return {PointAt(from), polar(from, from, to), polar(from, to, to), PointAt(to)};
}

double CubicBezier::GetLength() const {
    return Integrate(Speed(*this), 0, 1);
}

double CubicBezier::ParameterAt(double ratio) const {
    if (!(ratio > 0)) return 0;
    if (ratio >= 1) return 1;
    return FindLength(Speed(*this), 0, 1, ratio * GetLength());
}

// (k C - q) . C' as the product of a cubic and a quadratic in Bernstein form.
Parameters CubicBezier::SolveFoot(const FootEquation& equation, double from, double to) const {
    constexpr int kMaxHalvings = 40;
    const DPOINT2 cubic[] = {equation.At(start), equation.At(ctrl1), equation.At(ctrl2), equation.At(end)};
    const DPOINT2 quadratic[] = {ctrl1 - start, ctrl2 - ctrl1, end - ctrl2};
    const double cubicWeight[] = {1, 3, 3, 1};
    const double quadraticWeight[] = {1, 2, 1};
    const double quinticWeight[] = {1, 5, 10, 10, 5, 1};
    Quintic c{};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 3; ++j)
            c[i + j] +=
                cubicWeight[i] * quadraticWeight[j] / quinticWeight[i + j] * Dot(cubic[i], quadratic[j]);
    Parameters roots;
    c = Split(c, from);
    Split(c, (to - from) / (1 - from));
    CollectRoots(c, from, to, kMaxHalvings, roots);
    return roots;
}

DPOINT2 CubicBezier::GetNearest(const DPOINT2& p) const {
    DPOINT2 nearest = start;
    const auto offer = [&](const DPOINT2& candidate) {
        if (D2GetDistance(p, candidate) < D2GetDistance(p, nearest)) nearest = candidate;
    };
    offer(end);
    for (const double t : SolveFoot({1, p})) offer(PointAt(t));
    return nearest;
}

Bounds CubicBezier::GetBounds() const {
    Bounds bounds;
    bounds.Add(start);
    bounds.Add(end);
    const auto add = [&](double t) { bounds.Add(PointAt(t)); };
    ForEachExtreme(start.x, ctrl1.x, ctrl2.x, end.x, add);
    ForEachExtreme(start.y, ctrl1.y, ctrl2.y, end.y, add);
    return bounds;
}

// Half the integral of C x C' with the start as origin: the products of the Bernstein polynomials integrate
// to the weights 3/20, 3/20 and 6/20 of the three cross products.
double CubicBezier::GetChordArea() const {
    const DPOINT2 u = ctrl1 - start;
    const DPOINT2 v = ctrl2 - start;
    const DPOINT2 w = end - start;
    return 0.15 * (Cross(u, v) + Cross(u, w) + 2 * Cross(v, w));
}

} // namespace math
