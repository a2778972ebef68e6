// Directions of travel on segments and objects, and the turns between segments.
//
// A line's direction is its chord. An arc's is the radius turned by a quarter, to the left when it runs
// counter-clockwise, so that the vector is as long as the radius: who compares two directions divides by the
// lengths, who only needs the sense does not pay for it.
//
// The turn at a corner is the arccosine of the two directions, with the sign of their cross product. Where
// the contour turns back on itself the cross product is 0 but for rounding: beside an arc the curvatures tell
// then on which side the contour leaves, and between two lines nothing does, so that a cross product of 0
// counts as a turn to the left. Error: the arccosine is right to about 1e-8 near 0 and pi; within kSameCosine
// of 1 the turn is 0.
//
// An ellipse answers from the polyline that its positions go by, and the whole ellipse and the arc of one do
// it differently on purpose: the whole one goes by chords and answers the direction along the arc that lies
// there, the other goes by lengths and answers the chord. The exact tangent of the ellipse was rejected: a
// position on an ellipse is a fraction of the polyline's length, so that the tangent at it would belong to
// another point.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <qev/measure/arc_math.h>
#include <qev/measure/directions.h>
#include <qevdata/multi_segments.h>
#include <qevdata/polyline.h>
#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/elementary.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"

namespace qev {
namespace {

// Cosine. Below it the contour turns back on itself at a corner: the directions are within 4.5e-5 radians of
// opposite.
constexpr double kReversal = -0.999999999;
// Cosine. A joint whose cosine is this near to 1 is smooth: it turns by less than 4.5e-5 radians.
constexpr double kSameCosine = 1e-9;

double SignOf(double bulge) {
    return bulge > 0 ? 1 : -1;
}

// Direction of travel at a point of a circle, as long as the radius.
math::DPOINT2 OnCircle(double radius, double angle, double sign) {
    const auto [sine, cosine] = math::SinCos(angle);
    return {-sign * radius * sine, sign * radius * cosine};
}

// The arc of a segment; all zeros when it has none, so that its directions are those of a circle of no radius
// about the origin: kept so.
math::CentreArc ArcOf(const SEGMENT& segment) {
    return math::SolveCentreArc(segment.ptStart, segment.ptEnd, segment.dBulge).value_or(math::CentreArc{});
}

// Forward direction at the end of an arc's radius that leads to `at`.
math::DPOINT2 ForwardAt(const SEGMENT& arc, const math::DPOINT2& at) {
    return math::LeftOf(at - ArcOf(arc).centre) * SignOf(arc.dBulge);
}

math::DPOINT2 SegmentDirection(const SEGMENT& segment, double ratio) {
    if (segment.nType == SEGMENT::kLine) return segment.ptEnd - segment.ptStart;
    const math::CentreArc arc = ArcOf(segment);
    return OnCircle(arc.radius, arc.startAngle + arc.sweep * ratio, SignOf(segment.dBulge));
}

// Finds the segment by the fraction of the sum of all chords.
math::DPOINT2 EllipseDirection(const CCadEllipse& ellipse, int index, double ratio) {
    const CCadPolyline* const polyline = ellipse.GetPolyline();
    if (!polyline) return {};
    const auto chord = [&](int k) {
        const SEGMENT segment = polyline->GetSegment(k);
        return math::D2GetDistance(segment.ptStart, segment.ptEnd);
    };
    const int count = polyline->GetNodeCount();
    double total = 0;
    for (int k = 0; k < count; ++k) total += chord(k);
    const double target = total * ratio;
    if (!(target > 0)) return SegmentDirection(polyline->GetSegment(index), ratio);
    double sum = 0;
    for (int k = 0; k < count; ++k) {
        const double length = chord(k);
        if (sum + length > target) return SegmentDirection(polyline->GetSegment(k), (target - sum) / length);
        sum += length;
    }
    // The very end of the chords keeps the caller's position; a ratio beyond it gives the start.
    return sum == target ? SegmentDirection(polyline->GetSegment(index), ratio)
                         : SegmentDirection(polyline->GetSegment(0), 0);
}

// Finds the segment by the fraction of the whole length and answers its chord, also where it is an arc.
math::DPOINT2 EllipseArcDirection(const CCadEllipseArc& arc, double ratio) {
    const CCadPolyline* const polyline = arc.GetPolyline();
    if (!polyline) return {};
    const double target = polyline->GetLength() * ratio;
    const int last = polyline->GetSegmentCount() - 1;
    double sum = 0;
    for (int k = 0;; ++k) {
        const SEGMENT segment = polyline->GetSegment(k);
        sum += segment.GetLength();
        if (sum > target || k >= last) return segment.ptEnd - segment.ptStart;
    }
}

} // namespace

void GetVector(const SEGMENT& a, const SEGMENT& b, math::DPOINT2& va, math::DPOINT2& vb) {
    math::DPOINT2 back = va; // both are known before one is written: the outputs may be points of a or b
    math::DPOINT2 forth = vb;
    if (a.nType == SEGMENT::kLine)
        back = a.ptStart - a.ptEnd;
    else if (a.nType == SEGMENT::kArc)
        back = -ForwardAt(a, a.ptEnd);
    if (b.nType == SEGMENT::kLine)
        forth = b.ptEnd - b.ptStart;
    else if (b.nType == SEGMENT::kArc)
        forth = ForwardAt(b, b.ptStart);
    va = back;
    vb = forth;
}

double GetTangent(SEGMENT segment, double at, math::DPOINT2* tangent) {
    math::DPOINT2 direction = segment.ptEnd - segment.ptStart;
    double curvature = 0;
    if (segment.nType != SEGMENT::kLine) {
        math::DPOINT2 centre;
        double radius = 0;
        RetrieveArcInf(segment.ptStart, segment.ptEnd, segment.dBulge, &centre, nullptr, nullptr, &radius);
        const double sign = SignOf(segment.dBulge);
        direction = math::LeftOf((at != 0 ? segment.ptEnd : segment.ptStart) - centre) * sign;
        curvature = radius > 0 ? sign / radius : std::copysign(std::numeric_limits<double>::infinity(), sign);
    }
    if (tangent) *tangent = direction;
    return curvature;
}

double GetCornerAngle(const CCadMultiSegments* contour, int i) {
    const int count = contour ? contour->GetSegmentCount() : 0;
    if (count < 1) return 0;
    const auto index = [count](std::int64_t k) { return static_cast<int>(k % count); };
    const SEGMENT previous = contour->GetSegment(index(std::int64_t{count} + i - 1));
    const SEGMENT current = contour->GetSegment(index(i));
    math::DPOINT2 in;
    math::DPOINT2 out;
    const double curvature = GetTangent(previous, 1, &in) + GetTangent(current, 0, &out);
    const double cosine = math::Dot(in, out) / std::sqrt(math::Dot(in, in) * math::Dot(out, out));
    if (!(cosine < 1) || std::abs(cosine - 1) < kSameCosine) return 0;
    const double angle = math::Acos(std::max(cosine, -1.0));
    const auto isArc = [](const SEGMENT& s) { return s.nType != SEGMENT::kLine && s.dBulge != 0; };
    const bool hasArc = isArc(previous) || isArc(current);
    if (cosine < kReversal && hasArc) return curvature < 0 ? angle : -angle;
    return math::Cross(in, out) < 0 ? -angle : angle;
}

math::DPOINT2 GetVector(const CCadObject* object, int nSegIndex, double dRatio) {
    return VisitCad(
        object, kDirectionContours,
        Handle{[](const CCadLine& line) { return line.GetEndPoint() - line.GetStartPoint(); },
               [&](const CCadCircle& circle) {
                   const double sign = circle.IsCounterClockwise() ? 1 : -1;
                   return OnCircle(circle.GetRadius(), dRatio * math::kTwoPi * sign, sign);
               },
               [&](const CCadArc& arc) {
                   const double sign = arc.IsCounterClockwise() ? 1 : -1;
                   return OnCircle(arc.GetRadius(),
                                   arc.GetStartAngle() + arc.GetCentralAngle() * dRatio * sign, sign);
               },
               [&](const CCadEllipse& ellipse) { return EllipseDirection(ellipse, nSegIndex, dRatio); },
               [&](const CCadEllipseArc& arc) { return EllipseArcDirection(arc, dRatio); },
               [&](const Contour& contour) {
                   return SegmentDirection(contour.object.GetSegment(nSegIndex), dRatio);
               },
               Others<CCadDot>(math::DPOINT2{})});
}

} // namespace qev
