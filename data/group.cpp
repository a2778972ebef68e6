// Groups own what they hold, to any depth: a chain of a hundred thousand nested groups is deleted, cloned and
// measured with a list of what is still to do in place of recursion, which would exhaust the stack.
#include <iterator>
#include <typeinfo>
#include <vector>

#include <qevdata/adobe.h>
#include <qevdata/group.h>
#include <qevdata/tree_walk.h>

#include "bounds_of.h"

namespace qev {

CCadGroup::CCadGroup(bool newId) : CCadObject(newId) {}

// Nested containers are emptied before they are deleted, so that no depth of nesting exhausts the stack.
CCadGroup::~CCadGroup() {
    std::list<CCadObject*> doomed;
    doomed.swap(m_listObjects);
    while (!doomed.empty()) {
        CCadObject* object = doomed.front();
        doomed.pop_front();
        if (object == this) continue;
        if (auto* group = dynamic_cast<CCadGroup*>(object))
            doomed.splice(doomed.begin(), group->m_listObjects);
        else if (auto* text = dynamic_cast<CCadText*>(object))
            doomed.splice(doomed.begin(), text->m_group.m_listObjects);
        delete object;
    }
}

void CCadGroup::PushBack(CCadObject* object) {
    if (object) m_listObjects.push_back(object);
}

void CCadGroup::Insert(CCadObject* object, int index) {
    if (!object) return;
    const bool inside = index >= 0 && index < GetNumOfChild();
    m_listObjects.insert(inside ? std::next(m_listObjects.begin(), index) : m_listObjects.end(), object);
}

void CCadGroup::PopBack() {
    if (!m_listObjects.empty()) m_listObjects.pop_back();
}

CadRect CCadGroup::GetBoundRect() const {
    return ToRect(BoundsOf(m_listObjects));
}

CCadObject* CCadGroup::Clone(bool newId) const {
    auto* clone = new CCadGroup(*this);
    clone->CloneMembers(*this, newId);
    return Cloned(clone, newId);
}

// Plain groups are rebuilt level by level, without recursion; everything else clones itself.
void CCadGroup::CloneMembers(const CCadGroup& source, bool newId) {
    const auto membersOfPlainGroup = [](const CCadObject& object) {
        return typeid(object) == typeid(CCadGroup) ? object.GetMembers() : nullptr;
    };
    std::vector<CCadGroup*> open{this};
    TreeWalk walk(&source.m_listObjects, membersOfPlainGroup);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next()) {
        if (step == TreeWalk::Step::kLeave) {
            open.pop_back();
        } else if (step == TreeWalk::Step::kLeaf) {
            open.back()->PushBack(walk.Object()->Clone(newId));
        } else {
            auto* group = new CCadGroup(static_cast<const CCadGroup&>(*walk.Object()));
            open.back()->PushBack(Cloned(group, newId));
            open.push_back(group);
        }
    }
}

CCadRelationGroup::CCadRelationGroup(bool newId) : CCadObject(newId) {}

CadRect CCadRelationGroup::GetBoundRect() const {
    return ToRect(BoundsOf(m_listPaths));
}

CCadObject* CCadRelationGroup::Clone(bool newId) const {
    return Cloned(new CCadRelationGroup(*this), newId);
}

CCadText::CCadText(const char* text, bool newId)
    : CCadObject(newId), m_strText(text ? text : ""), m_group(false) {}

CCadObject* CCadText::Clone(bool newId) const {
    auto* clone = new CCadText(*this);
    clone->m_group.CloneMembers(m_group, newId);
    return Cloned(clone, newId);
}

Adobe::Adobe(int kind) : m_nKind(kind) {}

Adobe::~Adobe() = default;

} // namespace qev
