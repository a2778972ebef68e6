/// \file
/// Points against lines, arcs and rectangles.
#pragma once

#include <qev/export.h>
#include <qevdata/arc.h>
#include <qevmath/point.h>

namespace qev {

class CCadLine;
class CCadRectangle;
class SEGMENT;

/// Whether a point lies within 1e-6 mm of an arc, ends included. False for null.
QEVCOMMON_API bool IsPointInArc(const math::DPOINT2& p, const CCadArc* arc);
/// The same for a line.
QEVCOMMON_API bool IsPointInLine(const math::DPOINT2& p, const CCadLine* line);
/// Whether a point lies inside a rectangle or on its boundary (within 1e-9 mm). False for null.
QEVCOMMON_API bool IsPointInRectangle(const math::DPOINT2& p, const CCadRectangle* rectangle);

/// The arc of an arc segment, with a fresh id. A straight segment gives an arc of zeros.
QEVCOMMON_API CCadArc GetCadArcFromSeg(const SEGMENT& segment);

/// The signed angle from u to v in radians, in [-pi, pi]; exactly opposite vectors give -pi. Not a number for
/// a zero vector.
QEVCOMMON_API double IntersectionAngle(const math::DPOINT2& u, const math::DPOINT2& v);

} // namespace qev
