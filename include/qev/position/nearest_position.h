/// \file
/// Picking: which object of a group lies at a point, and the position on it.
#pragma once

#include <list>

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

class CCadGroup;
class CCadObject;
class CGroupIndex;
struct Picked;

/// What a pick answers.
struct PosInfo {
    const CCadObject* pObject = nullptr; ///< the object that was hit; stays with its owner
    int nTag = 0;                        ///< the object's id
    int nIndex = 0;                      ///< segment index, 0 on single-piece objects
    double dRatio = 0;                   ///< position within the segment, 0 its start and 1 its end
};

/// Finds the object of a group that is picked at a point and the position on it that is nearest to the point.
/// Groups and relation groups are searched through their members. The calculator keeps the group's address
/// only, so that the group has to outlive it. Nothing is written when nothing is found.
class QEVCOMMON_API CPosCalculator {
public:
    /// Takes the objects to search, the point (it is copied; null keeps the one before), and how far from the
    /// point in mm an object may lie to be picked.
    void Init(const CCadGroup* group, const math::DPOINT2* point, double tolerance);
    /// Takes an index over the objects to search, which answers what its group would and has to outlive the
    /// calculator; the point (it is copied; null keeps the one before), and how far from the point in mm an
    /// object may lie to be picked.
    void Init(const CGroupIndex& index, const math::DPOINT2* point, double tolerance);

    /// Picks among all objects, or among closed ones only, as Hit does, and writes the object and the nearest
    /// position on it. True when an object was hit; with one of a kind without positions the tag, index and
    /// ratio stay as they were, with a contour without segments the index is -1. False for null. Throws
    /// std::bad_alloc when memory is refused.
    bool CalculatePosition(PosInfo* info, bool bClosedOnly);

    /// Distance in mm from p to the line (|bulge| below 1e-9) or arc from a to b. Lines are measured by
    /// Heron's rule, which is off by up to about 1.5e-8 of the longest of the three distances between p, a
    /// and b.
    static double GetMinDistance(const math::DPOINT2& p, const math::DPOINT2& a, const math::DPOINT2& b,
                                 const double& bulge);
    /// The ratio in [0, 1] of the foot of the perpendicular from p on the line (|bulge| below 1e-9) or arc
    /// from a to b. Beyond a line's ends, and beside an arc's sweep as seen from its centre, the ratio of the
    /// nearer end. A line shorter than 3.2e-5 mm gives 0, but 1 for its end.
    static double GetPerpendicularFootRatio(const math::DPOINT2& p, const math::DPOINT2& a,
                                            const math::DPOINT2& b, const double& bulge);
    /// The length from the start of a contour of lines and arcs to a point on it (within 1e-6 mm), as a
    /// fraction of the whole length; 1 when no segment holds the point, 0 when all segments have no length,
    /// not a number for a contour without segments and for null. The contour is only read.
    static double GetPtInMultiRatio(const math::DPOINT2& p, CCadObject* contour);

protected:
    /// Writes tag, index and ratio of the calculator's point on an object, and null as the object that was
    /// hit. True for every kind, also for one without positions, for which nothing is written; false for
    /// null, and with the flag for an open object. A contour without segments gives the index -1.
    bool _RetrieveNearestPos(const CCadObject* object, PosInfo* info, bool bClosedOnly) const;

    /// Collects the objects below a group, flattened in drawing order, into a group that must not delete
    /// them: its children have to be picked off again. Nothing for null. Throws std::bad_alloc when memory is
    /// refused.
    static void _SelectObject(const CCadGroup* group, CCadGroup* into);
    /// Collects the objects of a list and those below its groups, flattened in drawing order, into a group
    /// that must not delete them: its children have to be picked off again. Nothing for null. Throws
    /// std::bad_alloc when memory is refused.
    static void _SelectObject(const std::list<CCadObject*>* objects, CCadGroup* into);
    /// Collects the closed objects below a group, flattened in drawing order, into a group that must not
    /// delete them: its children have to be picked off again. Nothing for null. Throws std::bad_alloc when
    /// memory is refused.
    static void _SelectClosedObject(const CCadGroup* group, CCadGroup* into);
    /// Collects the closed objects of a list and those below its groups, flattened in drawing order, into a
    /// group that must not delete them: its children have to be picked off again. Nothing for null. Throws
    /// std::bad_alloc when memory is refused.
    static void _SelectClosedObject(const std::list<CCadObject*>* objects, CCadGroup* into);

    // The handlers of the kinds. Hosts call them by these names; each serves an object of any kind, because
    // the kind is looked at in one place only.

    /// Writes tag, index and ratio of the calculator's point on a line, or on an object of any other kind
    /// with positions. Nothing is written for null and for kinds without positions.
    void _Line(const CCadObject* object, PosInfo* info) const;
    /// Writes tag, index and ratio of the calculator's point on an arc, or on an object of any other kind
    /// with positions. Nothing is written for null and for kinds without positions.
    void _Arc(const CCadObject* object, PosInfo* info) const;
    /// Writes tag, index and ratio of the calculator's point on a circle, or on an object of any other kind
    /// with positions. Nothing is written for null and for kinds without positions.
    void _Circle(const CCadObject* object, PosInfo* info) const;
    /// Writes tag, index and ratio of the calculator's point on an ellipse, or on an object of any other kind
    /// with positions. Nothing is written for null and for kinds without positions.
    void _Ellipse(const CCadObject* object, PosInfo* info) const;
    /// Writes tag, index and ratio of the calculator's point on an elliptic arc, or on an object of any other
    /// kind with positions. Nothing is written for null and for kinds without positions.
    void _EllipseArc(const CCadObject* object, PosInfo* info) const;
    /// Writes tag, index and ratio of the calculator's point on a segment contour, or on an object of any
    /// other kind with positions. Nothing is written for null and for kinds without positions.
    void _MultiSegments(const CCadObject* object, PosInfo* info) const;

private:
    bool Retrieve(const CCadObject* object, const Picked* hit, PosInfo* info, bool closedOnly) const;

    const CCadGroup* m_pGroup = nullptr;
    const CGroupIndex* m_pIndex = nullptr; // searched in place of the group where it is set
    math::DPOINT2 m_ptPoint;
    double m_dTolerance = 0;
};

} // namespace qev
