/// \file
/// Cutting a stretch of a contour out as a contour of its own.
#pragma once

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadMultiSegments;

/// A new contour that holds the stretch of a range, owned by the caller: a polyline, or an extended one as
/// soon as a Bezier piece is met. A range that ends on its own segment before its start, by a ratio of
/// 1e-9 or more, runs on over the start point up to its end; equal positions are an empty range. On an open
/// contour a straight line leads from the contour's end to the start of what follows. An end within 1e-9 of a
/// segment's end, and a start so near to its start, take the segment whole. Of a Bezier piece that is not
/// taken whole nothing is added; hosts rely on that. Null when the contour is null, the range is empty or one
/// of its positions is invalid on the contour. Throws std::bad_alloc without memory. `GetMultiSementsByRange`
/// keeps its old spelling.
QEVCOMMON_API CCadMultiSegments* GetMultiSementsByRange(const CCadMultiSegments* contour,
                                                        const math::PosRange& range);
/// A new contour that holds the stretch of a range, owned by the caller: GetMultiSementsByRange under its
/// other name. Null when the contour is null, the range is empty or one of its positions is invalid on the
/// contour. Throws std::bad_alloc without memory.
QEVCOMMON_API CCadMultiSegments* GetPolylineByRange(const CCadMultiSegments* contour,
                                                    const math::PosRange& range);

/// A new contour that holds the stretch of a range exactly, owned by the caller: a polyline, or an extended
/// one as soon as a Bezier piece is met, whose parts are Bezier pieces by themselves, within the rounding of
/// the coordinates and 1e-10 of the piece's length at their ends. A range that ends on its own segment
/// before its start, by a ratio of 1e-9 or more, runs on over the start point up to its end; equal positions
/// are an empty range, and the whole of a closed contour is none that can be cut: clone it. An end within
/// 1e-9 of a segment's start or end is there, and what is left of the segment by that, which has no length,
/// is not added. Null when the contour is null, the range is empty, one of its positions is invalid on the
/// contour or nothing is left of the stretch. Throws std::bad_alloc without memory.
QEVCOMMON_API CCadMultiSegments* CutStretch(const CCadMultiSegments* contour, const math::PosRange& range);

/// A new contour that holds the stretch of a range with its ends moved to joints, owned by the caller. nMode
/// 1 moves each end to the nearer joint of its segment, 2 outward, 3 inward; an end within 1e-9 of a joint is
/// there already. Any other value moves nothing, and neither does a mode that would leave nothing of the
/// stretch. Outward ends that meet or pass each other give the whole contour once. Coordinates are never
/// rounded. Null when the contour is null, the range is empty or one of its positions is invalid on the
/// contour. Throws std::bad_alloc without memory.
QEVCOMMON_API CCadMultiSegments* GetMultiSementsByRangeRound(const CCadMultiSegments* contour,
                                                             const math::PosRange& range, int nMode);

} // namespace qev
