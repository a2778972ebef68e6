/// \file
/// The length from an object's start up to a position on it. Private to the positions.
#pragma once

#include <algorithm>

#include <qev/types.h>

#include "../kinds/cad_kinds.h"

namespace qev {

/// A length in mm with that of a contour up to a position added, segment by segment from the start on. An
/// index before the contour adds nothing, one behind it the whole contour.
inline double AddLengthUpTo(const CCadObject& contour, const math::POLYPOS& pos, double length) {
    const int count = contour.GetSegmentCount();
    for (int i = 0, end = std::min(pos.nSegIndex, count); i < end; ++i)
        length += contour.GetSegment(i).GetLength();
    const bool hasSegment = pos.nSegIndex >= 0 && pos.nSegIndex < count;
    return hasSegment ? length + contour.GetSegment(pos.nSegIndex).GetLength() * pos.dRatio : length;
}

/// The length in mm from an object's start up to a position: of a contour of the set it is added to `before`,
/// of a single piece it is the piece's length times the ratio, of a dot 0. Everything else answers `before`.
inline double GetLengthUpTo(const CCadObject* object, KindSet contours, const math::POLYPOS& pos,
                            double before) {
    return VisitCad(object, contours,
                    Handle{[](const CCadDot&) { return 0.0; },
                           [&](const SinglePiece auto& piece) { return piece.GetLength() * pos.dRatio; },
                           [&](const Contour& contour) { return AddLengthUpTo(contour.object, pos, before); },
                           Others(before)});
}

} // namespace qev
