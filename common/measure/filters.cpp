// Collecting objects out of selections: one walk over the tree, told what to descend into and which leaves to
// take. What the functions differ in stands side by side in their few lines; a group that is not descended
// into is a leaf itself. The walk needs no recursion and passes over a group met inside itself, so that any
// nesting ends.

#include <algorithm>

#include <qev/measure/filters.h>
#include <qevdata/tree_walk.h>

#include "../kinds/cad_kinds.h"

namespace qev {
namespace {

// Appends the leaves that pass. They are gathered in a list of their own first, so that the output may be the
// list that is being walked; the nodes are then handed over, which cannot fail half-way.
template <class Root, class Passes>
void AppendLeaves(const Root* root, TreeWalk::MembersOf membersOf, std::list<CCadObject*>* out,
                  const Passes& passes) {
    if (!out) return;
    std::list<CCadObject*> found;
    TreeWalk walk(root, membersOf);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf && passes(*walk.Object())) found.push_back(walk.Object());
    out->splice(out->end(), found);
}

const std::list<CCadObject*>* NoMembers(const CCadObject&) {
    return nullptr;
}

} // namespace

void RemoveCadByType(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out, int mask) {
    if (mask & kCadGroup) {
        AppendLeaves(selection, NoMembers, out,
                     [](const CCadObject& object) { return !IsPlainGroup(object); });
    } else {
        AppendLeaves(selection, GroupMembers, out,
                     [mask](const CCadObject& leaf) { return (mask & leaf.GetType()) == 0; });
    }
}

void RemoveCadByType(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out,
                     const std::list<cad_t>& kinds) {
    const auto isListed = [&](cad_t code) {
        return std::find(kinds.begin(), kinds.end(), code) != kinds.end();
    };
    const bool dropGroups = isListed(kCadGroup);
    AppendLeaves(selection, dropGroups ? NoMembers : GroupMembers, out,
                 [&](const CCadObject& leaf) { return !isListed(leaf.GetType()) && !IsPlainGroup(leaf); });
}

void CollectCloseCad(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out) {
    AppendLeaves(selection, GroupAndTextMembers, out, [](const CCadObject& leaf) { return leaf.IsClose(); });
}

void CollectLeafNode(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out) {
    AppendLeaves(selection, GroupMembers, out, [](const CCadObject& leaf) {
        const cad_t code = leaf.GetType();
        return code != kCadText && code != kCadDot && code != kCad1300;
    });
}

void CollectObject(CCadObject* object, CCadGroup* group) {
    if (group)
        AppendLeaves(object, GroupMembers, &group->GetObjectsList(), [](const CCadObject&) { return true; });
}

} // namespace qev
