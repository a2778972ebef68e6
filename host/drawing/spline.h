/// \file
/// B-splines as the segments of a contour.
#pragma once

#include <vector>

#include <qevdata/segment.h>

namespace host {

/// A B-spline as a drawing stores it.
struct Spline {
    int degree = 3;
    std::vector<double> knots;           ///< as many as control points + degree + 1, never falling
    std::vector<math::DPOINT2> controls; ///< more than the degree
    std::vector<double> weights;         ///< one above 0 for each control point, or none: not rational
};

/// How far the pieces of a spline that is no cubic itself may lie from it, as a part of its size, which is
/// the diagonal of its control points' box: a micrometre in a part of one metre.
inline constexpr double kSplineTolerance = 1e-6;

/// Why a spline cannot be used, as the end of a message ("has ..."); null when it can. Degrees up to 15 can.
const char* FaultOf(const Spline& spline);

/// The segments of a usable spline, each beginning where the one before it ends. One of degree 1 is lines. Up
/// to degree three and with equal weights each knot span is the Bezier piece that it is; otherwise as few
/// Bezier pieces as a search in steps of two finds follow the spline within kSplineTolerance of its size,
/// with its tangents where they meet.
std::vector<qev::SEGMENT> ToSegments(const Spline& spline);

/// A smooth curve through points, for splines that are stored by them alone: one Bezier piece from each point
/// to the next, and back to the first when it is closed. At least two points are needed.
std::vector<qev::SEGMENT> ThroughPoints(const std::vector<math::DPOINT2>& points, bool closed);

} // namespace host
