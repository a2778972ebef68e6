#include <algorithm>
#include <cmath>
#include <optional>

#include <qev/measure/arc_math.h>
#include <qev/measure/point_tests.h>
#include <qevmath/angle.h>
#include <qevmath/elementary.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

struct SolvedArc {
    math::DPOINT2 centre;
    double radius;
    double startAngle;
    double theta; // signed included angle
};

// Turns the chord, scaled to the signed radius, by what it makes with the radius at the start.
std::optional<SolvedArc> Solve(const math::DPOINT2& start, const math::DPOINT2& end, double bulge) {
    const math::DPOINT2 chord = end - start;
    const double c = math::Norm(chord);
    if (c < kSame) return SolvedArc{start, 0, 0, 0};
    const double theta = 4 * math::Atan(bulge);
    const double h = math::Sin(theta / 2);
    if (!(std::abs(theta) >= kSame && std::abs(h) >= kSame)) return std::nullopt;
    const double r = c / 2 / h;
    const math::DPOINT2 centre = start + math::Rotated(chord * (r / c), (math::kPi - theta) / 2);
    return SolvedArc{centre, std::abs(r), ComputeAngle(start.x - centre.x, start.y - centre.y), theta};
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
    endAngle = arc->startAngle + arc->theta;
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
    clockwise = !(arc->theta > 0);
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
    Store(endAngle, arc->startAngle + arc->theta);
    Store(radius, arc->radius);
}

double ComputeAngle(double dx, double dy) {
    const double length = std::sqrt(dx * dx + dy * dy);
    if (!(length > 0)) return 0;
    const double angle = math::Acos(std::clamp(dx / length, -1.0, 1.0));
    return dy >= -kSame ? angle : math::kTwoPi - angle;
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
