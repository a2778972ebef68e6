// The library finds the nearest object and the nearest point on it exactly. The position that it finds beside
// them is the one that callers have stored: on a line it goes by the distance from the start, whether the
// point lies on the line or beside it, and on a Bezier piece by a hundred samples. So the position is asked
// for again at the nearest point itself, where a line's is right. A Bezier piece is sampled here to find
// where the nearest point may lie, and each such stretch is narrowed down: there the distance from that point
// falls towards it and rises behind it, on either side in proportion to the way, so that a golden section
// finds the place to rounding.
//
// What is answered in the end is the point of the position, so that whoever goes there finds the point that
// was printed.

#include "pick.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include <qev/qev.h>

namespace host {
namespace {

using math::DPOINT2;
using math::POLYPOS;

constexpr double kAnywhere = std::numeric_limits<double>::infinity(); // mm: something is nearest everywhere
constexpr double kSamePoint = 1e-9; // mm: what the position of a point may be off

// How far an object's point at a position is from a point; infinite where there is no position.
double GapAt(const qev::CCadObject& object, const POLYPOS& pos, const DPOINT2& p) {
    DPOINT2 at;
    const bool found = qev::PosToCoor(&object, pos.nSegIndex, pos.dRatio, at);
    return found ? math::D2GetDistance(at, p) : std::numeric_limits<double>::infinity();
}

// The segment of a contour that is nearest to a point; 0 for what has none.
int SegmentAt(const qev::CCadObject& object, const DPOINT2& p) {
    int nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0, count = object.GetSegmentCount(); i < count; ++i) {
        const double distance = math::D2GetDistance(object.GetSegment(i).GetNearest(p), p);
        if (distance >= least) continue;
        least = distance;
        nearest = i;
    }
    return nearest;
}

// The ratio between two others at which a gap that falls and then rises is least.
template <class Gap>
double Narrowed(double low, double high, const Gap& gap) {
    constexpr double kGolden = 0.6180339887498949; // (sqrt(5) - 1) / 2
    constexpr int kSteps = 80;                     // after them the stretch is below the rounding of a ratio
    for (int i = 0; i < kSteps; ++i) {
        const double left = high - kGolden * (high - low);
        const double right = low + kGolden * (high - low);
        (gap(left) < gap(right) ? high : low) = gap(left) < gap(right) ? right : left;
    }
    return (low + high) / 2;
}

// A better position than one that is off, on the nearest segment.
POLYPOS Refined(const qev::CCadObject& object, const DPOINT2& p, POLYPOS best) {
    constexpr int kSamples = 100;
    const int segment = SegmentAt(object, p);
    const auto gap = [&](double ratio) { return GapAt(object, {segment, ratio}, p); };
    std::array<double, kSamples + 1> gaps{};
    for (int i = 0; i <= kSamples; ++i) gaps[i] = gap(i / double{kSamples});
    for (int i = 0; i <= kSamples; ++i) {
        const int before = std::max(i - 1, 0);
        const int behind = std::min(i + 1, kSamples);
        if (gaps[i] > gaps[before] || gaps[i] > gaps[behind]) continue;
        const POLYPOS pos{segment, Narrowed(before / double{kSamples}, behind / double{kSamples}, gap)};
        if (GapAt(object, pos, p) < GapAt(object, best, p)) best = pos;
    }
    return best;
}

// The position of a point that lies on an object; none when the object has no positions.
std::optional<POLYPOS> PositionOf(const qev::CCadObject& object, const DPOINT2& p) {
    POLYPOS pos;
    if (!qev::CoorToPos(&object, p, pos, kAnywhere)) return std::nullopt;
    if (!std::isfinite(pos.dRatio)) pos.dRatio = 0; // on what has no length
    const double gap = GapAt(object, pos, p);
    if (gap > kSamePoint && std::isfinite(gap)) pos = Refined(object, p, pos);
    return std::isfinite(gap) ? std::optional(pos) : std::nullopt;
}

} // namespace

Pick PickAt(const Drawing& drawing, const std::vector<ObjectReport>& reports, const DPOINT2& point) {
    const qev::CCadObject* object = nullptr;
    POLYPOS pos;
    if (!qev::FindCadAndPosByPoint(&drawing.root, point, object, pos, kAnywhere))
        throw DrawingError("nothing can be picked at (" + std::to_string(point.x) + ", "
                           + std::to_string(point.y) + ")");
    const auto report = std::find_if(reports.begin(), reports.end(),
                                     [object](const ObjectReport& each) { return each.object == object; });
    Pick pick;
    pick.object = static_cast<int>(report - reports.begin());
    pick.distance = qev::GetMinDistance(object, point, pick.point);
    pick.pos = PositionOf(*object, pick.point);
    if (!pick.pos) return pick;
    qev::PosToCoor(object, pick.pos->nSegIndex, pick.pos->dRatio, pick.point);
    pick.distance = math::D2GetDistance(pick.point, point);
    return pick;
}

} // namespace host
