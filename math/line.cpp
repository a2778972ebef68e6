// The foot on a line is known by its ratio, a quotient of scalar products, and the point is interpolated from
// the nearer end, so that both ends are met exactly.
#include <algorithm>

#include <qevmath/line.h>
#include <qevmath/tolerance.h>

namespace math {
namespace {

// The foot's ratio on the infinite line, 0 where there is no direction.
double ProjectedRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b) {
    const DPOINT2 along = b - a;
    const double square = Dot(along, along);
    return square > 0 ? Dot(p - a, along) / square : 0;
}

} // namespace

double D2GetDistance(const DPOINT2& p, const DPOINT2& q) {
    return Norm(q - p);
}

void D2GetProjectionPoint(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b, DPOINT2& foot) {
    foot = Interpolate(a, b, ProjectedRatio(p, a, b));
}

double GetLineFootRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b) {
    const double ratio = ProjectedRatio(p, a, b);
    return ratio > 0 ? std::min(ratio, 1.0) : 0; // 0 for what is no number too
}

bool IsPointInLine(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b) {
    return D2GetDistance(p, Interpolate(a, b, GetLineFootRatio(p, a, b))) <= kOnCurve;
}

} // namespace math
