// Questions about whole selections. Each walks the tree of the selection without recursion; a group that is
// met inside itself is passed over. Where an answer depends on the order of the objects or on empty groups,
// that is how the functions have always answered, and the headers say so.

#include <algorithm>
#include <string_view>
#include <vector>

#include <qev/measure/selection.h>
#include <qevdata/tree_walk.h>

#include "../kinds/cad_kinds.h"

namespace qev {
namespace {

using Step = TreeWalk::Step;

// The answers of IsClose besides 0 and 1.
constexpr int kMixed = -1;
constexpr int kNothing = -2;

bool IsText(const CCadObject& object) {
    return object.GetType() == kCadText;
}

int ClosednessOfLeaf(const CCadObject& leaf) {
    return IsText(leaf) || leaf.IsClose() ? 1 : 0;
}

void Combine(int& running, int member) {
    if (running == kNothing)
        running = member;
    else if (running != member)
        running = kMixed;
}

// Whether every leaf passes; true when there is none, false for null. The first that does not ends the walk.
template <class Passes>
bool AllLeaves(const std::list<CCadObject*>* selection, const Passes& passes) {
    if (!selection) return false;
    TreeWalk walk(selection, GroupMembers);
    for (auto step = walk.Next(); step != Step::kEnd; step = walk.Next())
        if (step == Step::kLeaf && !passes(*walk.Object())) return false;
    return true;
}

int CountTexts(TreeWalk walk) {
    int count = 0;
    for (auto step = walk.Next(); step != Step::kEnd; step = walk.Next())
        if (step == Step::kLeaf && IsText(*walk.Object())) ++count;
    return count;
}

} // namespace

math::DPOINT2 GetCornerPoint(const std::list<CCadObject*>* selection, const char* corner) {
    if (!selection) return {0, 0};
    math::Bounds bounds;
    for (const CCadObject* object : *selection) {
        if (!object) continue;
        const CadRect box = object->GetBoundRect();
        bounds.Add(math::DPOINT2{box.x, box.y});
        bounds.Add(math::DPOINT2{box.x + box.width, box.y + box.height});
    }
    if (bounds.IsEmpty()) return {0, 0};
    const std::string_view key = corner ? corner : "";
    return {key == "TR" || key == "BR" ? bounds.upper.x : bounds.lower.x,
            key == "TL" || key == "TR" ? bounds.upper.y : bounds.lower.y};
}

int IsClose(const CCadObject* object) {
    if (!object) return 0;
    if (!IsPlainGroup(*object)) return ClosednessOfLeaf(*object);
    // One value for each group that the walk is inside of; a group's own answer goes into that of the group
    // round it.
    std::vector<int> running;
    TreeWalk walk(object, GroupMembers);
    while (true) {
        const Step step = walk.Next();
        if (step == Step::kEnter) {
            running.push_back(kNothing);
        } else if (step == Step::kLeaf) {
            Combine(running.back(), ClosednessOfLeaf(*walk.Object()));
        } else { // the group that was entered first is left last
            const int group = running.back();
            running.pop_back();
            if (running.empty()) return group;
            Combine(running.back(), group);
        }
    }
}

bool IsAllUnClosed(const std::list<CCadObject*>* selection) {
    return AllLeaves(selection, [](const CCadObject& leaf) { return ClosednessOfLeaf(leaf) == 0; });
}

bool IsAllClosed(const std::list<CCadObject*>* selection) {
    if (!selection) return false;
    TreeWalk walk(selection, GroupMembers);
    for (auto step = walk.Next(); step != Step::kEnd; step = walk.Next()) {
        if (step != Step::kLeaf) continue;
        if (IsText(*walk.Object())) return true;
        if (!walk.Object()->IsClose()) return false;
    }
    return true;
}

bool IsAllDot(const std::list<CCadObject*>* selection) {
    return AllLeaves(selection, [](const CCadObject& leaf) { return leaf.GetType() == kCadDot; });
}

bool IsAllText(const std::list<CCadObject*>* selection) {
    if (!selection || selection->empty()) return false;
    TreeWalk walk(selection, GroupMembers);
    for (auto step = walk.Next(); step != Step::kEnd; step = walk.Next()) {
        if (step == Step::kLeaf && !IsText(*walk.Object())) return false;
        if (step == Step::kEnter && walk.Object()->GetMembers()->empty()) return false;
    }
    return true;
}

bool IsCoEdgeGroup(const CCadObject* object) {
    return object && IsPlainGroup(*object) && object->GetKey("GroupType") == "1";
}

bool IsCoEdgeObject(const CCadObject* object) {
    return object && object->GetKey("CoEdge") == "true";
}

bool IsCoEdgeObject_Tube(const CCadObject* object) {
    return object && (object->GetKey("TubeTrucateCoedge") == "1" || object->GetKey("IsCoedgeEdge") == "1");
}

int GetTextCount(const CCadObject* object) {
    return CountTexts(TreeWalk(object, GroupMembers));
}

int GetTextCount(const std::list<CCadObject*>* selection) {
    return CountTexts(TreeWalk(selection, GroupMembers));
}

} // namespace qev
