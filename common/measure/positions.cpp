// How a position is counted, validated and brought into normal form.
//
// One place of a contour can be written in two ways at every joint: as the end of a segment and as the start
// of the next one. The normal form is the start, so that equal places have equal positions; only the very end
// of an open contour has no segment behind it and stays an end. Ratios are compared within kSameRatio, since
// a ratio that was computed from lengths misses 1 by its rounding.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <qev/measure/positions.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/position_order.h"
#include "../kinds/tolerance.h"
#include "data/contour_index.h"

namespace qev {
namespace {

// Indices are computed in 64 bits, so that those at the ends of int do not overflow; the index before the
// least int is that int itself.
int ToIndex(std::int64_t index) {
    return static_cast<int>(std::max<std::int64_t>(index, std::numeric_limits<int>::min()));
}

int Cyclic(std::int64_t index, int count) {
    const std::int64_t rest = index % count;
    return static_cast<int>(rest < 0 ? rest + count : rest);
}

} // namespace

int GetCadSegments(const CCadObject* object) {
    const ContourIndex* const kept = object ? ContourIndex::KeptBy(*object) : nullptr;
    if (kept) return kept->GetSegmentCount(); // both kinds with an index are served
    return VisitCad(object, kSegmentContours,
                    Handle{[](const SinglePiece auto&) { return 1; },
                           [](const Contour& contour) { return contour.object.GetSegmentCount(); },
                           Others<CCadDot>(-1)});
}

int GetPreSegmentIndex(const CCadObject* object, int i) {
    const int count = GetCadSegments(object);
    if (count < 1) return -1;
    const std::int64_t previous = std::int64_t{i} - 1;
    return object->IsClose() ? Cyclic(previous, count) : ToIndex(previous);
}

int GetNextSegmentIndex(const CCadObject* object, int i) {
    const int count = GetCadSegments(object);
    if (count < 1) return -1;
    const std::int64_t next = std::int64_t{i} + 1;
    if (object->IsClose()) return Cyclic(next, count);
    return next < count ? ToIndex(next) : -1;
}

bool IsInvalidPos(const math::POLYPOS& pos) {
    return !IsWellFormed(pos);
}

bool IsInvalidPos(const CCadObject* object, const math::POLYPOS& pos) {
    return !IsPosOn(object, GetCadSegments(object), pos);
}

bool IsInvalidRange(const math::PosRange& range) {
    return !IsWellFormed(range);
}

bool IsInvalidRange(const CCadObject* object, const math::PosRange& range) {
    return IsInvalidRange(range) || IsInvalidPos(object, range.start) || IsInvalidPos(object, range.end);
}

void NormalizePos(const CCadObject* object, math::POLYPOS& pos) {
    const int count = GetCadSegments(object);
    const bool closed = object && object->IsClose();
    if (IsSameRatio(pos.dRatio, 1)) {
        if (!closed && std::int64_t{pos.nSegIndex} + 1 == count) return;
        pos = {GetNextSegmentIndex(object, pos.nSegIndex), 0.0};
    }
    if (count < 0 || pos.nSegIndex < count) return;
    if (closed)
        pos.nSegIndex = count > 0 ? pos.nSegIndex % count : -1;
    else if (pos.nSegIndex == count && IsSameRatio(pos.dRatio, 0))
        pos = {count - 1, 1.0};
}

void NormalizePosRange(const CCadObject* object, math::PosRange& range) {
    NormalizePos(object, range.start);
    NormalizePos(object, range.end);
}

double PolyPosToDouble(const math::POLYPOS& pos) {
    return pos.nSegIndex + pos.dRatio;
}

math::POLYPOS DoubleToPolyPos(const CCadObject* object, double value) {
    const double index = std::floor(value);
    if (!(index >= std::numeric_limits<int>::min() && index <= std::numeric_limits<int>::max()))
        return {-1, 0.0};
    math::POLYPOS pos{static_cast<int>(index), value - index};
    NormalizePos(object, pos);
    return pos;
}

} // namespace qev
