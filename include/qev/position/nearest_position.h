/// \file
/// Picking: which object of a group lies at a point, and the position on it.
#pragma once

#include <list>

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

class CCadGroup;
class CCadObject;

/// What a pick answers.
struct PosInfo {
    const CCadObject* pObject = nullptr; ///< the object that was hit; stays with its owner
    int nTag = 0;                        ///< the object's id
    int nIndex = 0;                      ///< segment index, 0 on single-piece objects
    double dRatio = 0;                   ///< position within the segment, 0 its start and 1 its end
};

/// Finds the object of a group that is picked at a point and the position on it that is nearest to the point.
/// Groups and relation groups are searched through their members. The object keeps the group's address only.
/// Nothing throws, and nothing is written when nothing is found.
class QEVCOMMON_API CPosCalculator {
public:
    /// The objects to search, the point (copied; null keeps the one before), and the tolerance in mm of Hit.
    void Init(const CCadGroup* group, const math::DPOINT2* point, double tolerance);

    /// Picks among all objects, or among closed ones only. True when an object was hit; with one of a
    /// kind without positions the tag, index and ratio stay as they were. False for null.
    bool CalculatePosition(PosInfo* info, bool bClosedOnly);

    /// Distance from p to the line or arc (|bulge| from 1e-9 on) from a to b, by Heron's rule for lines: its
    /// error grows to about 1.5e-8 of the length near the line.
    static double GetMinDistance(const math::DPOINT2& p, const math::DPOINT2& a, const math::DPOINT2& b,
                                 const double& bulge);
    /// The ratio in [0, 1] of the foot of the perpendicular from p; beside an arc's sweep that of its nearer
    /// end.
    static double GetPerpendicularFootRatio(const math::DPOINT2& p, const math::DPOINT2& a,
                                            const math::DPOINT2& b, const double& bulge);
    /// The length from the start of a contour of lines and arcs to a point on it (within 1e-6 mm), as a
    /// fraction of the whole length; 1 when no segment holds the point, not a number without a length.
    static double GetPtInMultiRatio(const math::DPOINT2& p, CCadObject* contour);

protected:
    /// Writes tag, index and ratio of the calculator's point on an object, and no object. True for every
    /// kind, also for one without positions; false for null, and with the flag for an open object.
    bool _RetrieveNearestPos(const CCadObject* object, PosInfo* info, bool bClosedOnly) const;

    /// Collects the objects below a group, flattened in drawing order, into a group that must not delete
    /// them: its children have to be picked off again. Nothing for null.
    static void _SelectObject(const CCadGroup* group, CCadGroup* into);
    /// The same for all objects of a list.
    static void _SelectObject(const std::list<CCadObject*>* objects, CCadGroup* into);
    /// The same below a group, closed objects only.
    static void _SelectClosedObject(const CCadGroup* group, CCadGroup* into);
    /// The same for all objects of a list, closed ones only.
    static void _SelectClosedObject(const std::list<CCadObject*>* objects, CCadGroup* into);

    // The kinds one by one. Each serves whatever the object is: the kind is looked at once, in one place.

    /// _RetrieveNearestPos without the flag, its answer dropped; so for the next five.
    void _Line(const CCadObject* object, PosInfo* info) const;
    /// As _Line, under the name for arcs.
    void _Arc(const CCadObject* object, PosInfo* info) const;
    /// As _Line, under the name for circles.
    void _Circle(const CCadObject* object, PosInfo* info) const;
    /// As _Line, under the name for ellipses.
    void _Ellipse(const CCadObject* object, PosInfo* info) const;
    /// As _Line, under the name for elliptic arcs.
    void _EllipseArc(const CCadObject* object, PosInfo* info) const;
    /// As _Line, under the name for segment contours.
    void _MultiSegments(const CCadObject* object, PosInfo* info) const;

private:
    const CCadGroup* m_pGroup = nullptr;
    math::DPOINT2 m_ptPoint;
    double m_dTolerance = 0;
};

} // namespace qev
