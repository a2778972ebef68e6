/// \file
/// Elementary functions that answer the same bits on every system; the libraries use them in place of the C
/// library's, which differ in the last digit from one system to the next. Angles are radians.
///
/// Each result is less than one unit in the last place from the exact value, for arguments of any size, at a
/// cost that does not grow with them. Arguments without an answer (NaN, infinite angles, |x| > 1 for Asin and
/// Acos) give NaN. The odd functions keep the sign of zero.
#pragma once

#include <qev/export.h>

namespace math {

/// The sine and the cosine of one angle.
struct SineCosine {
    double sin; ///< in [-1, 1], or NaN
    double cos; ///< in [-1, 1], or NaN
};

/// The sine, in [-1, 1], of an angle in radians; NaN for an infinite one.
QEVMATH_API double Sin(double angle);
/// The cosine, in [-1, 1], of an angle in radians; NaN for an infinite one.
QEVMATH_API double Cos(double angle);
/// The tangent of an angle in radians: finite for every finite angle, since no double is an odd multiple of
/// pi/2, and NaN for an infinite one.
QEVMATH_API double Tan(double angle);
/// Sine and cosine of an angle in radians at little more than the cost of one, with the bits that Sin and Cos
/// answer.
QEVMATH_API SineCosine SinCos(double angle);

/// The angle in [-pi/2, pi/2], in radians, whose sine is x; NaN for |x| > 1.
QEVMATH_API double Asin(double x);
/// The angle in [0, pi], in radians, whose cosine is x; NaN for |x| > 1.
QEVMATH_API double Acos(double x);
/// The angle in [-pi/2, pi/2], in radians, whose tangent is x; infinite arguments reach the ends.
QEVMATH_API double Atan(double x);
/// Polar angle of (x, y) in [-pi, pi], in radians, with the sign of y; zeros and infinities as in the C
/// standard, NaN when either is.
QEVMATH_API double Atan2(double y, double x);

/// The real cube root, of negative numbers too.
QEVMATH_API double Cbrt(double x);

} // namespace math
