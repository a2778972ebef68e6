/// \file
/// Walking along contours by a distance.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// Moves a position by a signed distance in mm along the contour, positive in its direction, and answers the
/// number of whole laps made. A distance below 1e-9 mm moves nothing. Open contours and single pieces wrap
/// like closed ones. But a walk that ends exactly at the end of an open one (within 1e-9) stays there and
/// counts no lap; only that of a single piece from its very start to its end counts one. -1, with nothing
/// written, for an invalid position, a kind without segments, an offset that is not finite or worth more laps
/// than an int holds, a segment contour without a finite length, and when the position reached is not valid.
/// The output may be the position itself.
QEVCOMMON_API int GetPosByOffset(const CCadObject* object, const math::POLYPOS& pos, double dOffset,
                                 math::POLYPOS& out);

/// Appends the numbers of the samples that lie on both sides of a position at steps of dStep mm, in the order
/// 1, -1, 2, -2, ...: forward ones up to dForward mm, backward ones up to dBack mm. Nothing when a side has
/// more than a million steps, or no number of them. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API void GetOffsetTable(double dBack, double dForward, double dStep, std::vector<int>& out);

} // namespace qev
