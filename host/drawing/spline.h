/// \file
/// B-splines as cubic Bezier pieces.
#pragma once

#include <vector>

#include <qevmath/qevmath.h>

namespace host {

/// A B-spline as a drawing stores it.
struct Spline {
    int degree = 3;
    std::vector<double> knots;           ///< as many as control points + degree + 1, never falling
    std::vector<math::DPOINT2> controls; ///< more than the degree
    std::vector<double> weights;         ///< one above 0 for each control point, or none: not rational
};

/// Why a spline cannot be used, as the end of a message ("has ..."); null when it can. Degrees up to 15 can.
const char* FaultOf(const Spline& spline);

/// The cubic pieces of a usable spline, each beginning where the one before it ends. Up to degree three and
/// with equal weights they are the spline itself; otherwise each knot span is given as 32 pieces that share
/// its points and tangents at their ends, and lie within 1e-7 of the radius of a quarter circle.
std::vector<math::CubicBezier> ToBeziers(const Spline& spline);

/// A smooth curve through points, for splines that are stored by them alone: one cubic piece from each point
/// to the next, and back to the first when it is closed. At least two points are needed.
std::vector<math::CubicBezier> ThroughPoints(const std::vector<math::DPOINT2>& points, bool closed);

} // namespace host
