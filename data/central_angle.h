/// \file
/// The rule for central angles that constructors are given. Private to the data library.
#pragma once

#include <qevmath/angle.h>

namespace qev {

/// At most a whole turn; a negative angle is turned into [0, 2*pi). NaN stays NaN.
inline double CentralAngle(double angle) {
    if (angle < 0) return math::RegularizeRadian(angle);
    return angle > math::kTwoPi ? math::kTwoPi : angle;
}

} // namespace qev
