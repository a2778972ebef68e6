// Distance from a point to one line or arc, and the foot of the perpendicular on it.
//
// A line's distance is the height of the triangle that the point makes with it, by Heron's rule from the
// three side lengths; where the triangle has an obtuse angle at an end, it is the distance from that end. An
// arc's is the distance from its circle where the point lies beside the sweep as seen from the centre, else
// from the nearer end. A flat arc has a centre so far away that angles about it are of no use: there the foot
// comes from the chord form (math::BulgeArc), which has no centre.
//
// Error: near a line of length L the height is the root of a difference that cancels, so that it is off by up
// to about 1.5e-8 * L. At a distance d of many times L it is off by about 2e-16 * d * d / L; that is no more
// than about 1.5e-8 * d, because a still shorter L is lost in the test for an obtuse angle, which then
// answers the nearer end. An arc's distance is right to about 1e-16 of the radius. The cross product over the
// length would be right to 1e-16 for lines and was rejected: these distances decide which of nearly equal
// segments a pick answers, and hosts have stored the answers.

#include "segment_distance.h"

#include <algorithm>
#include <cmath>

#include <qev/position/nearest_position.h>
#include <qevmath/angle.h>
#include <qevmath/arc.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::CentreArc;
using math::DPOINT2;

// As math::D2GetDistance, without a call.
double Distance(const DPOINT2& p, const DPOINT2& q) {
    return math::Norm(q - p);
}

// Whether an arc is so flat that its chord form serves it. Its radius is then 2,500 chords or more: over a
// chord of 1 m the rounding of an angle about the centre, 2e-16, moves a point by up to 1e-9 mm, which is
// kSameLength.
bool IsFlat(double bulge) {
    constexpr double kFlat = 1e-4;
    return std::abs(bulge) < kFlat;
}

// All zeros when the ends and the bulge give no arc.
CentreArc ArcBetween(const DPOINT2& a, const DPOINT2& b, double bulge) {
    return math::SolveCentreArc(a, b, bulge).value_or(CentreArc{});
}

double EndAngle(const CentreArc& arc) {
    return arc.startAngle + arc.sweep;
}

double AngleOf(const CentreArc& arc, const DPOINT2& p) {
    return math::D2GetNormalAngle(p - arc.centre);
}

// Whether an angle lies in the sweep as it is, with no whole turns added.
bool Sweeps(const CentreArc& arc, double angle) {
    return angle >= std::min(arc.startAngle, EndAngle(arc))
           && angle <= std::max(arc.startAngle, EndAngle(arc));
}

double ArcDistance(const DPOINT2& p, const CentreArc& arc, double toNearerEnd) {
    const double angle = AngleOf(arc, p);
    const bool beside =
        Sweeps(arc, angle) || Sweeps(arc, angle - math::kTwoPi) || Sweeps(arc, angle + math::kTwoPi);
    return beside ? std::abs(arc.radius - Distance(p, arc.centre)) : toNearerEnd;
}

// The height of the triangle with the sides da, db and length over the last; the shorter of the others where
// the foot lies outside of it.
double LineDistance(double da, double db, double length) {
    const double longer = std::max(da, db);
    const double shorter = std::min(da, db);
    if (!(shorter * shorter + length * length - longer * longer > 0)) return shorter;
    const double half = (da + db + length) / 2;
    const double square = (half - da) * half * (half - db) * (half - length);
    return 2 * std::sqrt(std::max(square, 0.0)) / length;
}

// For an angle outside the sweep: 1 when the arc's end is nearer to it than its start, else 0. The angle is
// brought near the arc by whole turns, first up to the start and then down to the end. The two loops follow
// each other, because a clockwise arc ends below its start: one loop with both conditions would go up and
// down for ever. Angle and sweep are at most two turns apart, so that each loop takes a few steps.
double NearerEnd(double angle, const CentreArc& arc) {
    const double end = EndAngle(arc);
    const auto toEnds = [&](double a) { return std::min(std::abs(a - arc.startAngle), std::abs(a - end)); };
    while (angle < arc.startAngle) angle += math::kTwoPi;
    while (angle > end) angle -= math::kTwoPi;
    if (angle < arc.startAngle && toEnds(angle + math::kTwoPi) < toEnds(angle)) angle += math::kTwoPi;
    return std::abs(angle - end) < std::abs(angle - arc.startAngle) ? 1 : 0;
}

// The fraction of the sweep at which the arc comes nearest to a point.
double ArcFootRatio(const DPOINT2& p, const CentreArc& arc) {
    if (std::abs(arc.sweep) < kZeroAngle) return 0;
    double angle = AngleOf(arc, p);
    if (Sweeps(arc, angle - math::kTwoPi))
        angle -= math::kTwoPi;
    else if (Sweeps(arc, angle + math::kTwoPi))
        angle += math::kTwoPi;
    return Sweeps(arc, angle) ? (angle - arc.startAngle) / arc.sweep : NearerEnd(angle, arc);
}

// The fraction of the chord at which its line comes nearest to a point, also outside of it.
double LineFootRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b) {
    constexpr double kZeroSquare = 1e-9; // mm^2: a chord below 3.2e-5 mm, which the start stands for
    const DPOINT2 chord = b - a;
    const double square = math::Dot(chord, chord);
    return square < kZeroSquare ? 0 : math::Dot(p - a, chord) / square;
}

} // namespace

double SegmentDistance(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b, double bulge,
                       const CentreArc* solved) {
    const double da = Distance(p, a);
    const double db = Distance(p, b);
    const double length = Distance(a, b);
    if (length < kZeroLength) return da;
    if (da < kZeroLength || db < kZeroLength) return 0;
    if (IsStraight(bulge)) return LineDistance(da, db, length);
    const math::BulgeArc arc{a, b, bulge};
    if (IsFlat(bulge)) return Distance(p, arc.PointAt(arc.GetFootRatio(p)));
    return ArcDistance(p, solved ? *solved : ArcBetween(a, b, bulge), std::min(da, db));
}

double SegmentFootRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b, double bulge,
                        const CentreArc* solved) {
    if (Distance(p, a) < kZeroLength) return 0;
    if (Distance(p, b) < kZeroLength) return 1;
    double ratio = 0;
    if (IsStraight(bulge))
        ratio = LineFootRatio(p, a, b);
    else if (IsFlat(bulge))
        ratio = math::BulgeArc{a, b, bulge}.GetFootRatio(p);
    else
        ratio = ArcFootRatio(p, solved ? *solved : ArcBetween(a, b, bulge));
    if (ratio >= 1) return 1;
    return ratio > 0 ? ratio : 0;
}

double CPosCalculator::GetMinDistance(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b,
                                      const double& bulge) {
    return SegmentDistance(p, a, b, bulge, nullptr);
}

double CPosCalculator::GetPerpendicularFootRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b,
                                                 const double& bulge) {
    return SegmentFootRatio(p, a, b, bulge, nullptr);
}

} // namespace qev
