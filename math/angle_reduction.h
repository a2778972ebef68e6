/// \file
/// Angles brought into [-pi/4, pi/4]. Private to the math library.
#pragma once

namespace math {

/// angle = value + tail + quadrant * pi/2 (mod 2*pi).
struct ReducedAngle {
    double value; ///< radians, in [-pi/4, pi/4] up to rounding
    double tail;  ///< what value lacks, at most half its last bit
    int quadrant; ///< 0 to 3
};

/// For angles outside [-pi/4, pi/4]; NaN for infinities and NaN. value + tail is good to 2^-60 of itself.
ReducedAngle Reduce(double angle);

} // namespace math
