/// \file
/// Where a tool may enter a contour: away from its sharp corners.
#pragma once

#include <iosfwd>
#include <vector>

#include "host/picture/svg.h"
#include "host/report/report.h"

namespace host {

/// A table of all closed contours (curves by their polylines), and the picture of their zones.
void DrawStartZones(const std::vector<ObjectReport>& reports, double length, double cornerDegrees,
                    SvgPicture& picture, std::ostream& out);

} // namespace host
