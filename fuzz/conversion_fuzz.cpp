// Any outline as a polyline: sampled both ways it leaves the outline by no more than the error, it has its
// ends, and a position keeps its share of the length.
#include "input.h"

namespace {

using namespace qev;
using namespace fuzz;

constexpr double kRounding =
    1e-9; // mm: what the rounding of coordinates of some hundred mm adds to a deviation

// The largest distance of some points of one outline from the other one.
double Deviation(const CCadObject& from, const CCadObject& to, int samples) {
    double worst = 0;
    DPOINT2 nearest;
    for (int i = 0; i <= samples; ++i)
        worst = std::max(worst, GetMinDistance(&to, Along(from, i / double(samples)), nearest));
    return worst;
}

// The arcs of an ellipse join tangentially.
void ExpectSmooth(const CCadPolyline& polyline) {
    for (int i = polyline.IsClose() ? 0 : 1, n = polyline.GetSegmentCount(); i < n; ++i) {
        const DPOINT2 from = polyline.GetSegment((n + i - 1) % n).GetArc().DirectionAt(1);
        const DPOINT2 to = polyline.GetSegment(i).GetArc().DirectionAt(0);
        Expect(std::abs(std::atan2(math::Cross(from, to), math::Dot(from, to))) < 1e-7,
               "arcs join tangentially");
    }
}

void ExpectShare(const CCadObject& object, const CCadPolyline& polyline, const POLYPOS& pos) {
    POLYPOS mapped;
    if (GetCadSegments(&object) != 1 || polyline.GetSegmentCount() == 1) return;
    Expect(GetMapPos(&object, &polyline, {}, pos, mapped), "a position has its place");
    const double share = LengthTo(polyline, mapped) / polyline.GetLength(), off = share - pos.dRatio;
    Expect(std::abs(std::remainder(off, 1)) < 1e-9, "a position keeps its share of the length");
}

// From a position to its point, which is found again, and back.
void ExpectRoundTrip(const CCadObject& object, const POLYPOS& pos, double tolerance) {
    DPOINT2 point, again;
    POLYPOS found;
    Expect(PosToCoor(&object, pos.nSegIndex, pos.dRatio, point), "a position has a point");
    Expect(CoorToPos(&object, point, found), "its point has a position");
    Expect(object.GetType() == kCadLine || !IsInvalidPos(&object, found),
           "a valid one");                          // a line's is a distance
    if (object.GetType() == kCadPolylineEx) return; // a Bezier piece answers the nearest of samples
    PosToCoor(&object, found.nSegIndex, found.dRatio, again);
    Expect(object.GetType() == kCadLine || math::D2GetDistance(point, again) < tolerance,
           "at the same point");
}

// By the length that is left to an end, and by whole laps: rounding misses them on either side.
void ExpectWalks(const CCadObject& object, const POLYPOS& pos) {
    const auto upTo = [&](const POLYPOS& at) {
        double length = 0;
        GetLengthStartToPos(&object, at, length);
        return length;
    };
    const double total = GetCadLength(&object), before = upTo(pos);
    if (object.GetType() == kCadPolylineEx || std::min(before, total - before) < 1e-6) return;
    POLYPOS out;
    for (const double to : {0.0, upTo({pos.nSegIndex, 0}), total}) {
        Expect(GetPosByOffset(&object, pos, to - before, out) == 0, "to an end, which is no lap");
        const double off = upTo(out) - to;
        Expect(std::abs(object.IsClose() ? std::remainder(off, total) : off) < 1e-9 + 1e-12 * total,
               "to an end or joint");
    }
    if (GetCadSegments(&object) != 1) return; // without length, a segment's start counts as not reached
    for (const int laps : {-2, -1, 1, 3}) {
        Expect(GetPosByOffset(&object, pos, laps * total, out) == std::abs(laps), "whole laps");
        Expect(std::abs(out.dRatio - pos.dRatio) < 1e-9, "to where it was");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    const double error = std::pow(10, in.Int(-4, 2)) * in.Int(1, 9);
    const int type = in.Int(0, 2);
    const bool isHostile = in.IsHostile();
    const std::unique_ptr<CCadObject> object = in.Object();
    const POLYPOS pos = in.Pos(*object);
    const std::unique_ptr<CCadPolyline> polyline(Convert2Polyline(object.get(), type, isHostile ? 1 : error));
    if (isHostile) return 0;
    Expect(polyline != nullptr, "what is finite is converted");
    const int pieces = object->GetPieceCount();
    Expect(Deviation(*object, *polyline, std::min(20 * pieces, 100)) <= error + kRounding,
           "the outline is near it");
    Expect(Deviation(*polyline, *object, std::min(3 * polyline->GetPieceCount(), 100)) <= error + kRounding,
           "it is near the outline");
    Expect(math::D2GetDistance(polyline->GetStartPoint(), object->GetStartPoint()) < kRounding,
           "it has its start");
    Expect(math::D2GetDistance(polyline->GetEndPoint(), object->GetEndPoint()) < kRounding, "it has its end");
    if (GetCadLength(object.get()) < 1e-3) return 0;
    const bool isEllipse = object->GetType() == kCadEllipse || object->GetType() == kCadEllipseArc;
    ExpectRoundTrip(*object, pos, isEllipse ? 2e-3 : 4e-5); // ellipses go by polylines
    ExpectWalks(*object, pos);
    if (type != 1 && isEllipse) ExpectSmooth(*polyline);
    ExpectShare(*object, *polyline, pos);
    return 0;
}
