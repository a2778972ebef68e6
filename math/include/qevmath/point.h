/// \file
/// The point and vector type and its arithmetic. Lengths are millimetres.
#pragma once

#include <cmath>
#include <limits>

#include <qev/export.h>

namespace math {

/// A point or a vector of the drawing plane.
struct DPOINT2 {
    double x = 0; ///< mm
    double y = 0; ///< mm
};

/// A point moved by a vector, or the sum of two vectors.
constexpr DPOINT2 operator+(const DPOINT2& p, const DPOINT2& q) {
    return {p.x + q.x, p.y + q.y};
}
/// The vector that leads from q to p.
constexpr DPOINT2 operator-(const DPOINT2& p, const DPOINT2& q) {
    return {p.x - q.x, p.y - q.y};
}
/// The vector of the opposite direction.
constexpr DPOINT2 operator-(const DPOINT2& p) {
    return {-p.x, -p.y};
}
/// The vector scaled by a factor; a negative one turns it round.
constexpr DPOINT2 operator*(const DPOINT2& p, double factor) {
    return {p.x * factor, p.y * factor};
}
/// The vector scaled by a factor that stands in front; a negative one turns it round.
constexpr DPOINT2 operator*(double factor, const DPOINT2& p) {
    return p * factor;
}
/// Divides both coordinates; by 0 they become infinite or NaN.
constexpr DPOINT2 operator/(const DPOINT2& p, double divisor) {
    return {p.x / divisor, p.y / divisor};
}

/// Scalar product in mm^2: the length of u times that of v times the cosine of the angle between them.
constexpr double Dot(const DPOINT2& u, const DPOINT2& v) {
    return u.x * v.x + u.y * v.y;
}
/// z of the cross product: positive when v lies counter-clockwise of u.
constexpr double Cross(const DPOINT2& u, const DPOINT2& v) {
    return u.x * v.y - u.y * v.x;
}
/// The vector turned by a quarter counter-clockwise.
constexpr DPOINT2 LeftOf(const DPOINT2& v) {
    return {-v.y, v.x};
}
/// Length of a vector in mm; NaN for a vector that is no number, infinite for one beyond 1e154 mm.
inline double Norm(const DPOINT2& v) {
    return std::sqrt(Dot(v, v));
}
/// The point at a fraction of the way from p to q; exactly p at 0 and exactly q at 1.
constexpr DPOINT2 Interpolate(const DPOINT2& p, const DPOINT2& q, double ratio) {
    return ratio < 0.5 ? p + (q - p) * ratio : q - (q - p) * (1 - ratio);
}

/// Distance between two points in mm; NaN when a coordinate is.
QEVMATH_API double D2GetDistance(const DPOINT2& p, const DPOINT2& q);

/// The answer where there is no point: both coordinates are a quiet NaN.
constexpr DPOINT2 NoPoint() {
    return {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()};
}
/// Whether p is no usable point: a coordinate is not a number.
inline bool IsNoPoint(const DPOINT2& p) {
    return std::isnan(p.x) || std::isnan(p.y);
}
/// Whether both coordinates are finite numbers.
inline bool IsFinite(const DPOINT2& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

} // namespace math
