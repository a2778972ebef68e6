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

// Inside means: from no side farther away than the neighbouring sides are long.
bool IsPointInRectangle(const math::DPOINT2& p, const CCadRectangle* rectangle) {
    if (!rectangle || math::IsNoPoint(p)) return false;
    for (int i = 0; i < 4; ++i) {
        const math::DPOINT2 from = rectangle->GetVertex(i);
        const math::DPOINT2 to = rectangle->GetVertex((i + 1) % 4);
        const math::DPOINT2 next = rectangle->GetVertex((i + 2) % 4);
        math::DPOINT2 foot;
        math::D2GetProjectionPoint(p, from, to, foot);
        if (math::D2GetDistance(p, foot) >= math::D2GetDistance(to, next) + kSame) return false;
    }
    return true;
}

CCadArc GetCadArcFromSeg(const SEGMENT& segment) {
    math::DPOINT2 centre;
    double radius = 0;
    double startAngle = 0;
    double sweep = 0;
    math::SolveArc(segment.ptStart, segment.ptEnd, segment.dBulge, centre, radius, startAngle, sweep);
    return CCadArc(centre, radius, startAngle, std::abs(sweep), segment.dBulge > 0, true);
}

// The arccosine is flat near 0 and pi, the arcsine near pi/2: each serves where it is steep.
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
