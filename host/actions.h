/// \file
/// What the host shows of the library on request: each prints a line and draws on the picture. A request that
/// does not fit the drawing throws a DrawingError.
#pragma once

#include <iosfwd>
#include <vector>

#include "host/drawing/drawing.h"
#include "host/picture/svg.h"
#include "host/report/report.h"
#include "options.h"

namespace host {

/// Every object converted to lines and arcs within an error in mm.
void DrawConverted(const std::vector<ObjectReport>& reports, double error, SvgPicture& picture,
                   std::ostream& out);

/// A stretch of an object; what is no segment contour is cut out of its polyline.
void DrawCut(const std::vector<ObjectReport>& reports, const CutOption& cut, SvgPicture& picture,
             std::ostream& out);

/// The object nearest to a point and the position on it. Answers the object's number.
int DrawPick(const Drawing& drawing, const std::vector<ObjectReport>& reports, const math::DPOINT2& point,
             SvgPicture& picture, std::ostream& out);

/// A walk along an object.
void DrawWalk(const std::vector<ObjectReport>& reports, int object, const WalkOption& walk,
              SvgPicture& picture, std::ostream& out);

} // namespace host
