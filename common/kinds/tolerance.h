/// \file
/// The tolerances that several sources of the contour rooms share, one for each unit. Private to the library.
///
/// Positions and ranges that hosts have stored were computed with them, so that each is part of the answers:
/// changing one moves joints and merges or splits ranges of old drawings.
#pragma once

#include <cmath>

#include <qevmath/tolerance.h>

namespace qev {

// A length in mm, a bulge or an angle in radians that counts as none: what the curves themselves go by.
using math::kZeroAngle;
using math::kZeroBulge;
using math::kZeroLength;

/// A fraction of a segment. Two ratios on one segment that are nearer than this are the same place: on a
/// segment of 1 m they are 1e-6 mm apart, which no machine resolves, while a ratio is rounded to 1e-16.
inline constexpr double kSameRatio = 1e-9;

/// mm. Two coordinates, lengths or distances that are nearer than this are the same: coordinates of 1 m are
/// rounded to 1e-13 mm, drawings resolve 1e-6 mm.
inline constexpr double kSameLength = 1e-9;

/// Radians. Two angles that are nearer than this are the same: at a radius of 1 m they are 1e-6 mm apart.
inline constexpr double kSameAngle = 1e-9;

/// Whether two ratios are less than kSameRatio apart; false when one is not a number.
inline bool IsSameRatio(double a, double b) {
    return std::abs(a - b) < kSameRatio;
}

/// Whether two lengths or coordinates are less than kSameLength apart; false when one is not a number.
inline bool IsSameLength(double a, double b) {
    return std::abs(a - b) < kSameLength;
}

/// Whether two angles are less than kSameAngle apart, whole turns not taken off; false when one is not a
/// number.
inline bool IsSameAngle(double a, double b) {
    return std::abs(a - b) < kSameAngle;
}

/// Whether a bulge is that of a straight line; false when it is not a number.
inline bool IsStraight(double bulge) {
    return std::abs(bulge) < kZeroBulge;
}

} // namespace qev
