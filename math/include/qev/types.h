/// \file
/// The position types that every family shares.
#pragma once

namespace math {

/// A position on one contour: a segment and the fraction of that segment's length travelled from its
/// start (0 at its start, 1 at its end). It carries no reference to the contour.
struct POLYPOS {
    int nSegIndex = 0;   ///< 0-based index of the segment
    double dRatio = 0.0; ///< fraction of the segment's length
};

/// A stretch of one contour in the contour's direction. On a closed contour the end may lie before the
/// start; the stretch then passes the contour's start point.
struct PosRange {
    POLYPOS start; ///< where the stretch begins in the contour's direction
    POLYPOS end;   ///< where it ends
    int nTag = 0;  ///< the caller's own value: copied with the range, never read

    /// The empty range at the contour's start.
    PosRange() = default;
    /// Takes the positions as they are, unchecked.
    PosRange(const POLYPOS& from, const POLYPOS& to, int tag = 0) : start(from), end(to), nTag(tag) {}
};

} // namespace math
