// Segments at a share of the length against the summed segments, and positions that a map carries to a
// contour with the segments of another one in parts.
#include <vector>

#include "input.h"

namespace {

using namespace qev;
using namespace fuzz;

// The segment at a share of the length. Where one begins, rounding decides.
void ExpectFound(const CCadMultiSegments& contour, double share) {
    const double total = contour.GetLength(), length = share * total, slack = 1e-9 * (1 + total);
    double before = -1;
    if (total < 1e-3) return;
    const int found = FindSegmentIndexByRate(&contour, share, 0, 0, before);
    if (found < 0) return Expect(share > 1 - 1e-9, "only behind the end there is no segment");
    Expect(std::abs(before - LengthTo(contour, {found, 0})) < slack, "the length before the segment");
    Expect(before < length + slack && length < LengthTo(contour, {found, 1}) + slack,
           "the segment holds the share");
}

struct Divided : CCadPolyline {
    Divided(Input& in, const CCadPolyline& source) {
        SetStartPoint(source.GetStartPoint());
        for (int i = 0; i < source.GetSegmentCount(); ++i) {
            const SEGMENT segment = source.GetSegment(i);
            if (in.Coin()) AddLine(GetEndPoint()), map.push_back(i); // no length
            for (int part = 1, parts = in.Int(1, 3); part <= parts; ++part) {
                AddArc(segment.GetPoint(part / double(parts)), std::tan(std::atan(segment.dBulge) / parts));
                map.push_back(i);
            }
        }
    }
    std::vector<int> map;
};

void ExpectCarried(const CCadPolyline& source, const Divided& divided, const POLYPOS& pos) {
    POLYPOS byMap{-1, 0}, byPoint{0, 0};
    DPOINT2 point, carried;
    GetMapPos(&source, pos, &divided, byMap, divided.map);
    Expect(!IsInvalidPos(&divided, byMap), "a position is carried to a valid one");
    PosToCoor(&source, pos.nSegIndex, pos.dRatio, point);
    PosToCoor(&divided, byMap.nSegIndex, byMap.dRatio, carried);
    Expect(math::D2GetDistance(point, carried) < 1e-6, "by length it comes to its point");
    if (!MapPos(&source, &divided, &divided.map, pos.nSegIndex, pos.dRatio, &byPoint.nSegIndex,
                &byPoint.dRatio))
        return Expect(source.GetSegment(pos.nSegIndex).GetLength() < 1e-3, "by point it comes to a segment");
    PosToCoor(&divided, byPoint.nSegIndex, byPoint.dRatio, carried);
    Expect(math::D2GetDistance(point, carried) < 1e-5, "by point it comes to its point");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    const auto source = in.Polyline<CCadPolyline>(6), other = in.Polyline<CCadPolyline>(6);
    const Divided divided(in, *source);
    const POLYPOS pos = in.Pos(*source);
    std::vector<int> map;
    GetSegMap(source.get(), other.get(), map);
    Expect(map.size() == static_cast<std::size_t>(other->GetSegmentCount()),
           "a map has an entry for each segment");
    for (const int entry : map) Expect(entry >= -1 && entry < source->GetSegmentCount(), "of the source");
    POLYPOS out{0, 0}, again = pos;
    GetMapPos(source.get(), pos, other.get(), out, map);
    if (GetMapPos(source.get(), other.get(), map, pos, again))
        Expect(!IsInvalidPos(other.get(), again), "a position is carried to a valid one by its share");
    if (in.IsHostile()) return 0;
    ExpectFound(*source, in.Share());
    ExpectCarried(*source, divided, pos);
    return 0;
}
