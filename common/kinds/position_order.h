/// \file
/// Which of two positions on one contour comes first, and whether positions and ranges are well-formed.
/// Private to the library: inline, because lists of ranges are walked with it.
#pragma once

#include <qev/types.h>
#include <qevdata/cad_object.h>

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

/// Whether a position comes before another by at least kSameRatio: positions that are the same within the
/// tolerance are not clearly before each other.
inline bool IsClearlyBefore(const math::POLYPOS& a, const math::POLYPOS& b) {
    return a.nSegIndex < b.nSegIndex || (a.nSegIndex == b.nSegIndex && b.dRatio - a.dRatio >= kSameRatio);
}

/// Whether a position has an index of 0 or more and a ratio from 0 to 1, 1 within kSameRatio.
inline bool IsWellFormed(const math::POLYPOS& pos) {
    return pos.nSegIndex >= 0 && pos.dRatio >= 0 && pos.dRatio - 1 < kSameRatio;
}

/// Whether a position lies on an object with so many segments, of which a null object has -1, and is in
/// normal form: 1 is the ratio of nothing but the end of an open object.
inline bool IsPosOn(const CCadObject* object, int count, const math::POLYPOS& pos) {
    if (!IsWellFormed(pos) || pos.nSegIndex >= count) return false;
    return !IsSameRatio(pos.dRatio, 1) || (pos.nSegIndex == count - 1 && !object->IsClose());
}

/// Whether both positions of a range are well-formed and not the same within kSameRatio.
inline bool IsWellFormed(const math::PosRange& range) {
    return IsWellFormed(range.start) && IsWellFormed(range.end) && !IsSamePos(range.start, range.end);
}

/// Whether a well-formed range starts after its end by at least kSameRatio, so that it passes the start point
/// of a closed contour; false for one that is not well-formed. Asks first what is false for nearly every
/// range.
inline bool RunsOverStart(const math::PosRange& range) {
    return range.start.nSegIndex >= range.end.nSegIndex && IsClearlyBefore(range.end, range.start)
           && IsWellFormed(range);
}

} // namespace qev
