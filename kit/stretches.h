/// \file
/// Stretches of contours away from their sharp corners: where a tool may enter, and where bridges may stay.
#pragma once

#include <memory>
#include <vector>

#include <qev/qev.h>

namespace contours {

/// The contour that positions of an object refer to: a copy of a contour of lines and arcs, or the polyline
/// that another object converts to. Null when it converts to none.
std::unique_ptr<qev::CCadMultiSegments> ContourOf(const qev::CCadObject& object);

struct Stretch {
    math::PosRange range;
    double length = 0; ///< mm
};

/// What lies between sorted, disjoint ranges of a contour: going round a closed one, from the start to the
/// end of an open one; the whole contour when there are none.
std::vector<Stretch> StretchesBetween(const qev::CCadMultiSegments& contour,
                                      const std::vector<math::PosRange>& ranges);

/// The zones round the sharp corners of a contour and the stretches left between them.
struct StartZones {
    std::vector<math::PosRange> zones;
    std::vector<Stretch> freeStretches;
    double longest = 0;   ///< mm, of the free stretches
    math::POLYPOS chosen; ///< the middle of the longest, the first of equal ones
};

/// Zones of `length` mm (above 0) before and after each joint of a contour that turns by `cornerDegrees` or
/// more.
StartZones FindStartZones(const qev::CCadMultiSegments& contour, double length, double cornerDegrees);

} // namespace contours
