/// \file
/// Circular arcs in bulge form and in centre form.
///
/// A bulge b stands for the included angle 4*atan(b): positive runs counter-clockwise, 0 is straight, and
/// |b| above 1 is more than a half turn. All of the bulge form is computed from the chord, never from the
/// centre, so that nearly straight arcs, whose centre is far away, lose nothing.
#pragma once

#include <optional>

#include <qevmath/bounds.h>
#include <qevmath/point.h>

namespace math {

/// An arc (or, with a bulge below kZeroBulge, the straight line) from start to end.
struct BulgeArc {
    DPOINT2 start;    ///< mm; where the arc is entered
    DPOINT2 end;      ///< mm; where it is left
    double bulge = 0; ///< tangent of a quarter of the included angle; positive runs counter-clockwise

    /// Whether |bulge| is below kZeroBulge. False for a bulge that is not a number.
    QEVMATH_API bool IsStraight() const;
    /// The point at a fraction of the length; exactly the ends at 0 and 1. Ratios outside go on round the
    /// circle (or along the line). An arc whose ends are equal is that one point at every ratio.
    QEVMATH_API DPOINT2 PointAt(double ratio) const;
    /// Length in mm; 0 when start equals end.
    QEVMATH_API double GetLength() const;
    /// Signed curvature in 1/mm, positive counter-clockwise; 0 for a line and for a zero chord.
    QEVMATH_API double GetCurvature() const;
    /// Direction of travel at a ratio, a unit vector; (0, 0) for a zero chord.
    QEVMATH_API DPOINT2 DirectionAt(double ratio) const;
    /// The ratio in [0, 1] of the point of the arc that is nearest to p: the fraction of the sweep (of the
    /// length of a line) at which the foot of p lies. Exactly 0 for the start and 1 for the end; points
    /// before the start and behind the end are at that end. Off by a few units in the last place of 1, for
    /// bulges from 1e-9 to 1e9. Never NaN: 0 where the ends are equal and where a number is none.
    QEVMATH_API double GetFootRatio(const DPOINT2& p) const;
    /// Whether p lies within `distance` (mm, 0 or more) of the arc, its ends included. The rounding of the
    /// arc's own points is allowed for (2e-15 of the arc's length and of p's coordinates): so every point
    /// that PointAt answers for a ratio in [0, 1] lies within any distance, for bulges from 1e-9 to 1e9.
    /// False for numbers that are none, and for a point so far out that its distance is not finite.
    QEVMATH_API bool IsWithin(const DPOINT2& p, double distance) const;
    /// The exact bounding box.
    QEVMATH_API Bounds GetBounds() const;
    /// Area between the chord and the arc in mm^2, signed by the bulge; 0 for a line.
    QEVMATH_API double GetChordArea() const;
};

/// An arc in centre form: what drawing files, dialogs and rotations need, and what a bulge does not show.
struct CentreArc {
    DPOINT2 centre;        ///< mm; the centre of the circle
    double radius = 0;     ///< mm; above 0
    double startAngle = 0; ///< radians in [0, 2*pi); where the arc is entered, seen from the centre
    double sweep = 0;      ///< radians in [-2*pi, 2*pi]; the angle travelled, positive counter-clockwise
};

/// The centre form of the arc from start to end. None for a chord below kZeroLength (1e-9 mm), for an
/// included angle 4*atan(bulge) below kZeroAngle (1e-9 radians), and for numbers that are none. An infinite
/// bulge gives an infinite centre and radius.
QEVMATH_API std::optional<CentreArc> SolveCentreArc(const DPOINT2& start, const DPOINT2& end, double bulge);

/// Solves the arc from start to end for its centre, its radius in mm, its start angle in [0, 2*pi) and its
/// signed sweep 4*atan(bulge), both in radians. False with all outputs zeroed for a chord below kZeroLength
/// (1e-9 mm), an included angle below kZeroAngle (1e-9 radians) and for numbers that are none. An infinite
/// bulge gives an infinite centre and radius. New code calls SolveCentreArc.
QEVMATH_API bool SolveArc(const DPOINT2& start, const DPOINT2& end, double bulge, DPOINT2& centre,
                          double& radius, double& startAngle, double& sweep);

/// Whether p lies within kOnCurve (1e-6 mm) of an arc, its ends included. For arcs that are given by their
/// centre: a bulge is asked by BulgeArc::IsWithin, which a far centre does not blur. The arc travels
/// `centralAngle` (0 or more; from 2*pi on it is the whole circle) from startAngle in the direction that the
/// flag names.
QEVMATH_API bool IsPointInArc(const DPOINT2& p, const DPOINT2& centre, double radius, double startAngle,
                              double centralAngle, bool counterClockwise);

} // namespace math
