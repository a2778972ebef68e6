/// \file
/// Excluded zones: stretches round a position and round the sharp corners of a contour.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// Writes the zone from dBefore mm before a position to dAfter mm after it, along the contour; the range's
/// tag stays. The position may be an end of the range. A zone that reaches round to itself becomes the whole
/// contour, (0, 0) to (count - 1, 1); on an open contour, too, it goes on over the other end. Lengths below 0
/// have no meaning and are not checked. True then, and when the zone is a valid range on the contour, which
/// it is not when both lengths are 0. False with nothing written for a position whose segment the contour
/// does not have.
QEVCOMMON_API bool GenerateInvalidRange(const CCadObject* contour, const math::POLYPOS& pos, double dBefore,
                                        double dAfter, math::PosRange& range);

/// Adds to a list of ranges the zones from dDistance mm before to dDistance mm after every joint that turns
/// by dAngleDegrees or more (CollectPos), and sorts and merges all that the list holds then (SortRange,
/// CombineRange). The list must not be null. False at the first corner that has no zone: the list then holds
/// the zones of the corners before it, neither sorted nor merged. Throws std::bad_alloc without memory, the
/// list holding some of the zones.
QEVCOMMON_API bool GenerateCornerInvalidRange(const CCadObject* contour, double dDistance,
                                              double dAngleDegrees, std::vector<math::PosRange>* ranges);

/// Whether the zone from dBefore mm before a position to dAfter mm after it (GenerateInvalidRange) shares a
/// point with a range. For a position off the contour, which has no zone, the range (0, 0) to (0, 0.5) is
/// tested in its place; callers depend on that.
QEVCOMMON_API bool IsRangeIntersected(const CCadObject* contour, const math::POLYPOS& pos, double dBefore,
                                      double dAfter, const math::PosRange& range);

} // namespace qev
