/// \file
/// Approximation of smooth curves by chords or by arcs that join tangentially, under a guaranteed deviation.
#pragma once

#include <cstddef>
#include <vector>

#include <qevmath/bezier.h>
#include <qevmath/ellipse.h>

namespace math {

/// One line or arc of an approximation. It begins where the one before it ends, the first at the start of
/// the stretch that was fitted.
struct FitNode {
    double u;     ///< the curve's parameter at which the line or arc ends; its end lies on the curve
    double bulge; ///< tangent of a quarter of the included angle, positive counter-clockwise; 0 for a line
};

/// How a curve is to be approximated.
struct FitSettings {
    double error = 0;    ///< mm, above 0: how far the approximation may leave the curve
    bool chords = false; ///< straight chords; otherwise arcs, in pairs that share a tangent
    /// More nodes than this, those already in the list included, are refused. So may be arcs that come within
    /// a pair of it: there the first way of joining them has ended, and the second one is not tried.
    std::size_t maxNodes = 0;
};

/// Appends the nodes that approximate a stretch of an elliptic arc. `from` and `to` are radians of the
/// ellipse's parameter, travelled from the arc's start whichever way it runs, with from < to. The stretch has
/// to lie within one quadrant, between neighbouring ends of the axes: there the arc turns by a right angle at
/// most. False when the error takes more than maxNodes nodes, or when the rounding of the arc's size
/// exceeds it; what was appended before is then left in the list. The arc has to be finite, which is not
/// checked. Throws std::bad_alloc when memory is refused.
QEVMATH_API bool FitStretch(const EllipticArc& arc, double from, double to, const FitSettings& settings,
                            std::vector<FitNode>& nodes);

/// Appends the nodes that approximate a Bezier piece between two of its parameters, 0 <= from < to <= 1.
/// Loops, cusps and doubled control points are fine; arcs join tangentially but in a cusp. False when the
/// error takes more than maxNodes nodes, or when the rounding of the piece's size exceeds it; what was
/// appended before is then left in the list. The piece has to be finite, which is not checked, and its
/// coordinates below 1e70 mm, beyond which products overflow. Throws std::bad_alloc when memory is refused.
QEVMATH_API bool FitStretch(const CubicBezier& bezier, double from, double to, const FitSettings& settings,
                            std::vector<FitNode>& nodes);

} // namespace math
