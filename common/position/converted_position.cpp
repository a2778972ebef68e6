// Positions carried onto a converted contour by length. A conversion keeps the order of the segments and, up
// to its error, their lengths, so that the same fraction of the whole length is the same place of the
// drawing. The segment map would give the segment, but not the ratio in it, and a curve becomes segments of
// different lengths: so the map is not looked at. Where both sides have the same number of segments, and more
// than one, nothing was divided, and the position is the same.
//
// Error: the fraction of the lengths is that of the places up to the difference of the two curves' lengths,
// which the conversion's error bounds; the sums of lengths add about 1e-16 of the length for each segment.

#include <algorithm>
#include <cmath>

#include <qev/measure/measures.h>
#include <qev/measure/positions.h>
#include <qev/position/converted_position.h>

#include "length_up_to.h"

namespace qev {
namespace {

// The position after a length; the end when the contour is not that long. A length that ends at a joint
// belongs to the segment before it, and segments without length are passed over.
math::POLYPOS PosAfter(const CCadObject& contour, double length) {
    const RunningLengths lengths(contour);
    const int count = lengths.GetCount();
    RunningLengths::Place place = lengths.EndingFrom(length);
    while (place.segment < count && !(lengths.Of(place.segment) > 0)) ++place.segment;
    if (place.segment >= count) return {count - 1, 1.0};
    const double ratio = (length - place.before) / lengths.Of(place.segment);
    return {place.segment, std::min(ratio, 1.0)}; // rounded sums pass a very short segment
}

} // namespace

bool GetMapPos(const CCadObject* source, const CCadObject* destination, const std::vector<int>&,
               const math::POLYPOS& pos, math::POLYPOS& out) {
    const int count = GetCadSegments(destination);
    const int sourceCount = GetCadSegments(source);
    if (count < 1 || IsInvalidPos(pos) || pos.nSegIndex >= sourceCount) return false;
    math::POLYPOS mapped = pos;
    if (count != sourceCount || sourceCount == 1) {
        const double scale = GetCadLength(destination) / GetCadLength(source);
        if (!(scale > 0) || !std::isfinite(scale)) return false;
        mapped = PosAfter(*destination, GetLengthUpTo(source, kSegmentContours, pos, 0.0) * scale);
    }
    NormalizePos(destination, mapped);
    out = mapped;
    return true;
}

} // namespace qev
