/// \file
/// What a pick finds. Not installed: for the library itself, and for the positions of the common library.
#pragma once

#include <limits>

#include <qev/export.h>
#include <qevmath/point.h>

#include "contour_index.h"

namespace qev {

class CCadObject;
class CGroupIndex;

/// The nearest point of an outline, and what was learned on the way.
struct Picked {
    CCadObject* object = nullptr;                              ///< null when there is nothing to pick
    math::DPOINT2 nearest = math::NoPoint();                   ///< the point of its outline
    double distance = std::numeric_limits<double>::infinity(); ///< mm; how far that is away
    bool hasNear = false;                                      ///< whether `near` is known
    NearSegments near;                                         ///< of the object, when it is a contour
};

/// What Hit answers for `root` and everything below it.
QEVDATA_API Picked Pick(const CCadObject* root, const math::DPOINT2& p, double tolerance, bool closedOnly);
/// What Hit answers for the group of an index.
QEVDATA_API Picked Pick(const CGroupIndex& index, const math::DPOINT2& p, double tolerance, bool closedOnly);

/// How far in mm outlines may be from each other and still count as equally far away from a point.
inline constexpr double kTie = 1e-9;

/// Whether an outline so far away counts as equally far as the nearest one, in mm. All ask by this sum: the
/// difference of the two is rounded otherwise.
inline bool IsTie(double least, double distance) {
    return distance <= least + kTie;
}

/// How far in mm from a point a box is looked into for outlines as near as a distance: beyond ties, and a
/// little for the rounding of boxes that lie far out.
inline double ReachFor(double distance) {
    constexpr double kRounding = 1e-12;
    return (distance + kTie) * (1 + kRounding);
}

/// The nearest point of an object's outline, members included. Nothing is picked where it has none, and where
/// closedOnly is set and the object is open.
Picked Measure(CCadObject& object, const math::DPOINT2& p, bool closedOnly);

} // namespace qev
