/// \file
/// Rotation and reflection of points.
#pragma once

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

/// p turned counter-clockwise by an angle (radians) round a centre.
QEVDATA_API math::DPOINT2 RotatePoint(const math::DPOINT2& p, const math::DPOINT2& centre, double angle);

/// p reflected in the line through a point at an angle (radians) to the x axis.
QEVDATA_API math::DPOINT2 GetMirrorPoint(const math::DPOINT2& p, const math::DPOINT2& onLine, double angle);

} // namespace qev
