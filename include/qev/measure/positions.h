/// \file
/// How a position on a contour is counted, validated and normalised.
///
/// The normal form writes a joint as the start of the later segment, except the very end of an open contour.
/// Ratios are compared with the tolerance 1e-9: a ratio just above 1 is 1. Objects of other kinds than lines,
/// circles, arcs, ellipses, elliptic arcs (one segment each) and the segment contours have no segments.
#pragma once

#include <qev/export.h>
#include <qev/types.h>
#include <qevdata/cad_object.h>

namespace qev {

/// Number of segments: 1 for single-piece kinds, GetSegmentCount() for segment contours, -1 otherwise.
QEVCOMMON_API int GetCadSegments(const CCadObject* object);

/// The segment before segment i: cyclic on a closed contour; -1 before the first of an open one, and when the
/// object has no segments. On an open contour i itself is not checked: the answer is i - 1.
QEVCOMMON_API int GetPreSegmentIndex(const CCadObject* object, int i);
/// The segment after segment i: cyclic on a closed contour; -1 after the last of an open one, and when the
/// object has no segments. A negative i is not checked on an open contour: the answer is i + 1.
QEVCOMMON_API int GetNextSegmentIndex(const CCadObject* object, int i);

/// Whether a position is malformed: a negative index, a ratio below 0, above 1 or not a number.
QEVCOMMON_API bool IsInvalidPos(const math::POLYPOS& pos);
/// Whether a position is malformed, off the contour, or not in normal form at the end of a segment.
QEVCOMMON_API bool IsInvalidPos(const CCadObject* object, const math::POLYPOS& pos);

/// Whether a range is empty or either of its positions is malformed.
QEVCOMMON_API bool IsInvalidRange(const math::PosRange& range);
/// The same, or whether either of its positions is invalid on the object.
QEVCOMMON_API bool IsInvalidRange(const CCadObject* object, const math::PosRange& range);

/// Rewrites a position into normal form. On an object without segments a position stays as it is, or becomes
/// (-1, 0) when its ratio is 1. Past the end of an open contour it does the same, but for (count, 0), which
/// becomes the end.
QEVCOMMON_API void NormalizePos(const CCadObject* object, math::POLYPOS& pos);
/// The same for both positions of a range.
QEVCOMMON_API void NormalizePosRange(const CCadObject* object, math::PosRange& range);

/// The scalar form of a position, index + ratio.
QEVCOMMON_API double PolyPosToDouble(const math::POLYPOS& pos);
/// The position of a scalar, normalised on the object; (-1, 0) for values that no index can hold.
QEVCOMMON_API math::POLYPOS DoubleToPolyPos(const CCadObject* object, double value);

} // namespace qev
