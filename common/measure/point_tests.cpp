// Points against lines, arcs and rectangles, and the angle between two directions. The tests of lines and
// arcs are those of math, on the object's own measures. A rectangle is given by its vertices alone, so that a
// point is inside when it is no farther from any side's line than the neighbouring side is long: between two
// parallel lines no distance to one of them is more than the distance of the two, and outside one is. That
// needs neither the rectangle's turn nor the direction of its vertices.

#include <cmath>

#include <qev/measure/point_tests.h>
#include <qevdata/line.h>
#include <qevdata/rectangle.h>
#include <qevdata/segment.h>
#include <qevmath/elementary.h>
#include <qevmath/qevmath.h>

#include "../kinds/tolerance.h"

namespace qev {

bool IsPointInArc(const math::DPOINT2& p, const CCadArc* arc) {
    return arc
           && math::IsPointInArc(p, arc->GetCenterPoint(), arc->GetRadius(), arc->GetStartAngle(),
                                 arc->GetCentralAngle(), arc->IsCounterClockwise());
}

bool IsPointInLine(const math::DPOINT2& p, const CCadLine* line) {
    return line && math::IsPointInLine(p, line->GetStartPoint(), line->GetEndPoint());
}

bool IsPointInRectangle(const math::DPOINT2& p, const CCadRectangle* rectangle) {
    if (!rectangle) return false;
    for (int i = 0; i < 4; ++i) {
        const math::DPOINT2 from = rectangle->GetVertex(i);
        const math::DPOINT2 to = rectangle->GetVertex((i + 1) % 4);
        const math::DPOINT2 next = rectangle->GetVertex((i + 2) % 4);
        math::DPOINT2 foot;
        math::D2GetProjectionPoint(p, from, to, foot);
        const bool isNear = math::D2GetDistance(p, foot) < math::D2GetDistance(to, next) + kSameLength;
        if (!isNear) return false; // nor is what has no distance
    }
    return true;
}

CCadArc GetCadArcFromSeg(const SEGMENT& segment) {
    const math::CentreArc arc =
        math::SolveCentreArc(segment.ptStart, segment.ptEnd, segment.dBulge).value_or(math::CentreArc{});
    return CCadArc(arc.centre, arc.radius, arc.startAngle, std::abs(arc.sweep), segment.dBulge > 0, true);
}

// The arccosine is flat near 0 and pi, where a rounding of 1e-16 turns the angle by 1e-8; the arcsine is flat
// near pi/2. Each serves where it is steep, so that the angle is right to about 1e-15 everywhere. The
// arctangent of cross and dot product is as precise; the two branches stay for the last digits that callers
// have seen.
double IntersectionAngle(const math::DPOINT2& u, const math::DPOINT2& v) {
    constexpr double kSwitch = 0.70710678118655; // sqrt(1/2) to the 14 decimals that callers have seen
    const double norms = math::Norm(u) * math::Norm(v);
    const double c = math::Dot(u, v) / norms;
    const double s = math::Cross(u, v) / norms;
    if (c > -kSwitch && c < kSwitch) return s > 0 ? math::Acos(c) : -math::Acos(c);
    if (c > 0) return math::Asin(s);
    return s > 0 ? math::kPi - math::Asin(s) : -math::kPi - math::Asin(s);
}

} // namespace qev
