/// \file
/// Angles in radians.
#pragma once

#include <numbers>

#include <qevmath/point.h>

class gp_Vec2d;

namespace math {

inline constexpr double kPi = std::numbers::pi; ///< a half turn
inline constexpr double kTwoPi = 2 * kPi;       ///< a whole turn
inline constexpr double kHalfPi = kPi / 2;      ///< a quarter turn

/// The angle in [0, 2*pi) of the direction that `radian` names. NaN for NaN and infinities.
QEVMATH_API double RegularizeRadian(double radian);

/// Radians of an angle in degrees; any number of turns is kept.
QEVMATH_API double AngleToRadian(double degrees);

/// Polar angle of the vector (dx, dy) in [0, 2*pi), counter-clockwise from the x axis; 0 for (0, 0).
QEVMATH_API double D2GetNormalAngle(double dx, double dy);
/// Polar angle of a vector in [0, 2*pi), counter-clockwise from the x axis; 0 for the zero vector.
QEVMATH_API double D2GetNormalAngle(const DPOINT2& vector);

/// z of the cross product of u and v: positive when v lies counter-clockwise of u.
QEVMATH_API double D2CrossMultiply(const gp_Vec2d& u, const gp_Vec2d& v);

/// Unsigned angle between u and v in [0, pi], to the last digits near 0 and pi too; 0 when either is the zero
/// vector.
QEVMATH_API double D2GetIncludeAngle(const gp_Vec2d& u, const gp_Vec2d& v);

/// v turned counter-clockwise by an angle in radians.
QEVMATH_API DPOINT2 Rotated(const DPOINT2& v, double angle);

} // namespace math
