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

/// Whether a point lies within 1e-6 mm of an arc, its ends included. False for null.
QEVCOMMON_API bool IsPointInArc(const math::DPOINT2& p, const CCadArc* arc);
/// Whether a point lies within 1e-6 mm of a line, its ends included. False for null.
QEVCOMMON_API bool IsPointInLine(const math::DPOINT2& p, const CCadLine* line);
/// Whether a point lies inside a rectangle or on its boundary (within 1e-9 mm). False for null.
QEVCOMMON_API bool IsPointInRectangle(const math::DPOINT2& p, const CCadRectangle* rectangle);

/// A new arc object with the shape of an arc segment and a fresh id. A segment that is no arc, by its bulge
/// or its chord, gives an arc whose measures are all 0.
QEVCOMMON_API CCadArc GetCadArcFromSeg(const SEGMENT& segment);

/// The angle from u to v in radians, in [-pi, pi], positive when v lies to the left of u; exactly opposite
/// vectors give -pi. Right to about 1e-15. Not a number for a zero vector.
QEVCOMMON_API double IntersectionAngle(const math::DPOINT2& u, const math::DPOINT2& v);

} // namespace qev
