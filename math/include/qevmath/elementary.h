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

/// In [-1, 1].
QEVMATH_API double Sin(double angle);
/// In [-1, 1].
QEVMATH_API double Cos(double angle);
/// Finite for every finite angle, since no double is an odd multiple of pi/2.
QEVMATH_API double Tan(double angle);
/// Both at once, at little more than the cost of one; the same bits as Sin and Cos.
QEVMATH_API SineCosine SinCos(double angle);

/// In [-pi/2, pi/2].
QEVMATH_API double Asin(double x);
/// In [0, pi].
QEVMATH_API double Acos(double x);
/// In [-pi/2, pi/2], which infinite arguments reach.
QEVMATH_API double Atan(double x);
/// Polar angle of (x, y) in [-pi, pi], with the sign of y; zeros and infinities as in the C standard.
QEVMATH_API double Atan2(double y, double x);

/// The real cube root, of negative numbers too.
QEVMATH_API double Cbrt(double x);

} // namespace math
