/// \file
/// The tolerances of the math and data layers. Changing one changes answers of the whole system.
#pragma once

namespace math {

/// mm. A point this near to a curve lies on it, and two ends this near meet. Well above the rounding of
/// drawing coordinates (1e-10 at 1e6 mm), well below what a machine can position (1e-4).
inline constexpr double kOnCurve = 1e-6;

/// mm. A chord shorter than this has no direction, so no arc can be solved over it.
inline constexpr double kZeroLength = 1e-9;

/// A bulge smaller than this is a straight line: the arc leaves its chord by less than 1e-9 of its length.
inline constexpr double kZeroBulge = 1e-9;

/// Radians. An included angle smaller than this is none.
inline constexpr double kZeroAngle = 1e-9;

} // namespace math
