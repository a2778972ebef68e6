/// \file
/// Walking along contours by a distance.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// Moves a position by a signed distance in mm, positive in the contour's direction. The answer is the number
/// of whole laps made. Open contours and single pieces wrap like closed ones; only a walk that ends exactly
/// at the end of an open contour stays there. -1 for an invalid position, a kind without segments, an offset
/// that is not finite or worth more laps than an int holds, a segment contour without a finite length, and
/// when the position reached is not valid (it may have been written then).
QEVCOMMON_API int GetPosByOffset(const CCadObject* object, const math::POLYPOS& pos, double dOffset,
                                 math::POLYPOS& out);

/// Appends the signed step numbers of samples on both sides of a position, 1, -1, 2, -2, ...: forward ones
/// while they lie within dForward, backward ones within dBack (mm). Nothing when a side has no finite number
/// of steps or more than a million.
QEVCOMMON_API void GetOffsetTable(double dBack, double dForward, double dStep, std::vector<int>& out);

} // namespace qev
