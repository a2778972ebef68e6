/// \file
/// The walk over a tree of objects that every search shares.
#pragma once

#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

#include <qev/export.h>

namespace qev {

class CCadObject;

/// Walks an object and everything below it, depth first in drawing order, without recursion: any depth of
/// nesting is fine. A container met inside itself is passed over, so that the walk always ends; of containers
/// that hold one another in a round each is walked once, each time that the walk comes to them from outside.
/// Null members are passed over too. The tree must not change during the walk.
class QEVDATA_API TreeWalk {
public:
    /// What the walk has come to.
    enum class Step {
        kLeaf,  ///< Object() is not descended into
        kEnter, ///< Object() is a container, its members follow
        kLeave, ///< Object() is a container whose members have all been walked
        kEnd    ///< everything has been walked
    };
    /// Answers the list to descend into, or null for an object that the walk takes as a leaf.
    using MembersOf = const std::list<CCadObject*>* (*)(const CCadObject&);

    /// Every container of the data library: groups, relation groups and texts.
    static const std::list<CCadObject*>* AllMembers(const CCadObject& object);
    /// Every container but the text, which is picked as a whole: what picking and selecting descend into.
    static const std::list<CCadObject*>* PickedMembers(const CCadObject& object);

    /// Starts at an object, which is a step itself; null is nothing to walk.
    TreeWalk(const CCadObject* root, MembersOf membersOf);
    /// Starts in a list of objects; null is the empty one. Throws std::bad_alloc when memory is refused.
    TreeWalk(const std::list<CCadObject*>* roots, MembersOf membersOf);

    /// Goes one step on. kEnd comes again and again from the end on. Throws std::bad_alloc when memory is
    /// refused.
    Step Next();
    /// Passes over the objects that follow in the list at hand, up to the first for which skip(object) is
    /// false. They are no steps, and nothing below them is: skip has to be false for what is to be descended
    /// into. Nothing before the first step.
    template <class Skip>
    void PassOver(const Skip& skip) {
        if (m_vecLevels.empty()) return;
        Level& level = m_vecLevels.back();
        while (level.next != level.end && *level.next && skip(**level.next)) ++level.next;
    }
    /// The object of the last step, without meaning before the first and after kEnd. It is handed out as the
    /// lists hold it; only the root may be constant.
    CCadObject* Object() const { return m_pObject; }

private:
    struct Level {
        CCadObject* container; // null for the list at the top
        std::list<CCadObject*>::const_iterator next;
        std::list<CCadObject*>::const_iterator end;
        std::size_t number; // of the container, in the order of entering
        std::size_t lowest; // of an open or remembered container that was met below it; else its own
    };
    // The containers of rounds that have been walked and whose entrance is still open.
    struct Rounds {
        std::vector<const CCadObject*> walked; // in the order in which they were left
        std::unordered_map<const CCadObject*, std::size_t> numbers;
    };

    Step Leave();
    void Push(CCadObject* container, const std::list<CCadObject*>& members);
    void Remember(const Level& left);
    void Forget(std::size_t above);
    std::size_t NumberOf(const CCadObject* container) const;

    MembersOf m_pMembersOf;
    CCadObject* m_pRoot = nullptr; // until it has been visited
    CCadObject* m_pObject = nullptr;
    std::vector<Level> m_vecLevels;
    std::size_t m_nEntered = 0;
    // The open containers below the shallow levels, with their numbers; null until there is one.
    std::unique_ptr<std::unordered_map<const CCadObject*, std::size_t>> m_pDeep;
    std::unique_ptr<Rounds> m_pRounds; // null until containers in a round have been met
};

} // namespace qev
