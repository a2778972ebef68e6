/// \file
/// An index over a group, for hosts that pick in it again and again.
#pragma once

#include <memory>
#include <vector>

#include <qev/export.h>
#include <qevdata/cad_rect.h>
#include <qevmath/point.h>

namespace qev {

class CCadGroup;
class CCadObject;
struct Picked;

/// The boxes of the objects of a group in a tree, so that a pick costs the logarithm of their number. It
/// holds the leaves that picking looks at: groups and relation groups are searched through their members, a
/// text is one object. The group and its objects have to outlive it.
///
/// It does not see changes by itself. After an object was changed call Update with it; after objects came or
/// went, or changed places, call Build. Until then a changed object is found where it was and measured where
/// it is, one that came is not found, and asking for one that was deleted is an error. Questions may be asked
/// by several threads at the same time; Build and Update must not run beside them.
class QEVDATA_API CGroupIndex {
public:
    /// Builds the index of a group; of null that of no objects. Throws std::bad_alloc when memory is refused.
    explicit CGroupIndex(const CCadGroup* group);
    ~CGroupIndex();
    CGroupIndex(const CGroupIndex&) = delete;
    CGroupIndex& operator=(const CGroupIndex&) = delete;

    /// Builds the index anew, after members came or went. Throws std::bad_alloc when memory is refused; the
    /// index is then as it was.
    void Build();
    /// Takes the new box of one leaf that was changed in place; one that is not in the index is ignored.
    /// Throws std::bad_alloc when memory is refused, which only the first call after Build asks for.
    void Update(const CCadObject* object);

    /// The object that is picked at a point, as qev::Hit on the group finds it: the one whose outline is
    /// nearest, if it lies within dTolerance (mm, ends included; infinity finds the nearest of all); among
    /// outlines within 1e-9 mm of each other the one drawn last. With bClosedOnly open objects are passed
    /// over. hitPoint, when given, gets the nearest point of the outline. Null when nothing is hit and when
    /// an argument is not a number. The object stays with its owner.
    CCadObject* Hit(const math::DPOINT2& p, double dTolerance, math::DPOINT2* hitPoint = nullptr,
                    bool bClosedOnly = false) const;
    /// Appends the objects whose box meets a box (mm, borders included), in drawing order; one that stands in
    /// the group several times comes as often. Nothing for a box that is not a number or has a negative size.
    /// Throws std::bad_alloc when memory is refused.
    void Collect(const CadRect& box, std::vector<CCadObject*>& objects) const;
    /// Number of objects in the index.
    int GetCount() const;

private:
    class Leaves;
    friend QEVDATA_API Picked Pick(const CGroupIndex& index, const math::DPOINT2& p, double tolerance,
                                   bool closedOnly);
    const CCadGroup* m_pGroup;
    std::unique_ptr<Leaves> m_pLeaves;
};

} // namespace qev
