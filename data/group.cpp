// Groups own what they hold, to any depth: a hundred thousand nested groups or texts are cloned with a list
// of what is still open in place of recursion, which would exhaust the stack. (cad_object.cpp tells how they
// are deleted.) A copy is owned from the moment it is made, so that nothing is lost when memory is refused.
#include <iterator>
#include <memory>
#include <typeinfo>
#include <vector>

#include <qevdata/adobe.h>
#include <qevdata/group.h>
#include <qevdata/tree_walk.h>

#include "bounds_of.h"

namespace qev {

CCadGroup::CCadGroup(bool newId) : CCadObject(newId) {}

CCadGroup::~CCadGroup() {
    DeleteOwned();
}

void CCadGroup::HandOver(Doomed& doomed) {
    CCadObject::HandOver(doomed);
    for (CCadObject* object : m_listObjects) doomed.Add(object);
    m_listObjects.clear();
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
    std::unique_ptr<CCadGroup> clone(new CCadGroup(*this));
    clone->CloneMembers(*this, newId);
    return Cloned(clone.release(), newId);
}

// Plain groups and texts are rebuilt level by level, without recursion; everything else clones itself.
void CCadGroup::CloneMembers(const CCadGroup& source, bool newId) {
    const auto membersOfPlain = [](const CCadObject& object) {
        const bool isPlain = typeid(object) == typeid(CCadGroup) || typeid(object) == typeid(CCadText);
        return isPlain ? object.GetMembers() : nullptr;
    };
    std::vector<CCadGroup*> open{this};
    const auto append = [&](CCadObject* made) {
        std::unique_ptr<CCadObject> copy(made);
        open.back()->PushBack(made);
        static_cast<void>(copy.release());
    };
    TreeWalk walk(&source.m_listObjects, membersOfPlain);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next()) {
        const CCadObject* object = walk.Object();
        if (step == TreeWalk::Step::kLeave) {
            open.pop_back();
        } else if (step == TreeWalk::Step::kLeaf) {
            append(object->Clone(newId));
        } else if (typeid(*object) == typeid(CCadText)) {
            auto* text = new CCadText(static_cast<const CCadText&>(*object));
            append(Cloned(text, newId));
            open.push_back(&text->m_group);
        } else {
            auto* group = new CCadGroup(static_cast<const CCadGroup&>(*object));
            append(Cloned(group, newId));
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

CCadText::~CCadText() {
    DeleteOwned();
}

void CCadText::HandOver(Doomed& doomed) {
    CCadObject::HandOver(doomed);
    m_group.HandOver(doomed);
}

CCadObject* CCadText::Clone(bool newId) const {
    std::unique_ptr<CCadText> clone(new CCadText(*this));
    clone->m_group.CloneMembers(m_group, newId);
    return Cloned(clone.release(), newId);
}

Adobe::Adobe(int kind) : m_nKind(kind) {}

Adobe::~Adobe() = default;

} // namespace qev
