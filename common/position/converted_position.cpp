#include <cmath>

#include <qev/measure/measures.h>
#include <qev/measure/positions.h>
#include <qev/position/converted_position.h>

namespace qev {
namespace {

double LengthTo(const CCadObject& contour, const math::POLYPOS& pos) {
    double length = 0;
    for (int i = 0; i < pos.nSegIndex; ++i) length += GetSegLength(&contour, i);
    return length + GetSegLength(&contour, pos.nSegIndex) * pos.dRatio;
}

// The position after a length; the end when the contour is not that long.
math::POLYPOS PosAfter(const CCadObject& contour, int count, double length) {
    double before = 0;
    for (int i = 0; i < count; ++i) {
        const double own = GetSegLength(&contour, i);
        if (own > 0 && before + own >= length) return {i, (length - before) / own};
        before += own;
    }
    return {count - 1, 1.0};
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
        mapped = PosAfter(*destination, count, LengthTo(*source, pos) * scale);
    }
    NormalizePos(destination, mapped);
    out = mapped;
    return true;
}

} // namespace qev
