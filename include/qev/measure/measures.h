/// \file
/// Ends, lengths, area and direction of objects.
#pragma once

#include <qev/export.h>
#include <qevdata/direction.h>
#include <qevmath/point.h>

namespace qev {

class CCadMultiSegments;
class CCadObject;
class CCadPolyline;

/// Where an object starts. Circles and ellipses start and end at angle 0, a container and a text where their
/// first (last) leaf does. math::NoPoint() for kinds without ends, empty containers and null.
QEVCOMMON_API math::DPOINT2 GetStartPoint(const CCadObject* object);
/// Where an object ends, by the same rules.
QEVCOMMON_API math::DPOINT2 GetEndPoint(const CCadObject* object);
/// The same as GetStartPoint; kept for the callers that ask through the front members of plain groups.
QEVCOMMON_API math::DPOINT2 GetCadStartPoint(const CCadObject* object);
/// The same as GetEndPoint; kept for the callers that ask through the back members of plain groups.
QEVCOMMON_API math::DPOINT2 GetCadEndPoint(const CCadObject* object);

/// Total length in mm; containers and texts sum what they hold. 0 for kinds without a length.
QEVCOMMON_API double GetCadLength(const CCadObject* object);

/// Length of segment i of a polyline in mm; NaN when i is out of range or the polyline is null.
QEVCOMMON_API double GetSegLength(const CCadPolyline* polyline, int i);
/// Length of segment i of any object in mm: the whole length of a line, circle, arc, ellipse or elliptic arc
/// whatever i is; 0 for kinds without segments and for an index without a segment.
QEVCOMMON_API double GetSegLength(const CCadObject* object, int i);

/// Area in mm^2 that a contour of lines and arcs encloses, its closing chord included. Signed, it is negative
/// for a counter-clockwise contour and positive for a clockwise one; callers rely on that. Segments with a
/// chord below 1e-9 mm count for nothing. A Bezier piece is measured as its chord.
QEVCOMMON_API double GetCadPolylineArea(const CCadMultiSegments* contour, bool bSigned);

/// The direction in which an object runs: by their flag for circles and ellipses, GetContourDirectionEx for
/// arcs, elliptic arcs and segment contours, NONE for everything else.
QEVCOMMON_API CContourDirection::ContourDirection_T GetCadOBjectDir(const CCadObject* object);

} // namespace qev
