/// \file
/// The tolerances of the math and data layers. Changing one changes answers of the whole system.
#pragma once

namespace math {

/// mm. A point this near to a curve lies on it, and two ends this near meet. Well above the rounding of
/// drawing coordinates (1e-10 at 1e6 mm), well below what a machine can position (1e-4).
inline constexpr double kOnCurve = 1e-6;

/// mm. A chord shorter than this has no direction worth the name, so no arc is solved over it: at 1e6 mm from
/// the origin the rounding of its ends alone is a tenth of it.
inline constexpr double kZeroLength = 1e-9;

/// No unit (the tangent of an angle). An arc of a smaller bulge is a straight line: it leaves its chord by
/// less than half of 1e-9 of the length of the chord.
inline constexpr double kZeroBulge = 1e-9;

/// Radians. An arc of a smaller included angle has no centre: it would lie 1e9 chords
/// away.
inline constexpr double kZeroAngle = 1e-9;

} // namespace math
