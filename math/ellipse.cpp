// The length of whole quadrants is the complete elliptic integral of the second kind, by the
// arithmetic-geometric mean; what is left over at both ends is integrated adaptively. Quadrature over all of
// a flat ellipse would have to resolve the two sharp ends, the mean converges in a few steps for any ratio of
// the axes.
//
// The feet of perpendiculars are the roots of A sin t - B cos t = D sin t cos t. Instead of turning that into
// a quartic, whose coefficients lose the digits of flat ellipses, it is solved in t: reflections make A, B
// and D not negative, and then it is known in which quadrants roots lie and how many (see FootQuartic), so
// that the guarded Newton search finds each of them to the last digits. No root is missed, and none is found
// twice but where two fall together.
#include <algorithm>
#include <cmath>

#include <qevmath/elementary.h>
#include <qevmath/ellipse.h>

#include "quadrature.h"

namespace math {
namespace {

double ClampedSweep(double sweep) {
    if (std::abs(sweep) > kTwoPi) return std::copysign(kTwoPi, sweep);
    return sweep;
}

// Length of a quadrant of the ellipse with the semi-axes 1 and b, 0 <= b <= 1, by Gauss's
// arithmetic-geometric mean: pi/2 * ((1 + b^2)/2 - sum of 2^(n-1) c_n^2) / mean, with c_n half the difference
// of the two means before. They agree to the last bit after at most sixteen steps, also for the smallest b.
// To 1e-13.
double QuadrantOfUnitEllipse(double b) {
    constexpr double kAgree = 1e-8; // the next step squares it
    if (b == 0) return 1;
    double a = 1;
    double weight = 1;
    double squares = (1 + b * b) / 2;
    for (bool agree = false; !agree; weight *= 2) {
        const double c = (a - b) / 2;
        agree = c <= kAgree * a;
        b = std::sqrt(a * b);
        a -= c;
        squares -= weight * c * c;
    }
    return kHalfPi * squares / a;
}

// The foot equation in the ellipse's own frame, A sin t - B cos t = D sin t cos t, reflected so that A, B and
// D are not negative. Then there is one root in the first quadrant and one in the third. The fourth holds
// two, on both sides of tan^3 t = -B/A, when A^(2/3) + B^(2/3) <= D^(2/3) (inside the evolute), else none.
struct FootQuartic {
    double a;
    double b;
    double d;

    std::pair<double, double> operator()(double t) const {
        const auto [s, c] = SinCos(t);
        return {a * s - b * c - d * s * c, a * c + b * s - d * (c * c - s * s)};
    }

    template <class Add>
    void ForEachRoot(const Add& add) const {
        add(FindRoot(*this, 0, kHalfPi, true));
        add(FindRoot(*this, kPi, 3 * kHalfPi, false));
        if (!(Cbrt(a * a) + Cbrt(b * b) <= Cbrt(d * d))) return;
        const double peak = kTwoPi - Atan2(Cbrt(b), Cbrt(a));
        add(FindRoot(*this, 3 * kHalfPi, peak, true));
        add(FindRoot(*this, peak, kTwoPi, false));
    }
};

} // namespace

EllipticArc::EllipticArc(const DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                         double start, double sweep)
    : m_ptCenter(centre), m_vAxisA(Rotated({std::abs(semiAxisA), 0}, rotation)),
      m_vAxisB(Rotated({0, std::abs(semiAxisB)}, rotation)), m_dSemiAxisA(std::abs(semiAxisA)),
      m_dSemiAxisB(std::abs(semiAxisB)), m_dStart(RegularizeRadian(start)), m_dSweep(ClampedSweep(sweep)) {}

EllipticArc EllipticArc::Translated(const DPOINT2& shift) const {
    EllipticArc moved = *this;
    moved.m_ptCenter = m_ptCenter + shift;
    return moved;
}

DPOINT2 EllipticArc::PointAt(double t) const {
    const auto [s, c] = SinCos(t);
    return m_ptCenter + m_vAxisA * c + m_vAxisB * s;
}

DPOINT2 EllipticArc::DerivativeAt(double t) const {
    const auto [s, c] = SinCos(t);
    return m_vAxisB * c - m_vAxisA * s;
}

DPOINT2 EllipticArc::TangentAt(double t) const {
    const DPOINT2 derivative = DerivativeAt(t);
    const double speed = Norm(derivative);
    return speed > 0 ? derivative / speed : DPOINT2{};
}

double EllipticArc::Speed(double t) const {
    const auto [s, c] = SinCos(t);
    return Norm({m_dSemiAxisA * s, m_dSemiAxisB * c});
}

double EllipticArc::QuadrantLength() const {
    const double major = std::max(m_dSemiAxisA, m_dSemiAxisB);
    const double ratio = std::min(m_dSemiAxisA, m_dSemiAxisB) / major;
    if (!std::isfinite(ratio)) return major;
    return major * QuadrantOfUnitEllipse(ratio);
}

double EllipticArc::GetLength() const {
    return GetLength(m_dStart, GetEnd());
}

double EllipticArc::GetLength(double from, double to) const {
    const auto speed = [this](double t) { return Speed(t); };
    const double low = std::min(from, to);
    const double high = std::max(from, to);
    const double first = std::ceil(low / kHalfPi);
    const double last = std::floor(high / kHalfPi);
    if (!(first <= last)) return Integrate(speed, low, high);
    return Integrate(speed, low, first * kHalfPi) + (last - first) * QuadrantLength()
           + Integrate(speed, last * kHalfPi, high);
}

double EllipticArc::ParameterAt(double ratio) const {
    if (!(ratio > 0)) return m_dStart;
    if (ratio >= 1) return GetEnd();
    const double sign = m_dSweep < 0 ? -1 : 1;
    const auto speed = [&](double travelled) { return Speed(m_dStart + sign * travelled); };
    return m_dStart + sign * FindLength(speed, 0, std::abs(m_dSweep), ratio * GetLength());
}

bool EllipticArc::Contains(double t) const {
    return RegularizeRadian(m_dSweep < 0 ? m_dStart - t : t - m_dStart) <= std::abs(m_dSweep);
}

Parameters EllipticArc::SolveFoot(const FootEquation& equation) const {
    const DPOINT2 q = equation.q - m_ptCenter * equation.curvature;
    double a = Dot(q, m_vAxisA);
    double b = Dot(q, m_vAxisB);
    double d = equation.curvature * (m_dSemiAxisA - m_dSemiAxisB) * (m_dSemiAxisA + m_dSemiAxisB);
    Parameters roots;
    if (a == 0 && b == 0 && d == 0) return roots;
    // sin and cos change sign under t -> -t, t -> pi - t and t -> t + pi: pick the one that makes all three
    // positive
    const bool turned = d < 0;
    if (turned) {
        a = -a;
        b = -b;
        d = -d;
    }
    const bool flipCosine = a < 0;
    const bool flipSine = b < 0;
    FootQuartic{std::abs(a), std::abs(b), d}.ForEachRoot([&](double t) {
        if (flipCosine) t = kPi - t;
        if (flipSine) t = -t;
        roots.Add(RegularizeRadian(t));
    });
    return roots;
}

DPOINT2 EllipticArc::GetNearest(const DPOINT2& p) const {
    DPOINT2 nearest = PointAt(m_dStart);
    const auto offer = [&](double t) {
        const DPOINT2 candidate = PointAt(t);
        if (D2GetDistance(p, candidate) < D2GetDistance(p, nearest)) nearest = candidate;
    };
    offer(GetEnd());
    for (const double t : SolveFoot({1, p}))
        if (Contains(t)) offer(t);
    return nearest;
}

Bounds EllipticArc::GetBounds() const {
    Bounds bounds;
    bounds.Add(PointAt(m_dStart));
    bounds.Add(PointAt(GetEnd()));
    const double extremes[] = {Atan2(m_vAxisB.x, m_vAxisA.x), Atan2(m_vAxisB.y, m_vAxisA.y)};
    for (const double t : extremes)
        for (const double opposite : {t, t + kPi})
            if (Contains(opposite)) bounds.Add(PointAt(opposite));
    return bounds;
}

double EllipticArc::GetChordArea() const {
    return m_dSemiAxisA * m_dSemiAxisB * (m_dSweep - Sin(m_dSweep)) / 2;
}

} // namespace math
