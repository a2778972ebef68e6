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
    /// An empty group, with a fresh id or with the id 0.
    explicit CCadGroup(bool newId = true);
    /// Deletes the members and what they hold, however deep they are nested, each once.
    ~CCadGroup() override;

    /// The members themselves, to be changed at will: what is put in is the group's to delete from then on,
    /// what is taken out the taker's.
    std::list<CCadObject*>& GetObjectsList() { return m_listObjects; }
    /// The members of a constant group in drawing order.
    const std::list<CCadObject*>& GetObjectsList() const { return m_listObjects; }
    /// Number of direct members; what nested groups hold does not count.
    int GetNumOfChild() const { return static_cast<int>(m_listObjects.size()); }
    /// Whether there is no member; one that is an empty group counts.
    bool IsEmpty() const { return m_listObjects.empty(); }
    /// The first member, which stays the group's; null when the group is empty.
    CCadObject* GetFront() const { return IsEmpty() ? nullptr : m_listObjects.front(); }
    /// The last member, which stays the group's; null when the group is empty.
    CCadObject* GetBack() const { return IsEmpty() ? nullptr : m_listObjects.back(); }
    /// Takes ownership of an object and appends it; null is ignored. When memory is refused it throws
    /// std::bad_alloc, and the object stays the caller's.
    void PushBack(CCadObject* object);
    /// Takes ownership of an object and puts it in front of the member at an index; an index out of range
    /// appends, null is ignored. When memory is refused it throws std::bad_alloc, and the object stays the
    /// caller's.
    void Insert(CCadObject* object, int index);
    /// Gives the last member back: it leaves the list and is not destroyed. Nothing on an empty group.
    void PopBack();
    /// Gives all members back: they leave the list and are not destroyed.
    void PickOffAll() { m_listObjects.clear(); }

    cad_t GetType() const override { return kCadGroup; }
    CadRect GetBoundRect() const override;
    /// The members are cloned with the group. A container met inside itself is left out. Throws
    /// std::bad_alloc when memory is refused; nothing is lost then.
    CCadObject* Clone(bool newId) const override;
    const std::list<CCadObject*>* GetMembers() const override { return &m_listObjects; }

protected:
    /// Copies everything but the members.
    CCadGroup(const CCadGroup& other) : CCadObject(other) {}
    void HandOver(Doomed& doomed) override;

private:
    friend class CCadText; // clones and hands over the members of its group
    void CloneMembers(const CCadGroup& source, bool newId);

    std::list<CCadObject*> m_listObjects;
};

/// A list of related paths that other containers own.
class QEVDATA_API CCadRelationGroup : public CCadObject {
public:
    /// Without paths, with a fresh id or with the id 0.
    explicit CCadRelationGroup(bool newId = true);

    /// The list itself, to be changed at will. A path has to be taken off before its owner deletes it.
    std::list<CCadObject*>& GetRelationPaths() { return m_listPaths; }
    /// The paths of a constant relation group, which other containers own.
    const std::list<CCadObject*>& GetRelationPaths() const { return m_listPaths; }

    cad_t GetType() const override { return kCadRelationGroup; }
    CadRect GetBoundRect() const override;
    /// The clone refers to the same paths.
    CCadObject* Clone(bool newId) const override;
    const std::list<CCadObject*>* GetMembers() const override { return &m_listPaths; }

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadRelationGroup(const CCadRelationGroup&) = default;

private:
    std::list<CCadObject*> m_listPaths;
};

/// A text and the group of objects that draw its outline.
class QEVDATA_API CCadText : public CCadObject {
public:
    /// Copies the text (null is the empty one); the group starts empty. Throws std::bad_alloc when memory is
    /// refused.
    explicit CCadText(const char* text, bool newId = true);
    /// Deletes the outline objects and what they hold, however deep they are nested, each once.
    ~CCadText() override;

    /// The text that the constructor was given. Throws std::bad_alloc when memory is refused.
    CString GetText() const { return CString(m_strText.c_str()); }
    /// The group of outline objects, owned by the text; never null.
    CCadGroup* GetTextGroup() { return &m_group; }
    /// The group of outline objects of a constant text; never null.
    const CCadGroup* GetTextGroup() const { return &m_group; }

    cad_t GetType() const override { return kCadText; }
    CadRect GetBoundRect() const override { return m_group.GetBoundRect(); }
    CCadObject* Clone(bool newId) const override;
    const std::list<CCadObject*>* GetMembers() const override { return m_group.GetMembers(); }

protected:
    /// Copies everything but the outline objects.
    CCadText(const CCadText& other) : CCadObject(other), m_strText(other.m_strText), m_group(false) {}
    void HandOver(Doomed& doomed) override;

private:
    friend class CCadGroup; // clones texts among its members
    std::string m_strText;
    CCadGroup m_group;
};

} // namespace qev
