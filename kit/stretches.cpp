// Where a tool may enter a contour: away from its sharp corners, where it would mark the part, and there as
// far from both neighbouring corners as it gets.
//
// Every joint that turns by the given angle gets a zone of a given length on both sides; zones that overlap
// are one. What lies between two neighbouring zones is a free stretch, which the library's set of ranges
// tells. The library also turns lengths into positions and back, and a stretch is as exact as these walks
// are.
//
// The chosen place is the middle of the longest stretch. Lengths that differ by rounding count as equal, so
// that a regular shape gets the same start on every system and after every rotation of its coordinates.

#include <algorithm>

#include <qevtechnics/stretches.h>

namespace qev::kit {
namespace {

using math::PosRange;

// mm: a stretch must be longer by this much to be preferred to an earlier one. It is far above the rounding
// of a walk along metres of contour and far below what a machine can place.
constexpr double kSameLength = 1e-6;

} // namespace

std::unique_ptr<CCadMultiSegments> ContourOf(const CCadObject& object) {
    if (const auto* polyline = dynamic_cast<const CCadPolyline*>(&object))
        return std::unique_ptr<CCadMultiSegments>(static_cast<CCadPolyline*>(polyline->Clone(false)));
    return std::unique_ptr<CCadMultiSegments>(Convert2Polyline(&object, kConversionError));
}

std::vector<Stretch> StretchesBetween(const CCadMultiSegments& contour, const std::vector<PosRange>& ranges) {
    const CRangeSet set(&contour, ranges);
    std::vector<PosRange> free;
    set.GetFree(free);
    const auto leadsToFirst = [&set](const PosRange& range) {
        return PolyPosToDouble(range.start) < PolyPosToDouble(set.GetRanges().front().start);
    };
    if (contour.IsClose() && free.size() > 1 && leadsToFirst(free.front()))
        std::rotate(free.begin(), free.begin() + 1, free.end());
    std::vector<Stretch> stretches;
    for (PosRange& range : free) {
        NormalizePosRange(&contour, range); // the whole of a closed contour leads from (0, 0) to (0, 0)
        double length = 0;
        GetLineLength_Dot2Dot2(&contour, range.start, range.end, length);
        if (length > 0) stretches.push_back({range, length});
    }
    return stretches;
}

StartZones FindStartZones(const CCadMultiSegments& contour, double length, double cornerDegrees) {
    StartZones found;
    if (!GenerateCornerInvalidRange(&contour, length, cornerDegrees, &found.zones)) return found;
    found.freeStretches = StretchesBetween(contour, found.zones);
    for (const Stretch& stretch : found.freeStretches) {
        if (stretch.length <= found.longest + kSameLength) continue;
        found.longest = stretch.length;
        GetPosByOffset(&contour, stretch.range.start, stretch.length / 2, found.chosen);
    }
    return found;
}

} // namespace qev::kit
