/// \file
/// Contours from text, random contours, and oracles by dense sampling.
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <string>

#include <qevdata/qevdata.h>

#include "support/random.h"

namespace test {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using CurvePoint = std::function<math::DPOINT2(double)>; // over [0, 1]

/// "0 0 L 10 0 A 10 10 0.5 B 1 2 3 4 5 6": start point, then lines, arcs (end, bulge) and Bezier pieces.
std::unique_ptr<qev::CCadPolyline> Polyline(const std::string& text);
std::unique_ptr<qev::CCadPolylineEx> PolylineEx(const std::string& text);

/// A contour of up to `segments` random lines and arcs, zero-length ones among them, open or closed.
std::unique_ptr<qev::CCadPolyline> RandomPolyline(Random& random, int segments);
/// The same with Bezier pieces.
std::unique_ptr<qev::CCadPolylineEx> RandomPolylineEx(Random& random, int segments);

/// A new group at the end of another, which owns it.
qev::CCadGroup* AddGroup(qev::CCadGroup& parent);

/// Sum of `samples` chords.
double SampledLength(const CurvePoint& curve, int samples);
/// Smallest distance from p to `samples` points.
double SampledDistance(const CurvePoint& curve, const math::DPOINT2& p, int samples);
/// Box round `samples` points.
math::Bounds SampledBounds(const CurvePoint& curve, int samples);
/// The area of the polygon through `samples` points, counter-clockwise positive.
double SampledArea(const CurvePoint& curve, int samples);

/// Checks that a box holds all samples and is no larger than `slack` round them.
void ExpectBoxFits(const math::Bounds& box, const CurvePoint& curve, int samples, double slack);

} // namespace test

namespace math {
/// Failure messages show points.
inline void PrintTo(const DPOINT2& p, std::ostream* out) {
    *out << "(" << p.x << ", " << p.y << ")";
}
} // namespace math

/// Points that are the same within a tolerance.
#define EXPECT_POINT_NEAR(p, q, tolerance) EXPECT_LE(math::D2GetDistance((p), (q)), (tolerance))
