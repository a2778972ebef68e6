/// \file
/// Lengths between two positions of a contour.
#pragma once

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// Writes the length in mm from one position to another, measured as they stand. On a single open piece, and
/// within one segment of a contour, it is negative backwards. A circle and an ellipse, and a closed contour
/// whose end lies in an earlier segment, are measured forward over the start point. On an open contour an end
/// in an earlier segment gives the rest of the first segment and the part of the last. The end may be written
/// as (count, 0). The length stays as it was for kinds without such a length (the extended polyline among
/// them), for any other index without a segment and for null.
QEVCOMMON_API void GetLineLength_Dot2Dot(const CCadObject* object, const math::POLYPOS& from,
                                         const math::POLYPOS& to, double& dLength);
/// Writes the length in mm of the way from one position to another. A closed object is always gone forward,
/// over the start point where need be, and equal positions (one segment, ratios less than 1e-9 apart) are the
/// whole object apart. On an open one they are 0 apart, and the length backwards is minus the length
/// forwards. The later position may be written as (count, 0). The length stays as it was for kinds without
/// such a length (the extended polyline among them, but for equal positions), for any other index without a
/// segment and for null.
QEVCOMMON_API void GetLineLength_Dot2Dot2(const CCadObject* object, const math::POLYPOS& from,
                                          const math::POLYPOS& to, double& dLength);

} // namespace qev
