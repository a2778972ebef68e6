/// \file
/// Ordering, merging and intersecting ranges of positions on one contour.
///
/// Where ranges are ordered or merged, positions are compared exactly; where a position is asked against an
/// end, two on one segment with ratios less than 1e-9 apart are equal. A range whose start lies after its end
/// runs over the contour's start point (IsOverStartPoint). No function keeps a list that it is given.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

/// Whether a range starts after its end, so that on a closed contour it passes the start point: its start
/// lies in a later segment, or in the same one with a ratio greater by 1e-9 or more. False for an invalid
/// range.
QEVCOMMON_API bool IsOverStartPoint(const math::PosRange& range);
/// Whether the range from one position to another passes the start point of a closed contour: the first lies
/// in a later segment, or in the same one with a ratio greater by 1e-9 or more. False when they make an
/// invalid range.
QEVCOMMON_API bool IsOverStartPoint(const math::POLYPOS& start, const math::POLYPOS& end);

/// Orders ranges by their starts. Equal starts are left as the exchange sort leaves them that hosts have
/// always had: for each place, every later range with an earlier start is swapped into it. Nothing for null.
/// Throws std::bad_alloc without memory, the ranges as they were.
QEVCOMMON_API void SortRange(std::vector<math::PosRange>* ranges);

/// Merges ranges in SortRange's order into disjoint ones; nSegments is the contour's count of segments.
/// A range that starts at or before the end of the one before it is merged with it and keeps the tag of the
/// one that starts first. A range over the start point takes part with both of its pieces and comes last.
/// When the list had one and all merges into one range, that is (0, 0) to (nSegments, 0) with the tag 0.
/// Nothing for null, fewer than two ranges, or no segments. In place and in O(n).
QEVCOMMON_API void CombineRange(std::vector<math::PosRange>* ranges, int nSegments);

/// Whether a position lies in a range, ends included within a ratio of 1e-9. A range over the start point
/// holds only its own ends here: callers that know their ranges not to wrap rely on the plain test. False for
/// invalid arguments.
QEVCOMMON_API bool IsRangeIntersected(const math::PosRange& range, const math::POLYPOS& pos);
/// Whether a position lies in a range, ends included within a ratio of 1e-9; a range over the start point
/// holds what lies behind its start and what lies before its end. Neither argument is checked for validity.
QEVCOMMON_API bool IsRangeIntersected(const math::POLYPOS& pos, const math::PosRange& range);
/// Whether a position lies strictly inside a range, compared exactly; a range over the start point holds what
/// lies behind its start and what lies before its end. False for invalid arguments.
QEVCOMMON_API bool IsRangeIntersectedWithoutEndpoint(const math::PosRange& range, const math::POLYPOS& pos);

/// Whether two ranges share at least a point; two over the start point always do. False for invalid ranges.
QEVCOMMON_API bool IsRangeIntersected(const math::PosRange& a, const math::PosRange& b);
/// Whether two ranges share a stretch: a touching end alone, within a ratio of 1e-9, does not count. Two over
/// the start point always do. False for invalid ranges.
QEVCOMMON_API bool IsRangeIntersectedBoundary(const math::PosRange& a, const math::PosRange& b);

/// Whether any range of a list shares a point with a range. False for an invalid range; invalid elements
/// share nothing. The list must not be null.
QEVCOMMON_API bool IsRangeIntersected(const std::vector<math::PosRange>* ranges, const math::PosRange& range);
/// Whether any range of one list shares a point with any of another; invalid elements share nothing. Neither
/// list may be null. Takes O((n + m) log m). Throws std::bad_alloc without memory.
QEVCOMMON_API bool IsRangeIntersected(const std::vector<math::PosRange>* a,
                                      const std::vector<math::PosRange>* b);
/// Whether any range of a list holds a position, ends included within a ratio of 1e-9; a range over the start
/// point holds what lies behind its start and what lies before its end. False for an invalid position;
/// whether the elements are valid is not checked. The list must not be null.
QEVCOMMON_API bool IsRangeIntersected(const std::vector<math::PosRange>* ranges, const math::POLYPOS& pos);

} // namespace qev
