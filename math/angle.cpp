// Angles are reduced and turned by the library's own sine and cosine, so that the answers are equal to the
// bit on every system. fmod is exact, so an angle of any size keeps the digits that it has.
#include <cmath>

#include <qevmath/angle.h>
#include <qevmath/elementary.h>

#include <gp_Vec2d.hxx>

namespace math {

double RegularizeRadian(double radian) {
    double angle = std::abs(radian) < kTwoPi ? radian : std::fmod(radian, kTwoPi); // most need no call
    if (angle < 0) angle += kTwoPi;
    return angle >= kTwoPi ? 0 : angle; // the sum rounds up to 2*pi for a tiny negative angle
}

double AngleToRadian(double degrees) {
    return degrees * kPi / 180;
}

double D2GetNormalAngle(double dx, double dy) {
    return dx == 0 && dy == 0 ? 0 : RegularizeRadian(Atan2(dy, dx));
}

double D2GetNormalAngle(const DPOINT2& vector) {
    return D2GetNormalAngle(vector.x, vector.y);
}

double D2CrossMultiply(const gp_Vec2d& u, const gp_Vec2d& v) {
    return u.Crossed(v);
}

double D2GetIncludeAngle(const gp_Vec2d& u, const gp_Vec2d& v) {
    return Atan2(std::abs(u.Crossed(v)), u.Dot(v)); // precise near 0 and pi, where the cosine is flat
}

DPOINT2 Rotated(const DPOINT2& v, double angle) {
    const auto [s, c] = SinCos(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}

} // namespace math
