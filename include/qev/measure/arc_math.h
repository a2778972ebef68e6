/// \file
/// Arcs between their bulge form and their centre form, and angles between vectors. Radians, mm.
#pragma once

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

/// The centre form of the arc from start to end with a bulge (tangent of a quarter of the included angle,
/// positive counter-clockwise): centre and radius in mm, angles in radians. The end angle is the start angle
/// + 4*atan(bulge): below the start angle, and possibly negative, for a clockwise arc; above 2*pi both angles
/// are reduced by 2*pi. A chord below 1e-9 mm gives the start as centre and zeros. False, with nothing
/// written, when the included angle is below 1e-9 radians or nearly a whole turn.
QEVCOMMON_API bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, double bulge,
                                math::DPOINT2& centre, double& radius, double& startAngle, double& endAngle);
/// The centre of a bulge arc in mm and whether it runs clockwise. A chord below 1e-9 mm gives the start as
/// centre and counts as clockwise. False, with nothing written, when the included angle is below 1e-9 radians
/// or nearly a whole turn.
QEVCOMMON_API bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, double bulge,
                                math::DPOINT2& centre, bool& clockwise);
/// The bulge of the arc from start to end round a centre, in the direction that the flag names; 0 when both
/// lie in the same direction from the centre, not a number when one of them is the centre. Always true.
QEVCOMMON_API bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end,
                                const math::DPOINT2& centre, bool clockwise, double& bulge);
/// The centre form of a bulge arc: centre and radius in mm, start angle in [0, 2*pi] and end angle, the start
/// angle + 4*atan(bulge), in radians; neither is reduced by whole turns. A chord below 1e-9 mm gives the
/// start as centre and zeros. Null outputs are skipped; all stay as they were when the included angle is
/// below 1e-9 radians or nearly a whole turn.
QEVCOMMON_API void RetrieveArcInf(const math::DPOINT2& start, const math::DPOINT2& end, const double& bulge,
                                  math::DPOINT2* centre, double* startAngle, double* endAngle,
                                  double* radius);

/// Polar angle of a vector in radians, in [0, 2*pi]; 0 for the zero vector and for what is no number. A y
/// from -1e-9 up counts as the upper half plane, so that a vector along +x with a smaller y gives 2*pi.
QEVCOMMON_API double ComputeAngle(double dx, double dy);
/// Unsigned angle between two vectors in radians, in [0, pi]; right to about 1e-8 near 0 and pi. Not a number
/// for a zero vector.
QEVCOMMON_API double GetAngle(const math::DPOINT2& u, const math::DPOINT2& v);
/// Angle from u to v in radians, in [-pi, pi]: positive when v lies to the left of u, and for opposite
/// vectors. Not a number for a zero vector.
QEVCOMMON_API double GetAngleDir(const math::DPOINT2& u, const math::DPOINT2& v);

} // namespace qev
