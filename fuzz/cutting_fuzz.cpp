// A stretch of a contour and the rest of it: they are as long as it together, join, and lie on it; rounded
// ends lie on joints.
#include "input.h"

namespace {

using namespace qev;
using namespace fuzz;
using Cut = std::unique_ptr<CCadMultiSegments>;

void ExpectLiesOn(const CCadMultiSegments& cut, const CCadObject& contour, double share) {
    DPOINT2 nearest;
    Expect(GetMinDistance(&contour, Along(cut, share), nearest) < 1e-6, "a cut lies on its contour");
}

// Whether a range is gone along the contour; on an open one, a range over the start leaps from end to start.
bool IsOnWay(const CCadObject& contour, const PosRange& range) {
    return contour.IsClose() || PolyPosToDouble(range.end) > PolyPosToDouble(range.start);
}

// The length that a range takes, forward and over the start point where need be.
double LengthOf(const CCadMultiSegments& contour, const PosRange& range) {
    const double ahead = LengthTo(contour, range.end) - LengthTo(contour, range.start);
    return PolyPosToDouble(range.end) > PolyPosToDouble(range.start) ? ahead : ahead + contour.GetLength();
}

void ExpectCuts(const CCadMultiSegments& contour, const PosRange& range, double share) {
    const Cut old(GetMultiSementsByRange(&contour, range)), stretch(CutStretch(&contour, range)),
        rest(CutStretch(&contour, {range.end, range.start}));
    Expect((old == nullptr) == IsInvalidRange(&contour, range), "a valid range has a stretch");
    Expect(old || !stretch, "an invalid range has no stretch");
    if (!stretch || !IsOnWay(contour, range)) return;
    const double slack = 1e-8 * (1 + contour.GetLength()); // an end next to a joint is the joint
    const auto areNear = [=](double a, double b) { return std::abs(a - b) <= slack; };
    Expect(areNear(stretch->GetLength(), LengthOf(contour, range)), "a stretch is as long as its range");
    if (contour.GetType() == kCadPolyline)
        Expect(areNear(old->GetLength(), LengthOf(contour, range)), "a stretch of lines and arcs, too");
    ExpectLiesOn(*stretch, contour, share);
    if (!contour.IsClose() || !rest) return;
    Expect(areNear(stretch->GetLength() + rest->GetLength(), contour.GetLength()),
           "stretch and rest are the whole");
    Expect(math::D2GetDistance(stretch->GetEndPoint(), rest->GetStartPoint()) <= slack, "they join");
    Expect(math::D2GetDistance(rest->GetEndPoint(), stretch->GetStartPoint()) <= slack, "they join again");
}

template <class Contour>
void Run(Input& in) {
    const auto contour = in.Polyline<Contour>(8);
    for (int i = 0; i < 3; ++i) {
        const POLYPOS start = in.Pos(*contour);
        const PosRange range(start, in.Pos(*contour));
        const double share = in.Share();
        const int mode = in.Int(0, 4);
        const Cut rounded(GetMultiSementsByRangeRound(contour.get(), range, mode));
        Expect((rounded == nullptr) == IsInvalidRange(contour.get(), range), "a valid range can be rounded");
        if (in.IsHostile()) {
            const Cut old(GetMultiSementsByRange(contour.get(), range)),
                cut(CutStretch(contour.get(), range));
            continue;
        }
        if (rounded && contour->GetType() == kCadPolyline && IsOnWay(*contour, range))
            ExpectLiesOn(*rounded, *contour, share);
        ExpectCuts(*contour, range, share);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    in.Coin() ? Run<CCadPolyline>(in) : Run<CCadPolylineEx>(in);
    return 0;
}
