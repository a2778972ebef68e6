// Excluded zones round a position and round sharp corners.
//
// A zone is what two walks reach, one back and one on. When one of them makes a whole lap, or when the two
// pass each other on the far side of a closed contour, there is nothing left outside and the zone is the
// whole contour. Whether they pass is told by going forward from the position: the zone's end must come
// before its start. Both ways are measured in segments and a fraction of one, not in mm, because the order
// along the contour is all that matters and needs no length.

#include <qev/measure/positions.h>
#include <qev/position/offset_walk.h>
#include <qev/position/sharp_joints.h>
#include <qev/range/invalid_ranges.h>
#include <qev/range/ranges.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::POLYPOS;
using math::PosRange;

// How far a position lies ahead of another, going forward round the contour: whole segments and a fraction.
struct Ahead {
    int segments;
    double fraction;
};

// To the zone's end. The end may lie on an earlier segment than the position, over the contour's start.
Ahead ToEnd(const POLYPOS& from, const POLYPOS& end, int count) {
    Ahead ahead{end.nSegIndex - from.nSegIndex, end.dRatio - from.dRatio};
    if (ahead.fraction < 0) ahead = {ahead.segments - 1, ahead.fraction + 1};
    if (ahead.segments < 0) ahead.segments += count;
    return ahead;
}

// To the zone's start, which lies behind the position and is therefore reached last, over the contour's
// start: the rest of the position's segment, the segments between, and the part of the start's segment.
Ahead ToStart(const POLYPOS& from, const POLYPOS& start, int count) {
    Ahead ahead{count - from.nSegIndex + start.nSegIndex - 1, 1.0 - from.dRatio + start.dRatio};
    if (ahead.fraction > 1 || IsSameRatio(ahead.fraction, 1))
        ahead = {ahead.segments + 1, ahead.fraction - 1};
    if (ahead.segments >= count) ahead.segments -= count;
    return ahead;
}

bool IsFurther(const Ahead& a, const Ahead& b) {
    return a.segments > b.segments || (a.segments == b.segments && a.fraction - b.fraction >= kSameRatio);
}

// Whether the ends of a zone stay apart: the start has not moved, or lies further ahead than the end.
bool StaysApart(const POLYPOS& pos, const PosRange& zone, int count) {
    const Ahead start = ToStart(pos, zone.start, count);
    const bool unmoved = start.segments < 0 || (start.segments == 0 && !(start.fraction > 0));
    return unmoved || IsFurther(start, ToEnd(pos, zone.end, count));
}

} // namespace

bool GenerateInvalidRange(const CCadObject* contour, const POLYPOS& pos, double dBefore, double dAfter,
                          PosRange& range) {
    const int count = GetCadSegments(contour);
    if (pos.nSegIndex < 0 || pos.nSegIndex >= count) return false;
    PosRange zone(pos, pos, range.nTag); // apart from the range, whose ends the position may be
    const int lapsBack = dBefore != 0 ? GetPosByOffset(contour, pos, -dBefore, zone.start) : 0;
    const int lapsOn = dAfter != 0 ? GetPosByOffset(contour, pos, dAfter, zone.end) : 0;
    const bool apart = lapsBack < 1 && lapsOn < 1 && StaysApart(pos, zone, count);
    range = apart ? zone : PosRange({0, 0.0}, {count - 1, 1.0}, range.nTag);
    return !apart || !IsInvalidRange(contour, range);
}

bool GenerateCornerInvalidRange(const CCadObject* contour, double dDistance, double dAngleDegrees,
                                std::vector<PosRange>* ranges) {
    std::vector<int> corners;
    CollectPos(contour, dAngleDegrees, corners);
    for (const int corner : corners) {
        PosRange zone;
        if (!GenerateInvalidRange(contour, {corner, 0.0}, dDistance, dDistance, zone)) return false;
        ranges->push_back(zone);
    }
    SortRange(ranges);
    CombineRange(ranges, GetCadSegments(contour));
    return true;
}

bool IsRangeIntersected(const CCadObject* contour, const POLYPOS& pos, double dBefore, double dAfter,
                        const PosRange& range) {
    PosRange zone({0, 0.0}, {0, 0.5});
    GenerateInvalidRange(contour, pos, dBefore, dAfter, zone);
    return IsRangeIntersected(zone, range);
}

} // namespace qev
