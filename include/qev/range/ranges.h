/// \file
/// Ordering, merging and intersecting ranges of positions on one contour.
///
/// Positions are compared exactly unless a tolerance is named: the same segment, and ratios less than 1e-9
/// apart. A range whose start lies after its end runs over the contour's start point (IsOverStartPoint).
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

/// Orders ranges by their starts. Equal starts are left as the exchange sort leaves them that hosts have
/// always had: for each place, every later range with an earlier start is swapped into it. Null is fine.
QEVCOMMON_API void SortRange(std::vector<math::PosRange>* ranges);

/// Merges ranges in SortRange's order into disjoint ones; nSegments is the contour's count of segments.
/// Ranges merge when the later one does not start exactly after the earlier one's end. A range over the start
/// point takes part with both of its pieces and comes last. When a split list merges into one range, that is
/// (0, 0) to (nSegments, 0). Nothing for null, fewer than two ranges, or no segments. One pass.
QEVCOMMON_API void CombineRange(std::vector<math::PosRange>* ranges, int nSegments);

/// Whether a position lies in a range, ends included within the tolerance. A range over the start point holds
/// only its own ends here: callers that know their ranges not to wrap rely on the plain test. False for
/// invalid arguments.
QEVCOMMON_API bool IsRangeIntersected(const math::PosRange& range, const math::POLYPOS& pos);
/// The same with ranges over the start point. Neither argument is checked for validity.
QEVCOMMON_API bool IsRangeIntersected(const math::POLYPOS& pos, const math::PosRange& range);
/// Whether a position lies strictly inside a range, exactly compared. False for invalid arguments.
QEVCOMMON_API bool IsRangeIntersectedWithoutEndpoint(const math::PosRange& range, const math::POLYPOS& pos);

/// Whether two ranges share at least a point; two over the start point always do. False for invalid ranges.
QEVCOMMON_API bool IsRangeIntersected(const math::PosRange& a, const math::PosRange& b);
/// The same, but a touching end alone does not count.
QEVCOMMON_API bool IsRangeIntersectedBoundary(const math::PosRange& a, const math::PosRange& b);

/// Whether any element shares a point with a range. The list is never null; so for the next two.
QEVCOMMON_API bool IsRangeIntersected(const std::vector<math::PosRange>* ranges, const math::PosRange& range);
/// Whether any element of one list shares a point with one of another.
QEVCOMMON_API bool IsRangeIntersected(const std::vector<math::PosRange>* a,
                                      const std::vector<math::PosRange>* b);
/// Whether any element holds a position, those over the start point too; false for an invalid position.
/// Whether the elements are valid is not checked.
QEVCOMMON_API bool IsRangeIntersected(const std::vector<math::PosRange>* ranges, const math::POLYPOS& pos);

} // namespace qev
