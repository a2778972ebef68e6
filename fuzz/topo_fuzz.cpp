// A polyline regrouped: the groups have its nodes, their lengths add up to its own, their points lie on it,
// turned twice they are as before, and a copy goes its own way.
#include "input.h"

namespace {

using namespace fuzz;
using Topo = qev::CTopoMultiPolyline;

// A contour with runs of lines on one carrier, of gentle turns and of arcs on one circle.
std::unique_ptr<qev::CCadPolyline> Runs(Input& in) {
    auto contour = in.Polyline<qev::CCadPolyline>(4);
    while (!in.IsEmpty() && contour->GetNodeCount() < 60) {
        const DPOINT2 end = contour->GetEndPoint(), step{in.Number(20), in.Number(2)};
        const double turn = in.Number(0.3);
        const bool isArc = in.Int(0, 3) == 0, isCurve = in.Coin();
        for (int i = in.Int(1, 5), k = 1; k <= i; ++k) {
            const DPOINT2 to =
                isArc || isCurve ? math::Rotated(step * (k * 1.0), k * turn) : step * (k * 1.0);
            isArc ? contour->AddArc(end + to, turn) : contour->AddLine(end + to);
        }
    }
    if (in.Coin()) contour->AddLine(contour->GetStartPoint());
    return contour;
}

bool AreEqual(const Topo& a, const Topo& b) {
    bool equal = a.GetNodeCount() == b.GetNodeCount();
    for (int i = 0; equal && i < a.GetNodeCount(); ++i) {
        equal = a.GetAt(i)->nKind == b.GetAt(i)->nKind
                && a.GetAt(i)->vecNodes.size() == b.GetAt(i)->vecNodes.size();
        for (const double ratio : {0.0, 0.3, 1.0})
            equal = equal && math::D2GetDistance(a.GetPoint(i, ratio), b.GetPoint(i, ratio)) < 1e-8;
    }
    return equal;
}

void ExpectOn(const Topo& topo, const qev::CCadPolyline& contour) {
    double length = 0;
    for (const auto& info : topo.GetTopoInfo()) length += info.dLength;
    Expect(std::abs(length - contour.GetLength()) <= 1e-9 * (1 + length), "the lengths of the groups add up");
    DPOINT2 nearest, end = topo.GetStartPoint();
    for (int i = 0; i < topo.GetNodeCount(); ++i) {
        Expect(math::D2GetDistance(topo.GetPoint(i, 0), end) < 1e-8,
               "a group starts where the last one ends");
        for (const double ratio : {0.2, 0.5, 0.9})
            Expect(GetMinDistance(&contour, topo.GetPoint(i, ratio), nearest) < 1e-6,
                   "groups lie on the contour");
        end = topo.GetPoint(i, 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    const double angle = in.Number(4);
    const DPOINT2 centre = in.Point();
    const auto contour = Runs(in);
    const std::unique_ptr<Topo> topo(Topo::CreateTopoMultiPolyline(contour.get()));
    if (!in.IsHostile()) ExpectOn(*topo, *contour);
    Topo copy(*topo);
    copy.ReverseDir();
    copy.Rotate(centre, angle);
    const bool mirrors = copy.Mirror(centre, angle);
    Expect(mirrors == (angle >= 0 && angle < math::kPi && !math::IsNoPoint(centre)),
           "angles that are mirrored at");
    if (in.IsHostile()) return 0;
    Topo again(*topo);
    again = copy;
    if (mirrors) again.Mirror(centre, angle);
    again.Rotate(centre, -angle);
    again.ReverseDir();
    Expect(AreEqual(again, *topo), "moved and moved back is as before");
    return 0;
}
