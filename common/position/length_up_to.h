/// \file
/// The length from an object's start up to a position on it. Private to the positions.
#pragma once

#include <qev/types.h>

#include "../kinds/cad_kinds.h"
#include "data/running_lengths.h"

namespace qev {

/// The length in mm of a contour up to a position. An index before the contour has none in front of it, one
/// behind it the whole contour.
inline double ContourLengthUpTo(const RunningLengths& lengths, const math::POLYPOS& pos) {
    const bool hasSegment = pos.nSegIndex >= 0 && pos.nSegIndex < lengths.GetCount();
    const double before = lengths.Before(pos.nSegIndex);
    return hasSegment ? before + lengths.Of(pos.nSegIndex) * pos.dRatio : before;
}

/// The length in mm from an object's start up to a position: of a contour of the set it is added to `before`,
/// of a single piece it is the piece's length times the ratio, of a dot 0. Everything else answers `before`.
inline double GetLengthUpTo(const CCadObject* object, KindSet contours, const math::POLYPOS& pos,
                            double before) {
    return VisitCad(object, contours,
                    Handle{[](const CCadDot&) { return 0.0; },
                           [&](const SinglePiece auto& piece) { return piece.GetLength() * pos.dRatio; },
                           [&](const Contour& contour) {
                               return before + ContourLengthUpTo(RunningLengths(contour.object), pos);
                           },
                           Others(before)});
}

} // namespace qev
