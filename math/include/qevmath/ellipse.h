/// \file
/// Ellipses and elliptic arcs.
#pragma once

#include <qevmath/angle.h>
#include <qevmath/bounds.h>
#include <qevmath/parameters.h>
#include <qevmath/point.h>

namespace math {

/// An arc of an ellipse: C(t) = centre + cos(t)*axisA + sin(t)*axisB, with t from start over sweep. axisB is
/// axisA's direction turned by a quarter counter-clockwise, so a positive sweep runs counter-clockwise.
/// t is the parameter of the ellipse in radians, not a polar angle. Axes of any ratio, 0 included.
class EllipticArc {
public:
    /// Centre and semi-axes in mm; rotation, start and sweep in radians. rotation: angle from the x axis to
    /// the axis A, counter-clockwise. Negative semi-axes count as positive, start is taken
    /// modulo 2*pi, a sweep of more than a whole turn is one turn.
    QEVMATH_API EllipticArc(const DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                            double start = 0, double sweep = kTwoPi);

    double GetSemiAxisA() const { return m_dSemiAxisA; }    ///< mm, never negative
    double GetSemiAxisB() const { return m_dSemiAxisB; }    ///< mm, never negative; may be the longer one
    const DPOINT2& GetCenter() const { return m_ptCenter; } ///< mm; of the whole ellipse
    const DPOINT2& GetAxisA() const { return m_vAxisA; }    ///< mm; from the centre to the point at t = 0
    const DPOINT2& GetAxisB() const { return m_vAxisB; }    ///< mm; from the centre to the point at t = pi/2
    /// The parameter where the arc starts, in [0, 2*pi).
    double GetStart() const { return m_dStart; }
    /// The parameter where the arc ends: start + sweep, below the start when the arc runs clockwise.
    double GetEnd() const { return m_dStart + m_dSweep; }
    /// The signed parameter travelled, in [-2*pi, 2*pi]; positive counter-clockwise.
    double GetSweep() const { return m_dSweep; }

    /// A copy of this arc, moved by a vector.
    QEVMATH_API EllipticArc Translated(const DPOINT2& shift) const;

    /// The point at a parameter, on the arc or not.
    QEVMATH_API DPOINT2 PointAt(double t) const;
    /// The derivative by t at a parameter, on the arc or not: it points along growing t, whichever way the
    /// arc runs.
    QEVMATH_API DPOINT2 DerivativeAt(double t) const;
    /// Unit vector of the derivative by t, which points along growing t; (0, 0) where the derivative
    /// vanishes, as at t = 0 of an ellipse whose axis B is 0.
    QEVMATH_API DPOINT2 TangentAt(double t) const;

    /// Length in mm to 1e-10 relative: whole quadrants by the complete elliptic integral of the second kind,
    /// what is left by adaptive quadrature.
    QEVMATH_API double GetLength() const;
    /// Length in mm between two parameters, on the arc or not, to 1e-10 relative; never negative.
    QEVMATH_API double GetLength(double from, double to) const;
    /// The parameter at a fraction of the arc's length (clamped to [0, 1]).
    QEVMATH_API double ParameterAt(double ratio) const;

    /// Whether a parameter, taken modulo 2*pi, lies on the arc.
    QEVMATH_API bool Contains(double t) const;
    /// The parameters in [0, 2*pi) at which the foot equation holds; for a circle's own centre none.
    QEVMATH_API Parameters SolveFoot(const FootEquation& equation) const;
    /// The point of the arc that is nearest to p.
    QEVMATH_API DPOINT2 GetNearest(const DPOINT2& p) const;
    /// The exact bounding box.
    QEVMATH_API Bounds GetBounds() const;
    /// Area between the arc and its chord in mm^2, signed by the direction.
    QEVMATH_API double GetChordArea() const;

private:
    double Speed(double t) const;
    double QuadrantLength() const;

    DPOINT2 m_ptCenter;
    DPOINT2 m_vAxisA;
    DPOINT2 m_vAxisB;
    double m_dSemiAxisA;
    double m_dSemiAxisB;
    double m_dStart;
    double m_dSweep;
};

} // namespace math
