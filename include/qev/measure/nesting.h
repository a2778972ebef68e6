/// \file
/// Inside and outside: on which side of a contour a point lies, which contours of a selection lie in which,
/// and how far two outlines are apart.
#pragma once

#include <list>
#include <vector>

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

class CCadObject;

/// Where a point lies beside a closed contour.
enum class PointSide {
    kOutside = -1, ///< the contour does not go round the point, or there is no closed contour
    kOn = 0,       ///< within the tolerance of the outline
    kInside = 1    ///< the contour goes round the point
};

/// On which side of a closed contour a point lies. It is inside when the contour's winding number round it is
/// not 0, whichever way the contour runs: so it is inside where a contour that crosses itself goes round
/// twice, too. Lines, arcs, elliptic arcs and Bezier pieces are taken as they are, nothing is sampled: the
/// answer is exact but for points within the rounding of the coordinates of a curve. kOn within dTolerance of
/// the outline (mm, ends included; a negative one and one that is not a number count as 0). A gap between the
/// ends of a closed contour is bridged straight. kOutside for null, for what is not closed, a group and a
/// text included, and where a coordinate is not a number or lies beyond 1e70 mm. From the second question on
/// a polyline is searched in the logarithm of its segments.
QEVCOMMON_API PointSide GetPointSide(const CCadObject* contour, const math::DPOINT2& p, double dTolerance);

/// One closed contour of a selection, and the one that it lies in.
struct ContourNesting {
    CCadObject* pContour; ///< the contour, which stays its owner's
    CCadObject* pParent;  ///< the innermost contour that it lies in; null for an outermost one
    int nDepth;           ///< how many contours it lies in, one in the other: 0 for an outermost one
};

/// Finds which closed contour of a selection lies in which, the members of plain groups included. The answer
/// lists the closed contours in drawing order; open ones, texts and other containers are left out, and what
/// stands in the selection twice comes twice. Of two contours only the one with the larger area can be the
/// outer one; of equal areas (to nine digits, so that a contour may be repeated from another start) the one
/// drawn earlier. The smaller lies in the larger when any of its points is inside, more than 1e-6 mm from the
/// outline: so one that crosses a larger contour lies in it, and one that only touches it from outside does
/// not. One that runs on the larger one's outline all along lies in it too, unless
/// it is flatter than that. The parent is the contour of the
/// least area that a contour lies in. The output is replaced; it is empty for null. Takes O(n log n) for n
/// contours, unless many lie in the hollows of others. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API void GetNesting(const std::list<CCadObject*>* selection, std::vector<ContourNesting>& nesting);

/// The least distance of two outlines in mm: 0 where they cross or touch, whichever surrounds the other.
/// Containers and texts count by all that they hold. Right to about 1e-14 of the coordinates where one of the
/// nearest pieces is a line or an arc; distances below that are 0. Between an ellipse or a Bezier piece and
/// another one it is the distance of two of their points, above the least by 2e-6 mm at most, or by 2e-9 of
/// the coordinates where that is more; distances below that are 0. Infinite without an outline: for null and
/// for a group that holds nothing. Pieces with a coordinate that is not a number or lies beyond 1e70 mm are
/// left out. From the second question on two polylines that lie apart are compared in the logarithm of their
/// segments. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API double GetClearance(const CCadObject* a, const CCadObject* b);

} // namespace qev
