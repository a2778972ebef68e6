// A stack of list positions takes the place of recursion, so that the depth of a drawing is bounded by memory
// alone. A container is passed over while it is open, that is, while it stands on the stack: this ends
// cycles, and it lets a container that two others share be walked twice, once in each. To remember everything
// that was visited would need memory for every object and would lose the second visit.
#include <algorithm>
#include <utility>

#include <qevdata/cad_object.h>
#include <qevdata/tree_walk.h>

namespace qev {
namespace {

// Levels that are searched one by one for an open container; a hash set serves the deeper ones, which real
// drawings do not reach, so that an ordinary walk needs no memory for it.
constexpr std::size_t kShallowLevels = 32;

} // namespace

const std::list<CCadObject*>* TreeWalk::AllMembers(const CCadObject& object) {
    return object.GetMembers();
}

const std::list<CCadObject*>* TreeWalk::PickedMembers(const CCadObject& object) {
    return object.GetType() == kCadText ? nullptr : object.GetMembers();
}

TreeWalk::TreeWalk(const CCadObject* root, MembersOf membersOf)
    : m_pMembersOf(membersOf), m_pRoot(const_cast<CCadObject*>(root)) {}

TreeWalk::TreeWalk(const std::list<CCadObject*>* roots, MembersOf membersOf) : m_pMembersOf(membersOf) {
    if (roots) Push(nullptr, *roots);
}

TreeWalk::Step TreeWalk::Next() {
    if (m_pRoot) return Visit(std::exchange(m_pRoot, nullptr));
    while (!m_vecLevels.empty()) {
        Level& level = m_vecLevels.back();
        if (level.next == level.end) {
            m_pObject = level.container;
            if (m_vecLevels.size() > kShallowLevels) m_setDeep.erase(level.container);
            m_vecLevels.pop_back();
            return m_pObject ? Step::kLeave : Step::kEnd;
        }
        CCadObject* object = *level.next++;
        if (object && !IsOpen(object)) return Visit(object);
    }
    return Step::kEnd;
}

TreeWalk::Step TreeWalk::Visit(CCadObject* object) {
    m_pObject = object;
    const std::list<CCadObject*>* members = m_pMembersOf(*object);
    if (!members) return Step::kLeaf;
    Push(object, *members);
    return Step::kEnter;
}

void TreeWalk::Push(CCadObject* container, const std::list<CCadObject*>& members) {
    m_vecLevels.push_back({container, members.begin(), members.end()});
    if (m_vecLevels.size() > kShallowLevels) m_setDeep.insert(container);
}

bool TreeWalk::IsOpen(const CCadObject* container) const {
    const auto shallowEnd = m_vecLevels.begin() + std::min(m_vecLevels.size(), kShallowLevels);
    return std::any_of(m_vecLevels.begin(), shallowEnd,
                       [&](const Level& level) { return level.container == container; })
           || (!m_setDeep.empty() && m_setDeep.contains(container));
}

} // namespace qev
