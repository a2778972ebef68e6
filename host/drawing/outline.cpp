#include "outline.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

// The arc of a bulge segment round its own centre.
math::EllipticArc CircleOf(const SEGMENT& arc) {
    DPOINT2 centre;
    double radius = 0;
    double start = 0;
    double sweep = 0;
    math::SolveArc(arc.ptStart, arc.ptEnd, arc.dBulge, centre, radius, start, sweep);
    return {centre, radius, radius, 0, start, sweep};
}

SEGMENT Mapped(const SEGMENT& s, const Affine& map) {
    SEGMENT moved = s;
    for (DPOINT2* p : {&moved.ptStart, &moved.ptEnd, &moved.ptCtrl1, &moved.ptCtrl2}) *p = map.Point(*p);
    if (map.IsMirrored()) moved.dBulge = -moved.dBulge;
    return moved;
}

} // namespace

// The half axes lie where the conjugate diameters are at right angles: tan(2t) = 2 u.v / (u.u - v.v) (Rytz).
std::unique_ptr<qev::CCadObject> MakeArc(const ConjugateArc& arc, const Affine& map) {
    constexpr double kRound = 1e-9; // relative difference of the axes: rounding
    const DPOINT2 centre = map.Point(arc.centre);
    const DPOINT2 u = map.Vector(arc.u);
    const DPOINT2 v = map.Vector(arc.v);
    const bool whole = std::abs(arc.sweep) >= math::kTwoPi;
    const bool turned = math::Cross(u, v) < 0;
    const bool counterClockwise = (arc.sweep > 0) != turned;
    const double skew = math::Dot(u, v);
    const double difference = math::Dot(u, u) - math::Dot(v, v);
    const double size = math::Dot(u, u) + math::Dot(v, v);
    if (std::abs(skew) <= kRound * size && std::abs(difference) <= kRound * size) {
        const double radius = math::Norm(u);
        if (whole) return std::make_unique<qev::CCadCircle>(centre, radius, counterClockwise);
        const double start = math::D2GetNormalAngle(u * std::cos(arc.start) + v * std::sin(arc.start));
        return std::make_unique<qev::CCadArc>(centre, radius, start, std::abs(arc.sweep), counterClockwise);
    }
    const double toAxis = 0.5 * std::atan2(2 * skew, difference);
    const DPOINT2 a = u * std::cos(toAxis) + v * std::sin(toAxis);
    const DPOINT2 b = v * std::cos(toAxis) - u * std::sin(toAxis);
    const double rotation = math::D2GetNormalAngle(a);
    const double start = (arc.start - toAxis) * (turned ? -1 : 1);
    if (whole)
        return std::make_unique<qev::CCadEllipse>(centre, math::Norm(a), math::Norm(b), rotation,
                                                  counterClockwise);
    return std::make_unique<qev::CCadEllipseArc>(centre, math::Norm(a), math::Norm(b), rotation, start,
                                                 std::abs(arc.sweep), counterClockwise);
}

void AppendBeziers(const math::EllipticArc& arc, std::vector<SEGMENT>& segments) {
    constexpr double kWidest = math::kPi / 8; // radians of a piece: the error is about 2e-8 of the axes
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(arc.GetSweep()) / kWidest)));
    const double step = arc.GetSweep() / count;
    const double reach = 4.0 / 3 * std::tan(step / 4); // of the control points, along the derivatives
    for (int i = 0; i < count; ++i) {
        const double from = arc.GetStart() + i * step;
        const double to = from + step;
        segments.emplace_back(arc.PointAt(from), arc.PointAt(from) + arc.DerivativeAt(from) * reach,
                              arc.PointAt(to) - arc.DerivativeAt(to) * reach, arc.PointAt(to));
    }
}

std::unique_ptr<qev::CCadMultiSegments> MakeContour(const std::vector<SEGMENT>& segments, const Affine& map) {
    const bool keepsArcs = map.IsSimilarity();
    std::vector<SEGMENT> bent;
    for (const SEGMENT& segment : segments) {
        if (segment.nType == SEGMENT::kArc && !keepsArcs)
            AppendBeziers(CircleOf(segment), bent);
        else
            bent.push_back(segment);
    }
    const auto build = [&](auto contour, const auto& addBezier) -> std::unique_ptr<qev::CCadMultiSegments> {
        contour->SetStartPoint(map.Point(bent.empty() ? DPOINT2{} : bent.front().ptStart));
        for (const SEGMENT& segment : bent) {
            const SEGMENT moved = Mapped(segment, map);
            if (moved.nType == SEGMENT::kBezier)
                addBezier(*contour, moved);
            else
                contour->AddArc(moved.ptEnd, moved.dBulge);
        }
        return contour;
    };
    if (std::none_of(bent.begin(), bent.end(), [](const SEGMENT& s) { return s.nType == SEGMENT::kBezier; }))
        return build(std::make_unique<qev::CCadPolyline>(), [](auto&, const SEGMENT&) {});
    return build(std::make_unique<qev::CCadPolylineEx>(),
                 [](auto& contour, const SEGMENT& s) { contour.AddBezier(s.ptCtrl1, s.ptCtrl2, s.ptEnd); });
}

} // namespace host
