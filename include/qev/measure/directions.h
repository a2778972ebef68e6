/// \file
/// Directions of travel. The vectors are not normalised: a line gives its own length, an arc its radius.
#pragma once

#include <qev/export.h>
#include <qevdata/segment.h>
#include <qevmath/point.h>

namespace qev {

class CCadMultiSegments;
class CCadObject;

/// The two directions that leave the common corner of consecutive segments: va back along a, vb forward along
/// b. They are not normalised: a line gives its chord, an arc a vector as long as its radius. A Bezier piece
/// leaves its output as it was.
QEVCOMMON_API void GetVector(const SEGMENT& a, const SEGMENT& b, math::DPOINT2& va, math::DPOINT2& vb);

/// Writes the direction of travel at the start (at == 0) or the end (any other value) of a segment, a line's
/// as long as its chord, an arc's as its radius, and answers the signed curvature in 1/mm: 0 for a line,
/// positive for an arc that runs counter-clockwise, infinite for an arc that cannot be solved. A Bezier piece
/// is taken as an arc of its bulge. A null tangent is skipped.
QEVCOMMON_API double GetTangent(SEGMENT segment, double at, math::DPOINT2* tangent);

/// Signed turn in radians from segment i - 1 into segment i, positive to the left, 0 for a smooth joint. The
/// contour is taken as cyclic, closed or not: i from the number of segments on begins anew, one below 0 has
/// no meaning and is not checked. A reversal next to an arc takes its sign from the curvatures. 0
/// for null and for a contour without segments.
QEVCOMMON_API double GetCornerAngle(const CCadMultiSegments* contour, int i);

/// Direction of travel of any object at a position, not normalised: a line gives its chord, an arc or circle
/// a vector as long as its radius. Of a line, circle and arc the index is not looked at. An ellipse answers
/// from its converted polyline, an elliptic arc with that polyline's chord there. (0, 0) for kinds without a
/// direction, the extended polyline among them, and for null.
QEVCOMMON_API math::DPOINT2 GetVector(const CCadObject* object, int nSegIndex, double dRatio);

} // namespace qev
