/// \file
/// Tangent arcs along smooth curves. Private to the math library.
#pragma once

#include <vector>

#include <qevmath/curve_fit.h>

namespace math {

/// Appends the arcs of a stretch of an elliptic arc within one quadrant, as FitStretch describes it.
bool FitArcs(const EllipticArc& arc, double from, double to, const FitSettings& settings,
             std::vector<FitNode>& nodes);

/// Appends the arcs of a stretch of a Bezier piece, as FitStretch describes it.
bool FitArcs(const CubicBezier& bezier, double from, double to, const FitSettings& settings,
             std::vector<FitNode>& nodes);

} // namespace math
