// A pick goes through all leaves in drawing order and keeps the nearest. A leaf is measured only when its box
// reaches within the best distance found so far, which most do not. The distance itself is exact, piece by
// piece: a piece answers its nearest point by the foot equations of the math library, nothing is sampled.
// Rejected: an index over the whole drawing that every change of any object would have to keep up to date. A
// host that picks often makes one of its own (group_index.cpp).
#include <algorithm>
#include <limits>

#include <qevdata/group.h>
#include <qevdata/picking.h>
#include <qevdata/tree_walk.h>

#include "picked.h"

namespace qev {
namespace {

bool IsNear(const math::Bounds& box, const math::DPOINT2& p, double reach) {
    return p.x >= box.lower.x - reach && p.x <= box.upper.x + reach && p.y >= box.lower.y - reach
           && p.y <= box.upper.y + reach;
}

// Asked from the lower corner: the upper one would be a sum, which is short by more than a drawing where the
// outline reaches to -1e100 mm. A box without end is near nothing, as in an index.
bool IsNear(const CadRect& box, const math::DPOINT2& p, double reach) {
    constexpr double kRounding = 1 + 4 * std::numeric_limits<double>::epsilon(); // of the sizes and their sum
    constexpr double kEndless = std::numeric_limits<double>::infinity();
    const double x = p.x - box.x, y = p.y - box.y;
    return x >= -reach && x <= (box.width + reach) * kRounding && y >= -reach
           && y <= (box.height + reach) * kRounding && x < kEndless && y < kEndless;
}

// What SEGMENT::GetNearest answers for a line, to the bit, without a call.
math::DPOINT2 NearestOnLine(const math::DPOINT2& a, const math::DPOINT2& b, const math::DPOINT2& p) {
    const auto isSame = [](const math::DPOINT2& q, const math::DPOINT2& r) {
        return q.x == r.x && q.y == r.y;
    };
    if (isSame(a, b)) return a;
    if (isSame(p, b)) return math::Interpolate(a, b, 1);
    const math::DPOINT2 along = b - a;
    const double square = math::Dot(along, along);
    const double ratio = square > 0 ? math::Dot(p - a, along) / square : 0;
    return math::Interpolate(a, b, ratio > 0 ? std::min(ratio, 1.0) : 0);
}

// The nearest point of a piece of an outline. One with an index, which is null for the others, has one piece
// for each segment, under the same number.
math::DPOINT2 NearestOf(const CCadObject& leaf, const ContourIndex* index, int piece,
                        const math::DPOINT2& p) {
    if (index && index->HasOnlyLines())
        return NearestOnLine(index->GetJoint(piece), index->GetJoint(piece + 1), p);
    if (index) return leaf.GetSegment(piece).GetNearest(p);
    return std::visit([&](const auto& outline) { return outline.GetNearest(p); }, leaf.GetPiece(piece));
}

void Offer(const math::DPOINT2& point, const math::DPOINT2& p, Picked& best) {
    const double distance = math::Norm(point - p);
    if (!(distance < best.distance)) return;
    best.distance = distance;
    best.nearest = point;
}

// Offers the pieces of an outline in their order, so that the first of equally near ones is kept. An index
// names the few that may be the nearest, and the others need not be offered.
void OfferLeaf(const CCadObject& leaf, const math::DPOINT2& p, Picked& best) {
    const ContourIndex* index = IndexOf(leaf);
    best.hasNear = index && index->FindNear(leaf, p, best.near);
    const auto offer = [&](int i) { Offer(NearestOf(leaf, index, i, p), p, best); };
    if (!best.hasNear) {
        for (int i = 0, count = leaf.GetPieceCount(); i < count; ++i) offer(i);
    } else if (best.near.isListed) {
        for (int k = 0; k < best.near.count; ++k) offer(best.near.segments[k]);
    } else {
        index->VisitWithin(p, best.near.Reach() + best.near.margin, offer);
    }
}

} // namespace

Picked Measure(CCadObject& object, const math::DPOINT2& p, bool closedOnly) {
    Picked best;
    if (closedOnly && !object.IsClose()) return best;
    if (object.GetMembers()) {
        TreeWalk walk(&object, TreeWalk::AllMembers);
        for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
            if (step == TreeWalk::Step::kLeaf) OfferLeaf(*walk.Object(), p, best);
        best.hasNear = false;
    } else {
        OfferLeaf(object, p, best);
    }
    if (!math::IsNoPoint(best.nearest)) best.object = &object;
    return best;
}

double GetMinDistance(const CCadObject* object, const math::DPOINT2& p, math::DPOINT2& nearest) {
    const Picked best = object ? Measure(const_cast<CCadObject&>(*object), p, false) : Picked();
    nearest = best.nearest;
    return best.distance;
}

Picked Pick(const CCadObject* root, const math::DPOINT2& p, double tolerance, bool closedOnly) {
    Picked hit;
    double best = tolerance;
    double reach = ReachFor(best);
    // Nearly all objects of a drawing lie beside a pick: a polyline tells so by the box that it keeps.
    const auto isBeside = [&](const CCadObject& object) {
        const math::Bounds* const kept = ContourIndex::BoxKeptBy(object);
        return kept && !IsNear(*kept, p, reach);
    };
    TreeWalk walk(root, TreeWalk::PickedMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; walk.PassOver(isBeside), step = walk.Next()) {
        if (step != TreeWalk::Step::kLeaf || !IsNear(walk.Object()->GetBoundRect(), p, reach)) continue;
        const Picked leaf = Measure(*walk.Object(), p, closedOnly);
        if (!leaf.object || !(leaf.distance <= tolerance && (!hit.object || IsTie(best, leaf.distance))))
            continue;
        hit = leaf;
        best = std::min(best, leaf.distance);
        reach = ReachFor(best);
    }
    return hit;
}

CCadObject* Hit(const CCadGroup* group, const math::DPOINT2& p, double tolerance, math::DPOINT2* hitPoint) {
    return Hit(group, p, tolerance, false, hitPoint);
}

CCadObject* Hit(const CCadObject* root, const math::DPOINT2& p, double tolerance, bool closedOnly,
                math::DPOINT2* hitPoint) {
    const Picked hit = Pick(root, p, tolerance, closedOnly);
    if (hit.object && hitPoint) *hitPoint = hit.nearest;
    return hit.object;
}

} // namespace qev
