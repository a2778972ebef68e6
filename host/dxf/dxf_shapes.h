/// \file
/// The objects that single entities of a DXF file are drawn as.
#pragma once

#include <memory>

#include <qevdata/qevdata.h>

#include "dxf_fields.h"
#include "host/drawing/affine.h"
#include "host/drawing/drawing.h"

namespace host {

/// The least z of a unit normal that counts as upright: a tilt of 0.08 degrees, which changes a length by a
/// millionth.
inline constexpr double kUpright = 0.999999;

/// What an entity is drawn as.
struct Shape {
    std::unique_ptr<qev::CCadObject> object; ///< without attributes; null when there is nothing to draw
    int zeroLength = 0;           ///< segments without length that were dropped; 1 for an object without
    const char* remark = nullptr; ///< why there is nothing to draw, if that is odd ("has ...")
};

/// The dot of a POINT under an affine map. Throws a DrawingError for what it lacks or is no number.
Shape MakePoint(const Fields& fields, const Affine& map);

/// The line of a LINE under an affine map. Throws a DrawingError for what it lacks or is no number.
Shape MakeLine(const Fields& fields, const Affine& map);

/// What an affine map makes of a CIRCLE: a circle or an ellipse. Throws a DrawingError for what it lacks or
/// is no number.
Shape MakeCircle(const Fields& fields, const Affine& map);

/// What an affine map makes of an ARC: an arc of a circle or of an ellipse. Throws a DrawingError for what it
/// lacks or is no number.
Shape MakeCircularArc(const Fields& fields, const Affine& map);

/// What an affine map makes of an ELLIPSE, seen from above if it is tilted. Throws a DrawingError for what it
/// lacks or is no number.
Shape MakeEllipse(const Fields& fields, const Affine& map);

/// The contour of an LWPOLYLINE under an affine map. Throws a DrawingError for what is no number.
Shape MakeLwPolyline(const Fields& fields, const Affine& map);

/// The contour of a POLYLINE, which is no mesh, under an affine map. Throws a DrawingError for what is no
/// number.
Shape MakePolyline(const Fields& fields, const Affine& map);

/// The contour of a SPLINE under an affine map. Throws a DrawingError for a spline that cannot be drawn.
Shape MakeSpline(const Fields& fields, const Affine& map);

/// Whether a POLYLINE is a surface, of polygons or as a net.
bool IsMesh(const Fields& polyline);

/// Counts an entity of any type that is sloped, elevated, thick or wide, and loses that in the plane.
void CountFlattened(const Fields& fields, ReadCounts& counts);

} // namespace host
