/// \file
/// How far a curve leaves the line or circle through the ends of a stretch. Private to the math library.
///
/// Measured by the equation of the line or circle, the stretch is a product (1 - s^2) (m + k s + ...) with s
/// from -1 at its start to 1 at its end: the ends lie on both.
#pragma once

#include <cmath>

namespace math {

/// The largest |(1 - s^2) (m + k s)| for s in [-1, 1]; 0 for m = k = 0. By symmetry m and k count as
/// positive, and then it lies where the derivative k - 2 m s - 3 k s^2 vanishes on the side of the larger
/// lobe.
inline double PeakOfLobes(double m, double k) {
    m = std::abs(m);
    k = std::abs(k);
    const double divisor = m + std::sqrt(m * m + 3 * (k * k));
    const double s = divisor > 0 ? k / divisor : 0;
    return (1 - s * s) * (m + k * s);
}

} // namespace math
