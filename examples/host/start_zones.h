/// \file
/// Where a tool may enter a contour: away from its sharp corners.
#pragma once

#include <iosfwd>
#include <vector>

#include <qev/qev.h>

#include "report.h"
#include "svg.h"

namespace host {

/// The zones round the sharp corners of a contour and the stretches left between them.
struct StartZones {
    std::vector<math::PosRange> zones;
    std::vector<math::PosRange> freeStretches;
    double longest = 0;   ///< mm, of the free stretches
    math::POLYPOS chosen; ///< the middle of the longest
};

/// Zones of `length` mm before and after each joint of a closed contour that turns by `cornerDegrees` or
/// more.
StartZones FindStartZones(const qev::CCadMultiSegments& contour, double length, double cornerDegrees);

/// A table of all closed contours (curves by their polylines), and the picture of their zones.
void DrawStartZones(const std::vector<ObjectReport>& reports, double length, double cornerDegrees,
                    SvgPicture& picture, std::ostream& out);

} // namespace host
