/// \file
/// Which object lies under a point, and how far away an outline is.
#pragma once

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

class CCadGroup;
class CCadObject;

/// The object of a group that is picked at a point: the one whose outline is nearest, if it lies within
/// `tolerance` (mm, ends included); among outlines within 1e-9 mm of each other the one drawn last.
/// Groups and relation groups are searched through their members and answer with the leaf that was hit; a
/// text is searched through its outline objects and answers itself. hitPoint, when given, gets the nearest
/// point of the outline. Null when nothing is hit, when the group is null and when an argument is not a
/// number. The object stays with its owner. Throws std::bad_alloc when memory is refused.
QEVDATA_API CCadObject* Hit(const CCadGroup* group, const math::DPOINT2& p, double tolerance,
                            math::DPOINT2* hitPoint = nullptr);

/// The object that is picked at a point, searched for in `root` and everything below it; root may itself be
/// the leaf that is hit. The leaf whose outline is nearest answers, if it lies within `tolerance` (mm, ends
/// included); among outlines within 1e-9 mm of each other the one drawn last. With closedOnly open objects
/// are passed over. hitPoint, when given, gets the nearest point of the outline. Null when nothing is hit,
/// when root is null and when an argument is not a number. The object stays with its owner. Throws
/// std::bad_alloc when memory is refused.
QEVDATA_API CCadObject* Hit(const CCadObject* root, const math::DPOINT2& p, double tolerance, bool closedOnly,
                            math::DPOINT2* hitPoint = nullptr);

/// Distance from a point to an object's outline in mm, and the nearest point on it; containers and texts are
/// measured through their members. Infinity and math::NoPoint() for an object without an outline and for
/// null. Throws std::bad_alloc when memory is refused.
QEVDATA_API double GetMinDistance(const CCadObject* object, const math::DPOINT2& p, math::DPOINT2& nearest);

} // namespace qev
