/// \file
/// Lengths between two positions of a contour.
#pragma once

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// The length in mm from one position to another. On a single open piece, and within one segment, it is
/// negative backwards; a circle, an ellipse, and a closed contour whose end lies in an earlier segment wrap
/// over the start. The length stays as it was for kinds without such a length (the extended polyline among
/// them) and for an index without a segment.
QEVCOMMON_API void GetLineLength_Dot2Dot(const CCadObject* object, const math::POLYPOS& from,
                                         const math::POLYPOS& to, double& dLength);
/// The same, but equal positions are a whole closed object apart (0 on an open one), a closed contour always
/// runs forward, and on an open one the length backwards is minus the length forwards.
QEVCOMMON_API void GetLineLength_Dot2Dot2(const CCadObject* object, const math::POLYPOS& from,
                                          const math::POLYPOS& to, double& dLength);

} // namespace qev
