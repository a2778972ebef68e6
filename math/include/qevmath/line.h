/// \file
/// Straight lines.
#pragma once

#include <qevmath/point.h>

namespace math {

/// Foot of the perpendicular from p onto the infinite line through a and b; a itself when a equals b.
QEVMATH_API void D2GetProjectionPoint(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b, DPOINT2& foot);

/// The ratio in [0, 1] of the point of the segment a-b that is nearest to p; 0 when a equals b and where a
/// number is none.
QEVMATH_API double GetLineFootRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b);

/// Whether p lies within kOnCurve (1e-6 mm) of the segment a-b, its ends included.
QEVMATH_API bool IsPointInLine(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b);

} // namespace math
