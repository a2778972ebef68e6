// A stack of list positions takes the place of recursion, so that the depth of a drawing is bounded by memory
// alone. A container is passed over while it is open, that is, while it stands on the stack: this ends
// cycles, and it lets a container that two others share be walked twice, once in each. To remember everything
// that was visited would need memory for every object and would lose the second visit.
#include <algorithm>
#include <utility>

#include <qevdata/cad_object.h>
#include <qevdata/tree_walk.h>

#include "contour_index.h"

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
    const bool isLeaf = ContourIndex::BoxKeptBy(object) || object.GetType() == kCadText;
    return isLeaf ? nullptr : object.GetMembers();
}

TreeWalk::TreeWalk(const CCadObject* root, MembersOf membersOf)
    : m_pMembersOf(membersOf), m_pRoot(const_cast<CCadObject*>(root)) {}

TreeWalk::TreeWalk(const std::list<CCadObject*>* roots, MembersOf membersOf) : m_pMembersOf(membersOf) {
    if (roots) Push(nullptr, *roots);
}

// A leaf is never open, so that only containers are looked for among those that are.
TreeWalk::Step TreeWalk::Next() {
    while (m_pRoot || !m_vecLevels.empty()) {
        if (!m_pRoot && m_vecLevels.back().next == m_vecLevels.back().end) return Leave();
        m_pObject = m_pRoot ? std::exchange(m_pRoot, nullptr) : *m_vecLevels.back().next++;
        if (!m_pObject) continue;
        const std::list<CCadObject*>* const members = m_pMembersOf(*m_pObject);
        if (!members) return Step::kLeaf;
        if (IsOpen(m_pObject)) continue;
        Push(m_pObject, *members);
        return Step::kEnter;
    }
    return Step::kEnd;
}

TreeWalk::Step TreeWalk::Leave() {
    m_pObject = m_vecLevels.back().container;
    if (m_vecLevels.size() > kShallowLevels) m_pDeep->erase(m_pObject);
    m_vecLevels.pop_back();
    return m_pObject ? Step::kLeave : Step::kEnd;
}

void TreeWalk::Push(CCadObject* container, const std::list<CCadObject*>& members) {
    m_vecLevels.push_back({container, members.begin(), members.end()});
    if (m_vecLevels.size() <= kShallowLevels) return;
    if (!m_pDeep) m_pDeep = std::make_unique<std::unordered_set<const CCadObject*>>();
    m_pDeep->insert(container);
}

bool TreeWalk::IsOpen(const CCadObject* container) const {
    const auto shallowEnd = m_vecLevels.begin() + std::min(m_vecLevels.size(), kShallowLevels);
    return std::any_of(m_vecLevels.begin(), shallowEnd,
                       [&](const Level& level) { return level.container == container; })
           || (m_pDeep && m_pDeep->contains(container));
}

} // namespace qev
