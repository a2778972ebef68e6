// The centre form of a bulge arc, and angles between vectors.
//
// The included angle is 4*atan(bulge), and half the chord is the radius times the sine of half of it. The
// radius at the start makes the angle (pi - theta)/2 with the chord, so that the chord, scaled to the signed
// radius and turned by that angle, leads from the start to the centre: the signs of bulge and radius agree,
// and one formula serves both directions and arcs of more than a half turn.
//
// Error: the centre is off by about 1e-16 of the radius. Near a whole turn the sine of half the angle loses
// its digits: with a sine of h the radius is right to about 1e-16/h of itself, which is why the arcs with h
// below kZeroSine have no answer. math::SolveCentreArc keeps the digits there and answers these arcs. It was
// not put in place of this solution because hosts tell a degenerate arc by the failure, and because a chord
// of no length is an arc of no radius here and a failure there.
//
// Angles between vectors come from the arccosine, which is flat near 0 and pi: they are right to about 1e-8
// there. The arctangent of cross and dot product would be right to 1e-16 and was rejected: corners that hosts
// have stored were told from smooth joints by these angles, and the last digits decide at the limit.

#include <algorithm>
#include <cmath>
#include <optional>

#include <qev/measure/arc_math.h>
#include <qev/measure/point_tests.h>
#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/elementary.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::CentreArc;

// The sine of half the included angle. It is this small for an arc of nearly no angle, or of nearly a whole
// turn, whose ends do not tell where its centre is.
constexpr double kZeroSine = 1e-9;

std::optional<CentreArc> Solve(const math::DPOINT2& start, const math::DPOINT2& end, double bulge) {
    const math::DPOINT2 chord = end - start;
    const double c = math::Norm(chord);
    if (c < kZeroLength) return CentreArc{start, 0, 0, 0};
    const double theta = 4 * math::Atan(bulge);
    const double h = math::Sin(theta / 2);
    if (!(std::abs(h) >= kZeroSine)) return std::nullopt;
    const double r = c / 2 / h;
    const math::DPOINT2 centre = start + math::Rotated(chord * (r / c), (math::kPi - theta) / 2);
    return CentreArc{centre, std::abs(r), ComputeAngle(start.x - centre.x, start.y - centre.y), theta};
}

template <class T>
void Store(T* out, const T& value) {
    if (out) *out = value;
}

} // namespace

bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, double bulge, math::DPOINT2& centre,
                  double& radius, double& startAngle, double& endAngle) {
    const auto arc = Solve(start, end, bulge);
    if (!arc) return false;
    centre = arc->centre;
    radius = arc->radius;
    startAngle = arc->startAngle;
    endAngle = arc->startAngle + arc->sweep;
    if (endAngle > math::kTwoPi) { // only the upper side is reduced: a clockwise arc may end below 0
        startAngle -= math::kTwoPi;
        endAngle -= math::kTwoPi;
    }
    return true;
}

bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, double bulge, math::DPOINT2& centre,
                  bool& clockwise) {
    const auto arc = Solve(start, end, bulge);
    if (!arc) return false;
    centre = arc->centre;
    clockwise = !(arc->sweep > 0);
    return true;
}

bool CalcArcParam(const math::DPOINT2& start, const math::DPOINT2& end, const math::DPOINT2& centre,
                  bool clockwise, double& bulge) {
    double angle = IntersectionAngle(start - centre, end - centre);
    if (angle < 0 && !clockwise)
        angle += math::kTwoPi;
    else if (angle > 0 && clockwise)
        angle -= math::kTwoPi;
    bulge = math::Tan(angle / 4);
    return true;
}

void RetrieveArcInf(const math::DPOINT2& start, const math::DPOINT2& end, const double& bulge,
                    math::DPOINT2* centre, double* startAngle, double* endAngle, double* radius) {
    const auto arc = Solve(start, end, bulge);
    if (!arc) return;
    Store(centre, arc->centre);
    Store(startAngle, arc->startAngle);
    Store(endAngle, arc->startAngle + arc->sweep);
    Store(radius, arc->radius);
}

double ComputeAngle(double dx, double dy) {
    const double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0)) return 0;
    const double cosine = dx / length; // no number for two infinities, which count as along +x
    const double angle = cosine < 1 ? math::Acos(std::max(cosine, -1.0)) : 0;
    return dy >= -kSameLength ? angle : math::kTwoPi - angle;
}

double GetAngle(const math::DPOINT2& u, const math::DPOINT2& v) {
    const double cosine = math::Dot(u, v) / (math::Norm(u) * math::Norm(v));
    return math::Acos(std::abs(cosine) > 1 ? std::copysign(1.0, cosine) : cosine);
}

double GetAngleDir(const math::DPOINT2& u, const math::DPOINT2& v) {
    const double angle = GetAngle(u, v);
    return math::Cross(u, v) < 0 ? -angle : angle;
}

} // namespace qev
