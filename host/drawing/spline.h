/// \file
/// B-splines as cubic Bezier pieces.
#pragma once

#include <vector>

#include <qevmath/qevmath.h>

namespace host {

/// A B-spline as a drawing stores it: knots (control points + degree + 1 of them), and weights when it is
/// rational.
struct Spline {
    int degree = 3;
    std::vector<double> knots;
    std::vector<math::DPOINT2> controls;
    std::vector<double> weights;
};

/// Why a spline cannot be used, or null when it can.
const char* FaultOf(const Spline& spline);

/// The pieces of a usable spline, in order. Exact for splines up to degree three without weights; otherwise
/// each span is given as 32 pieces that share its points and tangents.
std::vector<math::CubicBezier> ToBeziers(const Spline& spline);

/// A smooth curve through points, for splines that are stored by them alone: tangents by the neighbouring
/// points.
std::vector<math::CubicBezier> ThroughPoints(const std::vector<math::DPOINT2>& points, bool closed);

} // namespace host
