// The joints at which a contour turns sharply, and which of them are convex.
//
// A joint is sharp when the two directions that leave it, back along the segment before and forth along the
// one after, enclose pi less the given angle or less. The angle between them has no sign: a turn to either
// side counts. Which joints are convex is told by their hull: a joint on the hull of all sharp joints turns
// with the contour as a whole, one inside it turns against it. The sign of each turn would need the contour's
// direction, which an open contour does not have.
//
// Error: the angle is right to about 1e-8 radians near 0 and pi (GetAngle).

#include <algorithm>
#include <cmath>

#include <qev/measure/arc_math.h>
#include <qev/measure/directions.h>
#include <qev/measure/hull.h>
#include <qev/measure/positions.h>
#include <qev/position/position_conversion.h>
#include <qev/position/sharp_joints.h>
#include <qevmath/angle.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"

namespace qev {
namespace {

// Whether the two directions that leave a joint enclose no more than the angle. A Bezier piece gives no
// direction, so that the angle is no number.
bool IsSharp(const SEGMENT& before, const SEGMENT& after, double angle) {
    math::DPOINT2 back;
    math::DPOINT2 forth;
    GetVector(before, after, back, forth);
    const double between = GetAngle(back, forth);
    return between < angle || IsSameAngle(between, angle);
}

void CollectJoints(const CCadObject& contour, double angle, std::vector<int>& out) {
    const int count = contour.GetSegmentCount();
    if (count < 1) return;
    const SEGMENT first = contour.GetSegment(0);
    SEGMENT before = first;
    for (int i = 1; i < count; ++i) {
        const SEGMENT after = contour.GetSegment(i);
        if (IsSharp(before, after, angle)) out.push_back(i);
        before = after;
    }
    if (contour.IsClose() && IsSharp(before, first, angle)) out.push_back(0);
}

} // namespace

void CollectPos(const CCadObject* object, double dAngleDegrees, std::vector<int>& out) {
    const double angle = math::kPi - math::AngleToRadian(dAngleDegrees);
    VisitCad(object, kSegmentContours,
             Handle{[&](const CCadCircle&) { out.push_back(0); },
                    [&](const CCadEllipse&) { out.push_back(0); },
                    [&](const Contour& contour) { CollectJoints(contour.object, angle, out); },
                    Others<CCadDot, CCadLine, CCadArc, CCadEllipseArc>()});
}

void CollectTurnDirPos(const CCadObject* object, double dAngleDegrees, std::vector<int>& joints, int nLimit,
                       std::vector<int>& second) {
    CollectPos(object, dAngleDegrees, joints);
    if (nLimit == 1 || joints.size() <= static_cast<std::size_t>(std::max(nLimit, 3))) return;
    std::vector<CConvexHelper::Point> points;
    points.reserve(joints.size());
    for (const int joint : joints) {
        math::DPOINT2 p;
        if (PosToCoor(object, joint, 0.0, p)) points.push_back({p.x, p.y, joint});
    }
    std::vector<CConvexHelper::Point> hull;
    CConvexHelper::ConvexGrahamScan(points, hull);
    second = joints;
    joints.clear();
    for (const CConvexHelper::Point& point : hull) joints.push_back(point.nTag);
    std::vector<int> onHull = joints;
    std::sort(onHull.begin(), onHull.end());
    std::erase_if(second, [&](int joint) { return std::binary_search(onHull.begin(), onHull.end(), joint); });
}

} // namespace qev
