/// \file
/// How a position on a contour is counted, validated and normalised.
///
/// The normal form writes a joint as the start of the later segment, except the very end of an open contour.
/// Ratios are compared within 1e-9, so that a ratio just above 1 is 1. Lines, circles, arcs, ellipses and
/// elliptic arcs have one segment each, segment contours as many as they say; objects of other kinds have
/// none.
#pragma once

#include <qev/export.h>
#include <qev/types.h>
#include <qevdata/cad_object.h>

namespace qev {

/// Number of segments of an object: 1 for a line, circle, arc, ellipse or elliptic arc, GetSegmentCount() for
/// segment contours, -1 for other kinds and null.
QEVCOMMON_API int GetCadSegments(const CCadObject* object);

/// The segment before segment i: cyclic on a closed contour; -1 before the first of an open one, and when the
/// object has no segments. On an open contour i itself is not checked: the answer is i - 1.
QEVCOMMON_API int GetPreSegmentIndex(const CCadObject* object, int i);
/// The segment after segment i: cyclic on a closed contour; -1 after the last of an open one, and when the
/// object has no segments. A negative i is not checked on an open contour: the answer is i + 1.
QEVCOMMON_API int GetNextSegmentIndex(const CCadObject* object, int i);

/// Whether a position is malformed: a negative index, a ratio below 0, above 1 or not a number.
QEVCOMMON_API bool IsInvalidPos(const math::POLYPOS& pos);
/// Whether a position is malformed, lies on no segment of the object, or is written as the end of a segment
/// that another one follows: NormalizePos mends the last. True for an object without segments and for null.
QEVCOMMON_API bool IsInvalidPos(const CCadObject* object, const math::POLYPOS& pos);

/// Whether a range is empty (both positions on one segment, ratios less than 1e-9 apart) or one of its
/// positions is malformed.
QEVCOMMON_API bool IsInvalidRange(const math::PosRange& range);
/// Whether a range is empty (both positions on one segment, ratios less than 1e-9 apart) or one of its
/// positions is invalid on the object. True for an object without segments and for null.
QEVCOMMON_API bool IsInvalidRange(const CCadObject* object, const math::PosRange& range);

/// Rewrites a position into normal form: the end of a segment as the start of the next one, an index beyond a
/// closed contour modulo the number of segments, (count, 0) of an open contour as its end. Where there is no
/// next segment, on an object without segments or past the end of an open contour, a ratio of 1 gives (-1, 0)
/// and every other position stays as it is; but (0, 0) of a contour without segments becomes (-1, 1).
QEVCOMMON_API void NormalizePos(const CCadObject* object, math::POLYPOS& pos);
/// Rewrites both positions of a range into normal form, each as NormalizePos does.
QEVCOMMON_API void NormalizePosRange(const CCadObject* object, math::PosRange& range);

/// A position as one number, index + ratio: positions of one contour sort by it.
QEVCOMMON_API double PolyPosToDouble(const math::POLYPOS& pos);
/// The position of a number index + ratio, in normal form on the object; (-1, 0) for a number whose whole
/// part no int can hold, and for what is no number.
QEVCOMMON_API math::POLYPOS DoubleToPolyPos(const CCadObject* object, double value);

} // namespace qev
