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

/// Where an object starts. A circle and an ellipse start at angle 0, a container and a text where the leaf
/// does that is reached through their first members. math::NoPoint() for kinds without ends, for containers
/// that hold nothing or themselves there, and for null.
QEVCOMMON_API math::DPOINT2 GetStartPoint(const CCadObject* object);
/// Where an object ends. A circle and an ellipse end at angle 0, a container and a text where the leaf does
/// that is reached through their last members. math::NoPoint() for kinds without ends, for containers that
/// hold nothing or themselves there, and for null.
QEVCOMMON_API math::DPOINT2 GetEndPoint(const CCadObject* object);
/// Where an object starts: GetStartPoint under its other name, which callers use that go through the first
/// members of plain groups. math::NoPoint() for what has no start.
QEVCOMMON_API math::DPOINT2 GetCadStartPoint(const CCadObject* object);
/// Where an object ends: GetEndPoint under its other name, which callers use that go through the last members
/// of plain groups. math::NoPoint() for what has no end.
QEVCOMMON_API math::DPOINT2 GetCadEndPoint(const CCadObject* object);

/// Total length of an object in mm; a container and a text sum what they hold at any depth. 0 for kinds
/// without a length and for null. Throws std::bad_alloc when memory is refused in the walk into a container.
QEVCOMMON_API double GetCadLength(const CCadObject* object);

/// Length of segment i of a polyline in mm; NaN when i is out of range or the polyline is null.
QEVCOMMON_API double GetSegLength(const CCadPolyline* polyline, int i);
/// Length of segment i of any object in mm: the whole length of a line, circle, arc, ellipse or elliptic arc
/// whatever i is; 0 for kinds without segments, for an index without a segment and for null.
QEVCOMMON_API double GetSegLength(const CCadObject* object, int i);

/// Area in mm^2 that a contour of lines and arcs encloses, its closing chord included. Signed, it is negative
/// for a counter-clockwise contour and positive for a clockwise one; callers rely on that. Segments with a
/// chord below 1e-9 mm count for nothing. A Bezier piece is measured as its chord. 0 for null and without
/// segments.
QEVCOMMON_API double GetCadPolylineArea(const CCadMultiSegments* contour, bool bSigned);

/// The direction in which an object runs: by their flag for circles and ellipses, GetContourDirectionEx for
/// arcs, elliptic arcs and segment contours, NONE for everything else.
QEVCOMMON_API CContourDirection::ContourDirection_T GetCadOBjectDir(const CCadObject* object);

} // namespace qev
