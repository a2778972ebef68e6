#include <cmath>

#include <qevdata/transform.h>
#include <qevmath/angle.h>

namespace qev {

math::DPOINT2 RotatePoint(const math::DPOINT2& p, const math::DPOINT2& centre, double angle) {
    return centre + math::Rotated(p - centre, angle);
}

math::DPOINT2 GetMirrorPoint(const math::DPOINT2& p, const math::DPOINT2& onLine, double angle) {
    const math::DPOINT2 v = p - onLine;
    return onLine + math::Rotated({v.x, -v.y}, 2 * angle);
}

} // namespace qev
