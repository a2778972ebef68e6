/// \file
/// Where a tool may enter the contours of a drawing: away from their sharp corners.
#pragma once

#include <iosfwd>
#include <vector>

#include "host/picture/picture.h"
#include "host/report/report.h"

namespace host {

/// Finds zones of `length` mm (above 0) round the corners that turn by `cornerDegrees` or more, on every
/// closed contour; a curve is asked by its polyline. Draws zones, free stretches and the place to start at,
/// and prints a table in the display unit of the process: how many there are of both, the longest free
/// stretch, the place.
void DrawStartZones(const std::vector<ObjectReport>& reports, double length, double cornerDegrees,
                    Picture& picture, std::ostream& out);

} // namespace host
