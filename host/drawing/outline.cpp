// Under an affine map lines stay lines and Bezier pieces stay Bezier pieces, point by point. Circles become
// ellipses, and only a similarity keeps them round.
//
// An elliptic arc is carried as centre + cos(t)*u + sin(t)*v with u and v any conjugate half diameters: the
// map of such an arc is the arc of the mapped centre, u and v with t as it was. The half axes are needed only
// at the end, for the object. They are where the two diameters of a pair are at right angles, at the
// parameter t0 with tan(2*t0) = 2 u.v / (u.u - v.v), found by setting the derivative of the distance from the
// centre to zero. Rytz's construction does this with ruler and compasses. atan2 gives t0 also for a pair that
// is nearly round, where the axes have no direction to speak of; such a pair is made a circle before that.
//
// There is no segment that is a part of an ellipse, so that an arc of a contour that a map squeezes becomes
// Bezier pieces. Of a circle's arc of sweep s, the piece with control points 4/3*tan(s/4) along the tangents
// touches it at its ends and in its middle, and its error falls with the sixth power of s: 2.7e-4 of the
// radius for a quarter, 6.7e-8 for an eighth of a half turn, which is what is used. An affine map keeps the
// ratio. Chords were rejected, as they would take five hundred times as many segments for the error of a
// drawing.

#include "outline.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace host {
namespace {

using math::DPOINT2;
using qev::SEGMENT;

// A segment under a similarity, or a Bezier piece under any map: both stay what they are, point by point. The
// bulge is the tangent of an angle, which only a mirror changes.
SEGMENT Mapped(const SEGMENT& s, const Affine& map) {
    SEGMENT moved = s;
    for (DPOINT2* p : {&moved.ptStart, &moved.ptEnd, &moved.ptCtrl1, &moved.ptCtrl2}) *p = map.Point(*p);
    if (map.IsMirrored()) moved.dBulge = -moved.dBulge;
    return moved;
}

// Segments under a map: arcs that it squeezes become Bezier pieces before they are moved, as every map takes
// those as they are.
std::vector<SEGMENT> MappedSegments(const std::vector<SEGMENT>& segments, const Affine& map) {
    const bool keepsArcs = map.IsSimilarity();
    std::vector<SEGMENT> mapped;
    mapped.reserve(segments.size());
    for (const SEGMENT& segment : segments) {
        std::optional<math::CentreArc> arc; // none for an arc without a chord, which has no length
        if (segment.nType == SEGMENT::kArc && !keepsArcs)
            arc = math::SolveCentreArc(segment.ptStart, segment.ptEnd, segment.dBulge);
        if (!arc) {
            mapped.push_back(Mapped(segment, map));
            continue;
        }
        const std::size_t before = mapped.size();
        AppendBeziers({arc->centre, arc->radius, arc->radius, 0, arc->startAngle, arc->sweep}, mapped);
        for (std::size_t i = before; i < mapped.size(); ++i) mapped[i] = Mapped(mapped[i], map);
    }
    return mapped;
}

// An arc is about as long as its chord, and by its bulge as often longer as that is above 1.
bool HasLength(const SEGMENT& s) {
    const double chord = math::D2GetDistance(s.ptStart, s.ptEnd) * (1 + std::abs(s.dBulge));
    if (s.nType != SEGMENT::kBezier) return chord > kNoLength;
    return std::max(
               {chord, math::D2GetDistance(s.ptStart, s.ptCtrl1), math::D2GetDistance(s.ptStart, s.ptCtrl2)})
           > kNoLength;
}

// Takes the segments without length out of a run of segments, and makes each begin where the one before it
// ends. The last one that is left ends where the run ended, so that a closed one stays closed. Returns how
// many there were.
int DropZeroLength(std::vector<SEGMENT>& segments) {
    if (segments.empty()) return 0;
    const DPOINT2 end = segments.back().ptEnd;
    DPOINT2 at = segments.front().ptStart;
    std::size_t kept = 0;
    for (SEGMENT segment : segments) {
        segment.ptStart = at;
        if (!HasLength(segment)) continue;
        at = segment.ptEnd;
        segments[kept++] = segment;
    }
    const auto dropped = static_cast<int>(segments.size() - kept);
    segments.resize(kept);
    if (kept > 0) segments.back().ptEnd = end;
    return dropped;
}

} // namespace

std::unique_ptr<qev::CCadObject> MakeArc(const ConjugateArc& arc, const Affine& map) {
    const DPOINT2 centre = map.Point(arc.centre);
    const DPOINT2 u = map.Vector(arc.u);
    const DPOINT2 v = map.Vector(arc.v);
    const bool whole = std::abs(arc.sweep) >= math::kTwoPi;
    const bool turned = math::Cross(u, v) < 0;
    const bool counterClockwise = (arc.sweep > 0) != turned;
    if (IsRound(u, v)) {
        const double radius = math::Norm(u);
        if (whole) return std::make_unique<qev::CCadCircle>(centre, radius, counterClockwise);
        const double start = math::D2GetNormalAngle(u * std::cos(arc.start) + v * std::sin(arc.start));
        return std::make_unique<qev::CCadArc>(centre, radius, start, std::abs(arc.sweep), counterClockwise);
    }
    const double toAxis = 0.5 * std::atan2(2 * math::Dot(u, v), math::Dot(u, u) - math::Dot(v, v));
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
    constexpr double kWidest = math::kPi / 8; // radians of a piece: it deviates by 6.7e-8 of the axes
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(arc.GetSweep()) / kWidest)));
    const double step = arc.GetSweep() / count;
    const double reach = 4.0 / 3 * std::tan(step / 4); // how far the control points lie along the derivatives
    for (int i = 0; i < count; ++i) {
        const double from = arc.GetStart() + i * step;
        const double to = from + step;
        segments.emplace_back(arc.PointAt(from), arc.PointAt(from) + arc.DerivativeAt(from) * reach,
                              arc.PointAt(to) - arc.DerivativeAt(to) * reach, arc.PointAt(to));
    }
}

std::unique_ptr<qev::CCadMultiSegments> MakeContour(const std::vector<SEGMENT>& segments, const Affine& map,
                                                    int* dropped) {
    std::vector<SEGMENT> mapped = MappedSegments(segments, map);
    const int count = DropZeroLength(mapped);
    if (dropped) *dropped += count;
    const auto build = [&](auto contour, const auto& addBezier) -> std::unique_ptr<qev::CCadMultiSegments> {
        if (!mapped.empty()) contour->SetStartPoint(mapped.front().ptStart);
        for (const SEGMENT& segment : mapped) {
            if (segment.nType == SEGMENT::kBezier)
                addBezier(*contour, segment);
            else
                contour->AddArc(segment.ptEnd, segment.dBulge);
        }
        return contour;
    };
    if (std::none_of(mapped.begin(), mapped.end(),
                     [](const SEGMENT& s) { return s.nType == SEGMENT::kBezier; })) {
        auto polyline = std::make_unique<qev::CCadPolyline>();
        polyline->Reserve(static_cast<int>(mapped.size()));
        return build(std::move(polyline), [](auto&, const SEGMENT&) {});
    }
    return build(std::make_unique<qev::CCadPolylineEx>(),
                 [](auto& contour, const SEGMENT& s) { contour.AddBezier(s.ptCtrl1, s.ptCtrl2, s.ptEnd); });
}

} // namespace host
