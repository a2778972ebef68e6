/// \file
/// Which of two positions on one contour comes first. Private to the library.
#pragma once

#include <qev/types.h>

#include "tolerance.h"

namespace qev {

/// Whether one position lies before another on the way from the contour's start to its end. Compared exactly:
/// positions that the tolerance calls the same still have an order. False when a ratio that decides is not a
/// number.
inline bool IsBefore(const math::POLYPOS& a, const math::POLYPOS& b) {
    return a.nSegIndex < b.nSegIndex || (a.nSegIndex == b.nSegIndex && a.dRatio < b.dRatio);
}

/// Whether two positions are written on the same segment with ratios less than kSameRatio apart. The end of a
/// segment and the start of the next one are two positions: NormalizePos makes them one first.
inline bool IsSamePos(const math::POLYPOS& a, const math::POLYPOS& b) {
    return a.nSegIndex == b.nSegIndex && IsSameRatio(a.dRatio, b.dRatio);
}

} // namespace qev
