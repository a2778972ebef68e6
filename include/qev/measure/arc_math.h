/// \file
/// Arcs between their bulge form and their centre form, and angles between vectors. Radians, mm.
#pragma once

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

/// Centre form of a bulge arc. The end angle is the start angle + 4*atan(bulge): below the start angle, and
/// possibly negative, for a clockwise arc; above 2*pi both angles are reduced by 2*pi. A chord below 1e-9 mm
/// gives the start as centre and zeros. False, with nothing written, when the included angle is below 1e-9 or
/// nearly a whole turn.
QEVCOMMON_API bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, double bulge,
                                math::DPOINT2& centre, double& radius, double& startAngle, double& endAngle);
/// Centre and direction only; the same failures. A chord below 1e-9 mm counts as clockwise.
QEVCOMMON_API bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, double bulge,
                                math::DPOINT2& centre, bool& clockwise);
/// The bulge of the arc from start to end round a centre; 0 when both lie in the same direction. Always true.
QEVCOMMON_API bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end,
                                const math::DPOINT2& centre, bool clockwise, double& bulge);
/// The first form without the reduction by 2*pi: on failure the outputs stay. Null outputs are skipped.
QEVCOMMON_API void RetrieveArcInf(const math::DPOINT2& start, const math::DPOINT2& end, const double& bulge,
                                  math::DPOINT2* centre, double* startAngle, double* endAngle,
                                  double* radius);

/// Polar angle of a vector in [0, 2*pi]; 0 for the zero vector. A y from -1e-9 up counts as the upper half
/// plane, so that a vector along +x with a smaller y gives 2*pi.
QEVCOMMON_API double ComputeAngle(double dx, double dy);
/// Unsigned angle between two vectors in [0, pi]; not a number for a zero vector.
QEVCOMMON_API double GetAngle(const math::DPOINT2& u, const math::DPOINT2& v);
/// The same with the sign of the turn from u to v, in [-pi, pi]; positive for opposite vectors.
QEVCOMMON_API double GetAngleDir(const math::DPOINT2& u, const math::DPOINT2& v);

} // namespace qev
