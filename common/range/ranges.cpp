#include <algorithm>
#include <cmath>
#include <utility>

#include <qev/measure/positions.h>
#include <qev/position/position_conversion.h>
#include <qev/range/ranges.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::POLYPOS;
using math::PosRange;

bool IsBefore(const POLYPOS& a, const POLYPOS& b) {
    return a.nSegIndex < b.nSegIndex || (a.nSegIndex == b.nSegIndex && a.dRatio < b.dRatio);
}

// Before by at least the tolerance.
bool IsClearlyBefore(const POLYPOS& a, const POLYPOS& b) {
    return a.nSegIndex < b.nSegIndex || (a.nSegIndex == b.nSegIndex && b.dRatio - a.dRatio >= kSame);
}

bool IsSamePos(const POLYPOS& a, const POLYPOS& b) {
    return a.nSegIndex == b.nSegIndex && IsSame(a.dRatio, b.dRatio);
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

void ExchangeSort(std::vector<PosRange>& ranges) {
    for (std::size_t i = 0; i + 1 < ranges.size(); ++i)
        for (std::size_t j = i + 1; j < ranges.size(); ++j)
            if (StartsBefore(ranges[j], ranges[i])) std::swap(ranges[i], ranges[j]);
}

// Appends a range, or lengthens the last one when they are not apart.
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

void SortRange(std::vector<PosRange>* ranges) {
    if (!ranges || std::is_sorted(ranges->begin(), ranges->end(), StartsBefore)) return; // nothing to swap
    const bool ordered = std::none_of(ranges->begin(), ranges->end(),
                                      [](const PosRange& range) { return std::isnan(range.start.dRatio); });
    if (!ordered) return ExchangeSort(*ranges);
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
    // first the pieces behind the start point, the last one met in front
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
