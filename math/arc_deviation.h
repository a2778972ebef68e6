/// \file
/// How far ellipses and Bezier pieces leave the arcs that stand for them. Private to the math library.
///
/// The deviation is bounded, not sampled. With the apex of an arc, the normal n there and the curvature k,
/// F(w) = k |w|^2 - 2 w . n vanishes on the arc's circle, for w measured from the apex, and the distance from
/// the circle is |F| / (1 + sqrt(1 + k F)). The centre, which lies far away from a nearly straight arc, does
/// not occur. Along an ellipse or a cubic F has two known zeros, the ends of the stretch; divided by them it
/// is (1 - s^2) (m + k s + q s^2) and a small rest. The peak of the first two terms is the root of a
/// quadratic, and what the others add is bounded: the bound is above the deviation by some hundredths of it
/// on the steps of an ordinary error, and holds to rounding, some 1e-16 of the curve's size. The distance
/// from the circle is that from the arc only where the stretch does not leave the arc's sector, which is why
/// a stretch has to advance along its chord all the way.
///
/// Rejected: sampling at fixed parameters, which misses the peak between two samples; the roots of the foot
/// equation, which are exact and cost thirty times as much.
#pragma once

#include <algorithm>
#include <cmath>

#include <qevmath/elementary.h>
#include <qevmath/ellipse.h>

#include "cubic_stretch.h"
#include "lobes.h"

namespace math {

/// The circle or line through the ends of an arc, without its centre.
struct Circle {
    Circle(const DPOINT2& start, const DPOINT2& end, double bulge) {
        const DPOINT2 chord = end - start;
        const double length = Norm(chord);
        apex = (start + end) * 0.5 - LeftOf(chord) * (0.5 * bulge);
        normal = LeftOf(chord) / length;
        curvature = 4 * bulge / ((1 + bulge * bulge) * length);
    }

    /// How far from the circle a point may lie where |F| is at most f, in mm.
    double Distance(double f) const {
        return f / (1 + std::sqrt(std::max(0.0, 1 - std::abs(curvature) * f)));
    }

    DPOINT2 apex;     ///< the middle of the arc
    DPOINT2 normal;   ///< unit vector there, to the left side
    double curvature; ///< 1/mm, positive counter-clockwise
};

/// An upper bound of |(1 - s^2) (m + k s + q s^2)| for s in [-1, 1]: (1 - s^2) |s^2 - c| is smallest, namely
/// c, for c = 3 - sqrt(8); so q c goes to m, and q adds another |q| c.
inline double BoundLobes(double m, double k, double q) {
    constexpr double kLevel = 0.17157287525381;
    return PeakOfLobes(m + kLevel * q, k) + kLevel * std::abs(q);
}

/// A point of a curve and the derivative there, along growing u.
struct CurvePoint {
    DPOINT2 point;
    DPOINT2 derivative;
};

/// An elliptic arc in the frame of its axes; u is the parameter travelled from its start, whichever way it
/// runs.
class EllipseCurve {
public:
    explicit EllipseCurve(const EllipticArc& arc)
        : m_a(arc.GetSemiAxisA()), m_b(arc.GetSemiAxisB()), m_start(arc.GetStart()),
          m_sign(arc.GetSweep() < 0 ? -1 : 1) {}

    /// The point at a parameter.
    CurvePoint At(double u) const {
        const auto [s, c] = SinCos(m_start + m_sign * u);
        return {{m_a * c, m_b * s}, {-m_sign * m_a * s, m_sign * m_b * c}};
    }
    /// Unit vector of travel, whether leaving or arriving; (0, 0) where the derivative vanishes.
    DPOINT2 TangentAt(double u, bool) const {
        const DPOINT2 derivative = At(u).derivative;
        const double speed = Norm(derivative);
        return speed > 0 ? derivative / speed : DPOINT2{};
    }
    /// Whether the stretch advances along its chord all the way, as it does within a quadrant.
    static bool Advances(double, double) { return true; }
    /// An upper bound of the stretch's length in mm.
    double GetLengthBound(double from, double to) const { return (to - from) * std::max(m_a, m_b); }

    /// An upper bound of |F| on a stretch whose ends lie on the circle.
    // With the middle p of the parameters, v the derivative there, y = 2 sin(s/2) and eta that of an end:
    // F = (eta^2 - y^2) (g0 + g1 y sqrt(1 - y^2/4) + g2 y^2). The root, which is near 1, is taken for 1.
    double BoundF(const Circle& circle, double from, double to) const {
        const auto [p, v] = At(0.5 * (from + to));
        const double k = circle.curvature;
        const double eta = 2 * Sin(0.25 * (to - from));
        const double eta2 = eta * eta;
        const double turn = k * (Dot(p, p) - Dot(v, v));
        const double g0 = turn * (1 - eta2 / 4) - Dot(circle.apex * k + circle.normal, p);
        const double g1 = k * Dot(p, v) * eta;
        const double nearOne = eta2 / 4 / (1 + std::sqrt(1 - eta2 / 4)); // how far the root is from 1
        constexpr double kLinearPeak = 0.3850;                           // above (1 - s^2) s
        return eta2 * (BoundLobes(g0, g1, -turn / 2 * eta2) + kLinearPeak * nearOne * std::abs(g1));
    }

private:
    double m_a;
    double m_b;
    double m_start;
    double m_sign;
};

/// A Bezier piece that starts in the origin, with its own parameter.
class BezierCurve {
public:
    explicit BezierCurve(const CubicBezier& b)
        : m_bezier{{}, b.ctrl1 - b.start, b.ctrl2 - b.start, b.end - b.start}, m_powers(m_bezier) {}

    /// The point at a parameter.
    CurvePoint At(double u) const { return {m_bezier.PointAt(u), m_bezier.DerivativeAt(u)}; }

    /// Unit vector of travel just after u, or just before it for `arriving`: they differ in a cusp.
    DPOINT2 TangentAt(double u, bool arriving) const {
        if (!arriving) return m_bezier.TangentAt(u);
        return -CubicBezier{m_bezier.end, m_bezier.ctrl2, m_bezier.ctrl1, m_bezier.start}.TangentAt(1 - u);
    }

    /// Whether the stretch advances along its chord all the way, so that it has no loop or cusp.
    bool Advances(double from, double to) const { return m_powers.Between(from, to).Advances(); }
    /// An upper bound of the stretch's length in mm.
    double GetLengthBound(double from, double to) const {
        return m_powers.Between(from, to).GetLengthBound();
    }

    /// An upper bound of |F| on a stretch whose ends lie on the circle.
    // F is a polynomial of degree six in s: f2 to f6 are its coefficients, and dividing by s^2 - half^2
    // leaves g0 to g4. The third and fourth power are bounded by the peaks of (1 - s^2) s^3 and (1 - s^2)
    // s^4.
    double BoundF(const Circle& circle, double from, double to) const {
        constexpr double kCubicPeak = 0.1860;
        constexpr double kQuarticPeak = 0.1482;
        const CubicStretch b = m_powers.Between(from, to);
        const double k = circle.curvature;
        const double h = b.half;
        const DPOINT2 w = (b.middle - circle.apex) * k - circle.normal;
        const double g4 = h * h * k * Dot(b.d, b.d);
        const double g3 = h * 2 * k * Dot(b.e, b.d);
        const double g2 = k * (2 * Dot(b.v, b.d) + Dot(b.e, b.e)) + g4;
        const double g1 = 2 * (k * Dot(b.v, b.e) + Dot(w, b.d)) + g3 * h;
        const double g0 = k * Dot(b.v, b.v) + 2 * Dot(w, b.e) + g2 * h * h;
        return h * h
               * (BoundLobes(g0, g1 * h, g2 * h * h)
                  + h * h * (kCubicPeak * std::abs(g3) + kQuarticPeak * std::abs(g4)));
    }

private:
    CubicBezier m_bezier;
    CubicPowers m_powers;
};

} // namespace math
