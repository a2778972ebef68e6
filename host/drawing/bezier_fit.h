/// \file
/// One cubic Bezier piece for a stretch of a smooth curve.
#pragma once

#include <optional>
#include <vector>

#include <qevmath/bezier.h>

namespace host {

/// A stretch of a smooth curve: points of it in order, the first and the last among them, as dense as its
/// details are, and the directions in which it leaves and arrives.
struct CurveStretch {
    std::vector<math::DPOINT2> points; ///< at least three, of which the first and the last differ
    math::DPOINT2 startTangent;        ///< unit vector in which it runs at its start
    math::DPOINT2 endTangent;          ///< unit vector in which it runs at its end
};

/// A cubic piece from the first to the last point of a stretch with the stretch's tangents, that passes every
/// point of it within a tolerance (mm); none when the search finds none.
std::optional<math::CubicBezier> FitBezier(const CurveStretch& stretch, double tolerance);

} // namespace host
