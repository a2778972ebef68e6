/// \file
/// Containers: groups, relation groups and texts.
#pragma once

#include <list>
#include <memory>
#include <string>

#include <qevdata/cad_object.h>

namespace qev {

/// An ordered list of objects in drawing order. The group owns what it holds and deletes it with itself.
class QEVDATA_API CCadGroup : public CCadObject {
public:
    explicit CCadGroup(bool newId = true);
    ~CCadGroup() override;

    std::list<CCadObject*>& GetObjectsList() { return m_listObjects; }
    const std::list<CCadObject*>& GetObjectsList() const { return m_listObjects; }
    int GetNumOfChild() const { return static_cast<int>(m_listObjects.size()); }
    bool IsEmpty() const { return m_listObjects.empty(); }
    /// The first and the last member; null when the group is empty.
    CCadObject* GetFront() const { return IsEmpty() ? nullptr : m_listObjects.front(); }
    CCadObject* GetBack() const { return IsEmpty() ? nullptr : m_listObjects.back(); }
    /// Take ownership of an object; null is ignored. An index out of range appends.
    void PushBack(CCadObject* object);
    void Insert(CCadObject* object, int index);
    /// Give ownership back: the last member, or all of them, leave the list and are not destroyed.
    void PopBack();
    void PickOffAll() { m_listObjects.clear(); }

    cad_t GetType() const override { return kCadGroup; }
    CadRect GetBoundRect() const override;
    /// The members are cloned with the group.
    CCadObject* Clone(bool newId) const override;
    const std::list<CCadObject*>* GetMembers() const override { return &m_listObjects; }

protected:
    /// Copies everything but the members.
    CCadGroup(const CCadGroup& other) : CCadObject(other) {}

private:
    friend class CCadText; // clones the members of its group
    void CloneMembers(const CCadGroup& source, bool newId);

    std::list<CCadObject*> m_listObjects;
};

/// A list of related paths that other containers own.
class QEVDATA_API CCadRelationGroup : public CCadObject {
public:
    explicit CCadRelationGroup(bool newId = true);

    std::list<CCadObject*>& GetRelationPaths() { return m_listPaths; }
    const std::list<CCadObject*>& GetRelationPaths() const { return m_listPaths; }

    cad_t GetType() const override { return kCadRelationGroup; }
    CadRect GetBoundRect() const override;
    /// The clone refers to the same paths.
    CCadObject* Clone(bool newId) const override;
    const std::list<CCadObject*>* GetMembers() const override { return &m_listPaths; }

protected:
    CCadRelationGroup(const CCadRelationGroup&) = default;

private:
    std::list<CCadObject*> m_listPaths;
};

/// A text and the group of objects that draw its outline.
class QEVDATA_API CCadText : public CCadObject {
public:
    /// Copies the text (null is the empty one); the group starts empty.
    explicit CCadText(const char* text, bool newId = true);

    CString GetText() const { return CString(m_strText.c_str()); }
    /// The group of outline objects, owned by the text; never null.
    CCadGroup* GetTextGroup() { return &m_group; }
    const CCadGroup* GetTextGroup() const { return &m_group; }

    cad_t GetType() const override { return kCadText; }
    CadRect GetBoundRect() const override { return m_group.GetBoundRect(); }
    CCadObject* Clone(bool newId) const override;
    const std::list<CCadObject*>* GetMembers() const override { return m_group.GetMembers(); }

protected:
    CCadText(const CCadText& other) : CCadObject(other), m_strText(other.m_strText), m_group(false) {}

private:
    friend class CCadGroup; // empties the text's group before it deletes the text
    std::string m_strText;
    CCadGroup m_group;
};

} // namespace qev
