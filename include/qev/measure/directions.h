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
/// b. A Bezier piece leaves its output as it was.
QEVCOMMON_API void GetVector(const SEGMENT& a, const SEGMENT& b, math::DPOINT2& va, math::DPOINT2& vb);

/// Direction of travel at the start (at == 0) or the end (any other value) of a segment, and the signed
/// curvature as the result: 0 for a line, 1/radius counter-clockwise, infinite for an arc that cannot be
/// solved. A Bezier piece is taken as an arc of its bulge. A null tangent is skipped.
QEVCOMMON_API double GetTangent(SEGMENT segment, double at, math::DPOINT2* tangent);

/// Signed turn in radians from segment i - 1 into segment i, positive to the left, 0 for a smooth joint. The
/// contour is taken as cyclic, closed or not. A reversal next to an arc takes its sign from the curvatures. 0
/// for null and for a contour without segments.
QEVCOMMON_API double GetCornerAngle(const CCadMultiSegments* contour, int i);

/// Direction of travel of any object at a position. An ellipse answers from its converted polyline, an
/// elliptic arc with that polyline's chord there. (0, 0) for kinds without a direction and for null.
QEVCOMMON_API math::DPOINT2 GetVector(const CCadObject* object, int nSegIndex, double dRatio);

} // namespace qev
