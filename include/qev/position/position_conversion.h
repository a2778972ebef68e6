/// \file
/// Positions as points of the drawing, and back.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>
#include <qevmath/point.h>

namespace qev {

class CCadGroup;
class CCadObject;
class CCadPolyline;

/// mm: how far a point may lie from the object that it is picked on, where the caller does not say.
inline constexpr double kDefaultPickTolerance = 0.01;

/// The point at a position. The ratio is clamped to [0, 1]; a line does not look at the index. False, with
/// nothing written, for an index without a segment, a kind without positions, a ratio that is no number, and
/// for an ellipse that cannot be converted.
QEVCOMMON_API bool PosToCoor(const CCadObject* object, int nSegIndex, double dRatio, math::DPOINT2& point);

/// The position of a point that lies within the tolerance (mm) of an object, or of an object below a group.
/// The ratio of a line is the point's distance from the start, not projected and not clamped; a Bezier piece
/// answers the nearest of 101 samples. An object of a kind without positions gives (0, 0). False,
/// with nothing written, when the point is farther away. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API bool CoorToPos(const CCadObject* object, const math::DPOINT2& point, math::POLYPOS& pos,
                             double dTolerance);
/// The position of a point that lies within kDefaultPickTolerance (0.01 mm) of an object, or of an object
/// below a group. The ratio of a line is the point's distance from the start, not projected and not clamped;
/// a Bezier piece answers the nearest of 101 samples. An object of a kind without positions gives (0, 0).
/// False, with nothing written, when the point is farther away. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API bool CoorToPos(const CCadObject* object, const math::DPOINT2& point, math::POLYPOS& pos);
/// Appends every position of a polyline at which a point lies (within 1e-6 mm); a joint comes once, as the
/// start of its later segment. True when the list holds anything afterwards. Throws std::bad_alloc when
/// memory is refused.
QEVCOMMON_API bool CoorToPos(const CCadPolyline* polyline, const math::DPOINT2& point,
                             std::vector<math::POLYPOS>& positions);

/// The ratio of a point that lies on a given line or arc segment of a contour, within 1e-6 mm: on a line the
/// distance from the start over the length, on an arc in [0, 1]. False, with nothing written, for other
/// points, for an index without a segment, for a segment of no length, and for kinds other than the contours
/// of lines and arcs.
QEVCOMMON_API bool CoorToRatio(const CCadObject* object, const math::DPOINT2& point, int nSegIndex,
                               double& dRatio);

/// The length in mm from the start to a position. On segment contours it is added to what dLength holds:
/// callers sum over contours with it, so clear it first. Single pieces give their length times the ratio;
/// dots, plain groups and texts 0. Every other kind, the extended polyline included, answers true and leaves
/// dLength. False for null.
QEVCOMMON_API bool GetLengthStartToPos(const CCadObject* object, const math::POLYPOS& pos, double& dLength);

/// Picks the object of a group at a point and the position on it, in normal form where it can have one. False
/// when nothing lies within the tolerance (mm), and for a null or empty group. The ratio of a line is the
/// point's distance from the start, not projected and not clamped. Throws std::bad_alloc when memory is
/// refused.
QEVCOMMON_API bool FindCadAndPosByPoint(const CCadGroup* group, const math::DPOINT2& point,
                                        const CCadObject*& object, math::POLYPOS& pos, double dTolerance);

} // namespace qev
