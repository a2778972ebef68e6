/// \file
/// Cubic Bezier pieces.
#pragma once

#include <qevmath/bounds.h>
#include <qevmath/parameters.h>
#include <qevmath/point.h>

namespace math {

/// A cubic Bezier piece with the parameter t in [0, 1].
struct CubicBezier {
    DPOINT2 start; ///< mm; the point at t = 0
    DPOINT2 ctrl1; ///< mm; the piece leaves the start towards it
    DPOINT2 ctrl2; ///< mm; the piece reaches the end from it
    DPOINT2 end;   ///< mm; the point at t = 1

    /// The point at t, exactly the ends at 0 and 1. Beyond them the polynomial goes on.
    QEVMATH_API DPOINT2 PointAt(double t) const;
    /// The derivative by t in mm, also beyond the ends. (0, 0) where a doubled control point or a cusp stops
    /// it.
    QEVMATH_API DPOINT2 DerivativeAt(double t) const;
    /// Unit vector of travel at t. Where the derivative vanishes (an end with a doubled control point, a
    /// cusp) it is the direction in which the piece leaves; (0, 0) when the piece is a single point.
    QEVMATH_API DPOINT2 TangentAt(double t) const;

    /// The stretch between two parameters of [0, 1] as a piece of its own, which runs backwards when `to` is
    /// the lesser. Its ends are those that PointAt answers; it leaves this piece by no more than the rounding
    /// of the coordinates.
    QEVMATH_API CubicBezier Between(double from, double to) const;

    /// Length in mm to 1e-10 relative, by adaptive quadrature of the speed.
    QEVMATH_API double GetLength() const;
    /// The parameter at a fraction of the length (clamped to [0, 1]).
    QEVMATH_API double ParameterAt(double ratio) const;

    /// The parameters in (from, to) at which the foot equation holds, at most five; none when it holds all
    /// along.
    QEVMATH_API Parameters SolveFoot(const FootEquation& equation, double from = 0, double to = 1) const;
    /// The point of the piece that is nearest to p, its ends included; the first of equally near ones in the
    /// order start, end, inner points.
    QEVMATH_API DPOINT2 GetNearest(const DPOINT2& p) const;
    /// The exact bounding box of the piece (not of its control points).
    QEVMATH_API Bounds GetBounds() const;
    /// Area between the piece and its chord in mm^2, positive when the piece bulges to the right of it (as an
    /// arc of positive bulge does).
    QEVMATH_API double GetChordArea() const;
};

} // namespace math
