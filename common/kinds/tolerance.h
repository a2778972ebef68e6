/// \file
/// The tolerances of contours and geometry. Private to those families.
#pragma once

#include <cmath>

namespace qev {

/// Two ratios, coordinates (mm), bulges or cosines nearer than this are the same. It lies far below what a
/// drawing resolves and far above the rounding of a ratio; positions that hosts have stored depend on it.
inline constexpr double kSame = 1e-9;

/// Whether two values are the same within kSame.
inline bool IsSame(double a, double b) {
    return std::abs(a - b) < kSame;
}

} // namespace qev
