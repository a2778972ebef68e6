// A stack of list positions takes the place of recursion, so that the depth of a drawing is bounded by memory
// alone. A container is passed over while it is open, that is, while it stands on the stack: this ends
// cycles, and it lets a container that two others share be walked twice, once in each. To remember everything
// that was visited would need memory for every object and would lose the second visit.
//
// That alone would follow every path through containers that hold one another, n! of them among n. So those
// in a round (a strongly connected part) are remembered once they are walked, until the one by which the walk
// came into the round is left: each is walked once for it, in n^2 steps. This is R. E. Tarjan's search
// (1972): containers are numbered as they are entered, and each level keeps the lowest number of an open or
// remembered container that was met below it. One that leads back below its own number is in a round with
// what stands above it; one that does not is the entrance of its round, which ends with it.
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

constexpr std::size_t kNew = static_cast<std::size_t>(-1); // no container's number

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
        if (const std::size_t number = NumberOf(m_pObject); number != kNew) {
            m_vecLevels.back().lowest = std::min(m_vecLevels.back().lowest, number);
            continue;
        }
        Push(m_pObject, *members);
        return Step::kEnter;
    }
    return Step::kEnd;
}

TreeWalk::Step TreeWalk::Leave() {
    const Level left = m_vecLevels.back();
    m_pObject = left.container;
    if (m_vecLevels.size() > kShallowLevels) m_pDeep->erase(m_pObject);
    m_vecLevels.pop_back();
    if (left.lowest < left.number)
        Remember(left);
    else if (m_pRounds)
        Forget(left.number);
    return m_pObject ? Step::kLeave : Step::kEnd;
}

void TreeWalk::Remember(const Level& left) {
    m_vecLevels.back().lowest = std::min(m_vecLevels.back().lowest, left.lowest);
    if (!m_pRounds) m_pRounds = std::make_unique<Rounds>();
    m_pRounds->walked.push_back(left.container);
    m_pRounds->numbers.emplace(left.container, left.number);
}

void TreeWalk::Forget(std::size_t above) {
    std::vector<const CCadObject*>& walked = m_pRounds->walked;
    while (!walked.empty() && m_pRounds->numbers.at(walked.back()) > above) {
        m_pRounds->numbers.erase(walked.back());
        walked.pop_back();
    }
}

void TreeWalk::Push(CCadObject* container, const std::list<CCadObject*>& members) {
    const std::size_t number = m_nEntered++;
    m_vecLevels.push_back({container, members.begin(), members.end(), number, number});
    if (m_vecLevels.size() <= kShallowLevels) return;
    if (!m_pDeep) m_pDeep = std::make_unique<std::unordered_map<const CCadObject*, std::size_t>>();
    m_pDeep->emplace(container, number);
}

// The number of a container that is open or remembered; kNew for any other.
std::size_t TreeWalk::NumberOf(const CCadObject* container) const {
    const auto shallowEnd = m_vecLevels.begin() + std::min(m_vecLevels.size(), kShallowLevels);
    const auto open = std::find_if(m_vecLevels.begin(), shallowEnd,
                                   [&](const Level& level) { return level.container == container; });
    if (open != shallowEnd) return open->number;
    const auto find = [&](const auto& numbers) {
        const auto found = numbers.find(container);
        return found == numbers.end() ? kNew : found->second;
    };
    const std::size_t deep = m_pDeep ? find(*m_pDeep) : kNew;
    return deep == kNew && m_pRounds ? find(m_pRounds->numbers) : deep;
}

} // namespace qev
