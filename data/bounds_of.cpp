// Leaves answer boxes that are already exact; what is left to tell apart is an empty box and the box of an
// outline in the origin, both of which are all zeros.
#include "bounds_of.h"

#include <limits>

#include <qevdata/cad_object.h>
#include <qevdata/picking.h>
#include <qevdata/tree_walk.h>

namespace qev {
namespace {

// All zeros is the empty box, but also that of a dot at the origin, which has a start point, and of an
// outline there whose start is no number: a point of it can be picked.
bool HasOutline(const CCadObject& leaf, const CadRect& box) {
    math::DPOINT2 nearest;
    return box.x != 0 || box.y != 0 || box.width != 0 || box.height != 0
           || !math::IsNoPoint(leaf.GetStartPoint())
           || GetMinDistance(&leaf, {0, 0}, nearest) < std::numeric_limits<double>::infinity();
}

} // namespace

math::Bounds BoxOf(const CCadObject& leaf) {
    const CadRect box = leaf.GetBoundRect();
    math::Bounds bounds;
    if (!HasOutline(leaf, box)) return bounds;
    bounds.Add(math::DPOINT2{box.x, box.y});
    bounds.Add(math::DPOINT2{box.x + box.width, box.y + box.height});
    return bounds;
}

math::Bounds BoundsOf(const std::list<CCadObject*>& objects) {
    math::Bounds bounds;
    TreeWalk walk(&objects, TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf) bounds.Add(BoxOf(*walk.Object()));
    return bounds;
}

} // namespace qev
