// Everything is computed from the chord and the bulge b, the tangent of a quarter of the included angle. The
// centre of a nearly straight arc lies far away, and a point computed from there keeps only the digits that
// the distance leaves: a bulge of 1e-9 over 100 mm has its centre 2.5e10 mm away, where coordinates are 4e-6
// mm apart. From the chord the middle of such an arc is right to the rounding of the coordinates.
//
// The half angle is 2 atan(b) and its sine 2b / (1 + b^2). Lengths, curvature and area follow from these two
// and the chord to a few units in the last place; they go over into those of a straight line as b goes to 0,
// and a bulge below kZeroBulge is one. Rejected: the centre form for strong bulges and the chord form for
// weak ones, since answers would jump where the two meet.
#include <cmath>

#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/elementary.h>
#include <qevmath/line.h>
#include <qevmath/tolerance.h>

namespace math {
namespace {

// Half the included angle, signed: the angle between the chord and the tangents at both ends.
double HalfAngle(double bulge) {
    return 2 * Atan(bulge);
}

// Its sine, 2b/(1 + b^2), in a form that neither overflows nor loses digits near a full turn.
double HalfAngleSine(double bulge) {
    return 2 / (bulge + 1 / bulge);
}

bool IsSame(const DPOINT2& p, const DPOINT2& q) {
    return p.x == q.x && p.y == q.y;
}

// x - sin(x) to full relative precision.
double MinusSine(double x) {
    const double kSeriesBelow =
        0.1; // radians: there four terms of the series are right to 1e-15 of the value
    if (std::abs(x) > kSeriesBelow) return x - Sin(x);
    const double q = x * x;
    return x * q / 6 * (1 - q / 20 * (1 - q / 42 * (1 - q / 72)));
}

} // namespace

bool BulgeArc::IsStraight() const {
    return std::abs(bulge) < kZeroBulge;
}

// The chord from the start to the point at ratio r has the length 2R sin(r*half) and is turned by (r-1)*half
// against the arc's own chord. The leg from the end is that of the reversed arc at 1 - r. Taking the nearer
// end keeps both ends exact.
DPOINT2 BulgeArc::PointAt(double ratio) const {
    if (IsSame(start, end)) return start;
    if (IsStraight()) return Interpolate(start, end, ratio);
    const double half = HalfAngle(bulge);
    const bool fromStart = ratio < 0.5;
    const double r = fromStart ? ratio : 1 - ratio;
    const double scale = Sin(r * half) / HalfAngleSine(bulge);
    const DPOINT2 leg = Rotated((end - start) * scale, (fromStart ? r - 1 : 1 - r) * half);
    return fromStart ? start + leg : end - leg;
}

double BulgeArc::GetLength() const {
    const double chord = Norm(end - start);
    return IsStraight() || chord == 0 ? chord : chord * (HalfAngle(bulge) / HalfAngleSine(bulge));
}

double BulgeArc::GetCurvature() const {
    const double chord = Norm(end - start);
    return IsStraight() || chord == 0 ? 0 : 2 * HalfAngleSine(bulge) / chord;
}

DPOINT2 BulgeArc::DirectionAt(double ratio) const {
    const double chord = Norm(end - start);
    if (chord == 0) return {};
    const DPOINT2 along = (end - start) / chord;
    return IsStraight() ? along : Rotated(along, (2 * ratio - 1) * HalfAngle(bulge));
}

// In the frame of the arc's middle (u along the chord, v to the left) the centre is (0, 1/k), so the angle
// travelled from the middle is atan2(k*u, 1 - k*v): no far centre, and k -> 0 gives the straight line. u and
// v are off by the rounding of coordinates of the arc's size, which is the same part of a radius and so of
// the angle: a few last digits.
double BulgeArc::GetFootRatio(const DPOINT2& p) const {
    if (IsSame(p, start)) return 0;
    if (IsSame(p, end)) return 1;
    if (IsStraight()) return GetLineFootRatio(p, start, end);
    const DPOINT2 along = DirectionAt(0.5);
    if (IsSame(along, {})) return 0;
    const DPOINT2 fromMiddle = p - PointAt(0.5);
    const double k = GetCurvature();
    const double angle = Atan2(k * Dot(fromMiddle, along), 1 - k * Cross(along, fromMiddle));
    const double ratio = 0.5 + angle / (2 * HalfAngle(bulge));
    if (!(ratio > 0)) return 0;
    return ratio < 1 ? ratio : 1;
}

// The foot is off along the arc by the rounding of its ratio times the length, and anywhere by that of the
// coordinates. A rounding that is itself beyond all numbers allows nothing.
bool BulgeArc::IsWithin(const DPOINT2& p, double distance) const {
    constexpr double kRounding = 2e-15; // nine units in the last place of 1; three are the most seen
    const double rounding = kRounding * (GetLength() + Norm(p));
    const double found = D2GetDistance(p, PointAt(GetFootRatio(p)));
    return found <= distance || (std::isfinite(rounding) && found <= distance + rounding);
}

// Extremes lie where the tangent, which turns from chord - half to chord + half, is parallel to an axis.
Bounds BulgeArc::GetBounds() const {
    Bounds bounds;
    bounds.Add(start);
    bounds.Add(end);
    if (IsStraight()) return bounds;
    const double half = HalfAngle(bulge);
    const double chordAngle = Atan2(end.y - start.y, end.x - start.x);
    // the turn stays within chordAngle +- pi, so these quarters cover it
    for (int quarter = -4; quarter <= 4; ++quarter) {
        const double fromMiddle = quarter * kHalfPi - chordAngle;
        if (std::abs(fromMiddle) <= std::abs(half)) bounds.Add(PointAt(0.5 + fromMiddle / (2 * half)));
    }
    return bounds;
}

// R^2 (theta - sin(theta)) / 2 with R = chord / (2 sin(theta / 2)).
double BulgeArc::GetChordArea() const {
    if (IsStraight() || IsSame(start, end)) return 0;
    const double diameter = Norm(end - start) / HalfAngleSine(bulge);
    return diameter * diameter * MinusSine(2 * HalfAngle(bulge)) / 8;
}

// The centre lies on the chord's perpendicular at chord/2 * cot(theta/2) = chord/4 * (1/b - b). The start
// angle comes from the chord's direction, which a far centre would blur.
std::optional<CentreArc> SolveCentreArc(const DPOINT2& start, const DPOINT2& end, double bulge) {
    const DPOINT2 chord = end - start;
    const double half = HalfAngle(bulge), sweep = 2 * half;
    if (!(Norm(chord) >= kZeroLength && std::abs(sweep) >= kZeroAngle)) return std::nullopt;
    CentreArc arc;
    arc.centre = (start + end) * 0.5 + LeftOf(chord) * ((1 / bulge - bulge) / 4);
    arc.radius = Norm(chord) / 2 / std::abs(HalfAngleSine(bulge));
    const double entry = Atan2(chord.y, chord.x) - half - std::copysign(kHalfPi, bulge);
    arc.startAngle = RegularizeRadian(entry);
    arc.sweep = sweep;
    return arc;
}

bool SolveArc(const DPOINT2& start, const DPOINT2& end, double bulge, DPOINT2& centre, double& radius,
              double& startAngle, double& sweep) {
    const std::optional<CentreArc> arc = SolveCentreArc(start, end, bulge);
    const CentreArc solved = arc.value_or(CentreArc{});
    centre = solved.centre;
    radius = solved.radius;
    startAngle = solved.startAngle;
    sweep = solved.sweep;
    return arc.has_value();
}

bool IsPointInArc(const DPOINT2& p, const DPOINT2& centre, double radius, double startAngle,
                  double centralAngle, bool counterClockwise) {
    const double sign = counterClockwise ? 1 : -1;
    const double travelled = RegularizeRadian(sign * (D2GetNormalAngle(p - centre) - startAngle));
    if (travelled <= centralAngle) return std::abs(D2GetDistance(p, centre) - radius) <= kOnCurve;
    const auto near = [&](double angle) {
        return D2GetDistance(p, centre + Rotated({radius, 0}, angle)) <= kOnCurve;
    };
    return near(startAngle) || near(startAngle + sign * centralAngle);
}

} // namespace math
