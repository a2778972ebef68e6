// Ordering, merging and intersecting ranges of positions.
//
// A range whose start lies after its end runs over the contour's start point. Every function treats such a
// range as what it is, two pieces: one up to the contour's end and one from its start. Merging goes once over
// the ranges in the order of their starts, where a range can only touch the one merged last. The pieces
// behind the start point are merged first, since all of them begin at (0, 0); when anything is left of them
// in front, it belongs to the last range, which then runs over the start point again.
//
// Positions are compared exactly where ranges are merged, so that merging is an order and its answer does not
// depend on what was merged before; they are compared within kSameRatio where a position is asked against an
// end, because such a position was computed by another way. The comparisons of one function stand together in
// PlaceOf.
//
// Sorting: equal starts have to stay in the order that an exchange sort leaves them in, which hosts have
// stored. That order is not that of a stable sort. So the ranges are sorted fast when all starts differ, and
// by exchange when two are equal or one is not a number: O(n log n) for nearly all, O(n^2) for the few.

#include <algorithm>
#include <cmath>
#include <utility>

#include <qev/measure/positions.h>
#include <qev/range/ranges.h>

#include "../kinds/position_order.h"
#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::POLYPOS;
using math::PosRange;

// Before by at least the tolerance, so that positions that are the same are not clearly before each other.
bool IsClearlyBefore(const POLYPOS& a, const POLYPOS& b) {
    return a.nSegIndex < b.nSegIndex || (a.nSegIndex == b.nSegIndex && b.dRatio - a.dRatio >= kSameRatio);
}

bool IsStrictlyInside(const POLYPOS& pos, const PosRange& range) {
    return IsBefore(range.start, pos) && IsBefore(pos, range.end);
}

bool IsAtAnEnd(const POLYPOS& pos, const PosRange& range) {
    return IsSamePos(pos, range.start) || IsSamePos(pos, range.end);
}

enum class Place { kBefore, kAtStart, kInside, kAtEnd, kAfter };

// Where a position lies beside a range that does not run over the start point.
Place PlaceOf(const POLYPOS& pos, const PosRange& range) {
    if (IsSamePos(pos, range.start)) return Place::kAtStart;
    if (IsSamePos(pos, range.end)) return Place::kAtEnd;
    if (IsStrictlyInside(pos, range)) return Place::kInside;
    return IsBefore(pos, range.start) ? Place::kBefore : Place::kAfter;
}

bool StartsBefore(const PosRange& a, const PosRange& b) {
    return IsBefore(a.start, b.start);
}

// For each place, every later range with an earlier start is swapped into it.
void ExchangeSort(std::vector<PosRange>& ranges) {
    for (std::size_t i = 0; i + 1 < ranges.size(); ++i)
        for (std::size_t j = i + 1; j < ranges.size(); ++j)
            if (StartsBefore(ranges[j], ranges[i])) std::swap(ranges[i], ranges[j]);
}

// Appends a range that starts after the last one's end; lengthens the last one by any other that ends behind
// it.
void Merge(std::vector<PosRange>& merged, const PosRange& next) {
    if (merged.empty() || IsBefore(merged.back().end, next.start))
        merged.push_back(next);
    else if (!IsBefore(next.end, merged.back().end))
        merged.back().end = next.end;
}

bool AreUsable(const PosRange& a, const PosRange& b) {
    return !IsInvalidRange(a) && !IsInvalidRange(b); // no index is negative then
}

} // namespace

bool IsOverStartPoint(const PosRange& range) {
    if (IsInvalidRange(range)) return false;
    if (range.start.nSegIndex != range.end.nSegIndex) return range.start.nSegIndex > range.end.nSegIndex;
    return range.end.dRatio <= range.start.dRatio && !IsSameRatio(range.start.dRatio, range.end.dRatio);
}

bool IsOverStartPoint(const POLYPOS& start, const POLYPOS& end) {
    return IsOverStartPoint(PosRange(start, end));
}

void SortRange(std::vector<PosRange>* ranges) {
    if (!ranges) return;
    const bool ordered = std::none_of(ranges->begin(), ranges->end(),
                                      [](const PosRange& range) { return std::isnan(range.start.dRatio); });
    if (!ordered) return ExchangeSort(*ranges);
    // The exchange sort swaps nothing in ranges that are in order, equal starts included.
    if (std::is_sorted(ranges->begin(), ranges->end(), StartsBefore)) return;
    std::vector<PosRange> sorted = *ranges;
    std::sort(sorted.begin(), sorted.end(), StartsBefore);
    const auto equalStarts = [](const PosRange& a, const PosRange& b) { return !StartsBefore(a, b); };
    if (std::adjacent_find(sorted.begin(), sorted.end(), equalStarts) != sorted.end())
        ExchangeSort(*ranges);
    else
        *ranges = std::move(sorted);
}

void CombineRange(std::vector<PosRange>* ranges, int nSegments) {
    if (!ranges || ranges->size() < 2 || nSegments == 0) return;
    std::vector<PosRange> merged;
    merged.reserve(ranges->size());
    // First the pieces behind the start point, from the last range to the first, as they have always been
    // taken.
    std::for_each(ranges->rbegin(), ranges->rend(), [&merged](const PosRange& range) {
        if (IsOverStartPoint(range)) Merge(merged, PosRange({0, 0.0}, range.end));
    });
    const bool split = !merged.empty();
    for (PosRange range : *ranges) {
        if (IsOverStartPoint(range)) range.end = {nSegments, 0.0};
        Merge(merged, range);
    }
    if (split && merged.size() > 1) {
        merged.back().end = merged.front().end;
        merged.erase(merged.begin());
    }
    *ranges = std::move(merged);
}

bool IsRangeIntersected(const PosRange& range, const POLYPOS& pos) {
    if (IsInvalidRange(range) || IsInvalidPos(pos)) return false;
    return IsStrictlyInside(pos, range) || IsAtAnEnd(pos, range);
}

bool IsRangeIntersected(const POLYPOS& pos, const PosRange& range) {
    const bool inside = IsOverStartPoint(range) ? IsBefore(pos, range.end) || IsBefore(range.start, pos)
                                                : IsStrictlyInside(pos, range);
    return inside || IsAtAnEnd(pos, range);
}

bool IsRangeIntersectedWithoutEndpoint(const PosRange& range, const POLYPOS& pos) {
    if (IsInvalidRange(range) || IsInvalidPos(pos)) return false;
    return IsOverStartPoint(range) ? IsBefore(pos, range.end) || IsBefore(range.start, pos)
                                   : IsStrictlyInside(pos, range);
}

bool IsRangeIntersected(const PosRange& a, const PosRange& b) {
    if (!AreUsable(a, b)) return false;
    const bool aWraps = IsOverStartPoint(a);
    const bool bWraps = IsOverStartPoint(b);
    if (aWraps && bWraps) return true; // both hold the start point
    if (aWraps || bWraps) {
        const PosRange& wrapping = aWraps ? a : b;
        const PosRange& plain = aWraps ? b : a;
        return !IsBefore(plain.end, wrapping.start) || !IsBefore(wrapping.end, plain.start);
    }
    return PlaceOf(a.end, b) != Place::kBefore && PlaceOf(a.start, b) != Place::kAfter;
}

bool IsRangeIntersectedBoundary(const PosRange& a, const PosRange& b) {
    if (!AreUsable(a, b)) return false;
    const bool aWraps = IsOverStartPoint(a);
    const bool bWraps = IsOverStartPoint(b);
    if (aWraps && bWraps) return true;
    if (aWraps || bWraps) {
        const PosRange& wrapping = aWraps ? a : b;
        const PosRange& plain = aWraps ? b : a;
        return IsClearlyBefore(wrapping.start, plain.end) || IsClearlyBefore(plain.start, wrapping.end);
    }
    const Place end = PlaceOf(a.end, b);
    const Place start = PlaceOf(a.start, b);
    return start != Place::kAtEnd && start != Place::kAfter && end != Place::kBefore
           && end != Place::kAtStart;
}

bool IsRangeIntersected(const std::vector<PosRange>* ranges, const PosRange& range) {
    return std::any_of(ranges->rbegin(), ranges->rend(),
                       [&](const PosRange& own) { return IsRangeIntersected(own, range); });
}

bool IsRangeIntersected(const std::vector<PosRange>* a, const std::vector<PosRange>* b) {
    return std::any_of(a->begin(), a->end(), [b](const PosRange& own) { return IsRangeIntersected(b, own); });
}

bool IsRangeIntersected(const std::vector<PosRange>* ranges, const POLYPOS& pos) {
    return !IsInvalidPos(pos) && std::any_of(ranges->rbegin(), ranges->rend(), [&](const PosRange& own) {
        return IsRangeIntersected(pos, own);
    });
}

} // namespace qev
