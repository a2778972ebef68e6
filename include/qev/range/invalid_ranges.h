/// \file
/// Excluded zones: stretches round a position and round the sharp corners of a contour.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// The zone from dBefore mm before a position to dAfter mm after it, along the contour; the range's tag
/// stays. A zone that reaches round to itself becomes the whole contour, (0, 0) to (count - 1, 1). True then,
/// and when the zone is a valid range on the contour; false with nothing written for a position off the
/// contour.
QEVCOMMON_API bool GenerateInvalidRange(const CCadObject* contour, const math::POLYPOS& pos, double dBefore,
                                        double dAfter, math::PosRange& range);

/// Adds the zones of dDistance mm before and after every joint that turns by dAngleDegrees or more
/// (CollectPos) to what the list holds, and sorts and merges it all; the list is never null. False at the
/// first corner without a zone: the list then holds the zones before it as they came.
QEVCOMMON_API bool GenerateCornerInvalidRange(const CCadObject* contour, double dDistance,
                                              double dAngleDegrees, std::vector<math::PosRange>* ranges);

/// Whether the zone round a position shares a point with a range. Without a zone (0, 0) to (0, 0.5) is tested
/// in its place; callers depend on that.
QEVCOMMON_API bool IsRangeIntersected(const CCadObject* contour, const math::POLYPOS& pos, double dBefore,
                                      double dAfter, const math::PosRange& range);

} // namespace qev
