/// \file
/// How ranges of one contour lie to each other and to positions. Private to the room: inline, because lists
/// of ranges are walked with it.
///
/// Ranges that do not run over the start point are called plain. Two plain ones that are well-formed share a
/// point, within kSameRatio, unless one ends clearly before the other starts. That test has two halves, each
/// of one end and one start, and is monotone in both. So many plain ranges are asked by a search: in the
/// order of their starts, those that do not start clearly behind a range come first, and of these only the
/// farthest end matters. A position is asked as a range from itself to itself.
#pragma once

#include <algorithm>
#include <limits>
#include <vector>

#include <qev/types.h>

#include "../kinds/position_order.h"

namespace qev {

/// Whether a position lies in a plain range that is well-formed, ends included within kSameRatio, or whether
/// two such ranges share a point: the positions from `from` to `to` are asked.
inline bool Touches(const math::PosRange& plain, const math::POLYPOS& from, const math::POLYPOS& to) {
    return !IsClearlyBefore(plain.end, from) && !IsClearlyBefore(to, plain.start);
}

/// Whether a range over the start point shares a point with a plain one, compared exactly.
inline bool TouchesOverStart(const math::PosRange& over, const math::PosRange& plain) {
    return !IsBefore(plain.end, over.start) || !IsBefore(over.end, plain.start);
}

/// Whether a position lies strictly inside a plain range, compared exactly.
inline bool IsStrictlyInside(const math::POLYPOS& pos, const math::PosRange& range) {
    return IsBefore(range.start, pos) && IsBefore(pos, range.end);
}

/// Whether a position is an end of a range within kSameRatio.
inline bool IsAtAnEnd(const math::POLYPOS& pos, const math::PosRange& range) {
    return IsSamePos(pos, range.start) || IsSamePos(pos, range.end);
}

/// Whether a range ends before it starts, compared exactly: true of all that run over the start point.
/// Whether it ends on the segment on which it starts is not branched on, as that would be guessed wrong for
/// every other range of a list.
inline bool IsTurned(const math::PosRange& range) {
    const math::POLYPOS &start = range.start, &end = range.end;
    return (end.nSegIndex < start.nSegIndex)
           | ((end.nSegIndex == start.nSegIndex) & (end.dRatio < start.dRatio));
}

/// Whether a range is not turned and lies clearly before `from` or clearly behind `to`: true of nearly all
/// ranges of a list, whichever is asked. On which side it lies is not branched on, as it would be guessed
/// wrong for every other range of a list.
inline bool LiesBeside(const math::PosRange& range, const math::POLYPOS& from, const math::POLYPOS& to) {
    const auto clearlyBefore = [](const math::POLYPOS& a, const math::POLYPOS& b) {
        return (a.nSegIndex == b.nSegIndex) & (b.dRatio - a.dRatio >= kSameRatio);
    };
    const math::POLYPOS &start = range.start, &end = range.end;
    const bool onOthers = (end.nSegIndex < from.nSegIndex) | (to.nSegIndex < start.nSegIndex);
    return !IsTurned(range) && (onOthers || (clearlyBefore(end, from) | clearlyBefore(to, start)));
}

/// Whether a range over the start point holds a position, ends included within kSameRatio.
inline bool HoldsOverStart(const math::PosRange& over, const math::POLYPOS& pos) {
    return IsBefore(pos, over.end) || IsBefore(over.start, pos) || IsAtAnEnd(pos, over);
}

/// Whether a position lies in a range, ends included within kSameRatio. One that is not well-formed counts as
/// plain.
inline bool Holds(const math::PosRange& range, const math::POLYPOS& pos) {
    if (RunsOverStart(range)) return HoldsOverStart(range, pos);
    return IsStrictlyInside(pos, range) || IsAtAnEnd(pos, range);
}

/// Whether two ranges, both well-formed, share a point.
inline bool Meet(const math::PosRange& a, const math::PosRange& b) {
    const bool aRunsOver = RunsOverStart(a);
    const bool bRunsOver = RunsOverStart(b);
    if (aRunsOver && bRunsOver) return true; // both hold the start point
    if (aRunsOver) return TouchesOverStart(a, b);
    return bRunsOver ? TouchesOverStart(b, a) : Touches(a, b.start, b.end);
}

/// All ranges over the start point of a list as one: it reaches from the first of their starts to the last of
/// their ends, and may hold the whole contour. Holds and touches nothing as long as none was added.
struct OverStart {
    math::PosRange range{{std::numeric_limits<int>::max(), std::numeric_limits<double>::infinity()}, {-1, 0}};
    void Add(const math::PosRange& over) {
        if (IsBefore(over.start, range.start)) range.start = over.start;
        if (IsBefore(range.end, over.end)) range.end = over.end;
    }
    bool IsEmpty() const { return range.end.nSegIndex < 0; }
};

/// Takes a list apart for a search: appends its plain ranges, which are well-formed, in the order of their
/// starts, each lengthened up to the farthest end before it, and answers those over the start point.
OverStart TakeApart(const std::vector<math::PosRange>& ranges, std::vector<math::PosRange>& sorted);

/// Whether one of plain ranges, sorted by their starts and with ends that never go back, touches the
/// positions from `from` to `to`.
inline bool Touches(const std::vector<math::PosRange>& sorted, const math::POLYPOS& from,
                    const math::POLYPOS& to) {
    const auto behind = std::partition_point(sorted.begin(), sorted.end(), [&to](const math::PosRange& own) {
        return !IsClearlyBefore(to, own.start);
    });
    return behind != sorted.begin() && !IsClearlyBefore(behind[-1].end, from);
}

/// Whether a well-formed range shares a point with one of a list that was taken apart: plain ranges as for
/// Touches, and those over the start point.
inline bool Meets(const std::vector<math::PosRange>& sorted, const OverStart& over,
                  const math::PosRange& range) {
    if (!RunsOverStart(range))
        return Touches(sorted, range.start, range.end) || TouchesOverStart(over.range, range);
    if (!over.IsEmpty() || sorted.empty()) return !over.IsEmpty();
    return !IsBefore(sorted.back().end, range.start) || !IsBefore(range.end, sorted.front().start);
}

} // namespace qev
