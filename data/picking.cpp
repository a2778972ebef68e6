// A pick goes through all leaves in drawing order and keeps the nearest. A leaf is measured only when its box
// reaches within the best distance found so far, which most do not. The distance itself is exact, piece by
// piece: a piece answers its nearest point by the foot equations of the math library, nothing is sampled.
// Rejected: an index over the whole drawing, which every change of any object would have to keep up to date,
// to save box tests that take some nanoseconds each.
#include <algorithm>
#include <limits>

#include <qevdata/group.h>
#include <qevdata/picking.h>
#include <qevdata/tree_walk.h>

#include "contour_index.h"

namespace qev {
namespace {

constexpr double kTie = 1e-9; // mm: outlines nearer to each other than this are equally far away

bool MayReach(const CadRect& box, const math::DPOINT2& p, double reach) {
    return p.x >= box.x - reach && p.x <= box.x + box.width + reach && p.y >= box.y - reach
           && p.y <= box.y + box.height + reach;
}

struct Nearest {
    double distance = std::numeric_limits<double>::infinity();
    math::DPOINT2 point = math::NoPoint();
};

void Offer(const CCadObject& leaf, int piece, const math::DPOINT2& p, Nearest& best) {
    const math::DPOINT2 point =
        std::visit([&](const auto& outline) { return outline.GetNearest(p); }, leaf.GetPiece(piece));
    const double distance = math::D2GetDistance(p, point);
    if (distance < best.distance) best = {distance, point};
}

// Offers the pieces of an outline in their order, so that the first of equally near ones is kept.
//
// An index spares most of them. The run of segments whose box is nearest to p is measured first; the least
// distance in it is a bound, since the nearest piece of all cannot be farther. Every run whose box lies
// within that bound is then measured in order, and the nearest piece is among these: it is found as if all
// had been offered, the first of equals too. The bound is widened by the rounding of the distances, so that a
// piece that is as near as the bound, but for its last digits, is not lost. An outline with an index has one
// piece for each segment, under the same number.
void SearchPieces(const CCadObject& leaf, const math::DPOINT2& p, Nearest& best) {
    constexpr double kRounding =
        1e-12; // of a distance, relative to the coordinates: some thousand last digits
    const ContourIndex* index = IndexOf(leaf);
    if (!index || !index->IsForSearch()) {
        for (int i = 0, count = leaf.GetPieceCount(); i < count; ++i) Offer(leaf, i, p, best);
        return;
    }
    Nearest bound = best;
    index->VisitNearest(p, [&](int i) { Offer(leaf, i, p, bound); });
    const double reach = bound.distance + kRounding * index->GetExtent(p);
    index->VisitWithin(p, reach, [&](int i) { Offer(leaf, i, p, best); });
}

} // namespace

double GetMinDistance(const CCadObject* object, const math::DPOINT2& p, math::DPOINT2& nearest) {
    Nearest best;
    TreeWalk walk(object, TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf) SearchPieces(*walk.Object(), p, best);
    nearest = best.point;
    return best.distance;
}

CCadObject* Hit(const CCadGroup* group, const math::DPOINT2& p, double tolerance, math::DPOINT2* hitPoint) {
    return Hit(group, p, tolerance, false, hitPoint);
}

CCadObject* Hit(const CCadObject* root, const math::DPOINT2& p, double tolerance, bool closedOnly,
                math::DPOINT2* hitPoint) {
    CCadObject* hit = nullptr;
    math::DPOINT2 nearest = math::NoPoint(); // kept apart, as hitPoint may be p
    double best = tolerance;
    TreeWalk walk(root, TreeWalk::PickedMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next()) {
        if (step != TreeWalk::Step::kLeaf || !MayReach(walk.Object()->GetBoundRect(), p, best + kTie))
            continue;
        if (closedOnly && !walk.Object()->IsClose()) continue;
        math::DPOINT2 point;
        const double distance = GetMinDistance(walk.Object(), p, point);
        if (math::IsNoPoint(point) || !(distance <= tolerance && (!hit || distance <= best + kTie))) continue;
        hit = walk.Object();
        best = std::min(best, distance);
        nearest = point;
    }
    if (hit && hitPoint) *hitPoint = nearest;
    return hit;
}

} // namespace qev
