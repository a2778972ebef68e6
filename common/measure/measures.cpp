// Ends, lengths, area and direction of objects.
//
// The area of a contour is the sum of a trapezoid under every chord down to the x axis, and of what every arc
// adds to its chord. Going round, the parts below the contour cancel. A trapezoid counts positive to the
// right, so that a clockwise contour has the positive area: callers rely on that sign. The arc's part is the
// sector less the triangle, with the radius signed by the bulge, so that one formula serves both sides of the
// chord.
//
// Error: the trapezoids reach down to the axis, so that a contour of size s at a distance d from it loses
// about 1e-16 * s * d; and the sector less the triangle of an arc of bulge b cancels to about 1e-16 * chord^2
// / b. A sum about the contour's own middle would lose less and was rejected, since hosts have stored areas
// to the last digit.

#include <cmath>
#include <limits>

#include <qev/measure/measures.h>
#include <qevdata/multi_segments.h>
#include <qevdata/polyline.h>
#include <qevdata/tree_walk.h>
#include <qevmath/elementary.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"

namespace qev {
namespace {

enum class End { kStart, kEnd };

math::DPOINT2 EndOfLeaf(const CCadObject* leaf, End end) {
    const auto pick = [end](const CCadObject& object) {
        return end == End::kStart ? object.GetStartPoint() : object.GetEndPoint();
    };
    return VisitCad(leaf, kSegmentContours,
                    Handle{[](const CCadDot& dot) { return dot.GetPoint(); },
                           [](const CCadCircle& circle) { return circle.GetPoint(0.0); },
                           [](const CCadEllipse& ellipse) { return ellipse.GetPoint_XY(0.0); },
                           [&](const CCadLine& line) { return pick(line); },
                           [&](const CCadArc& arc) { return pick(arc); },
                           [&](const CCadEllipseArc& arc) { return pick(arc); },
                           [&](const Contour& contour) { return pick(contour.object); },
                           Others(math::NoPoint())});
}

// Goes down through first (or last) members to a leaf. A container may hold itself, and the way would then
// never end. So one container on the way is remembered and every later one compared with it; the remembered
// one is renewed after 1, 2, 4, ... steps (R. P. Brent's cycle search, 1980), so that some time it lies on
// the cycle and is met again within one round. It needs no memory, where a set of all containers would,
// however deep the nesting.
math::DPOINT2 EndOfObject(const CCadObject* object, End end) {
    const CCadObject* remembered = nullptr;
    for (std::size_t step = 0, renewal = 1; object; ++step) {
        const std::list<CCadObject*>* members = ContainerMembers(*object);
        if (!members) return EndOfLeaf(object, end);
        if (members->empty() || object == remembered) break;
        if (step == renewal) {
            remembered = object;
            renewal *= 2;
        }
        object = end == End::kStart ? members->front() : members->back();
    }
    return math::NoPoint();
}

double LengthOfLeaf(const CCadObject* leaf) {
    return VisitCad(leaf, kLengthContours,
                    Handle{[](const SinglePiece auto& piece) { return piece.GetLength(); },
                           [](const Contour& contour) { return contour.object.GetLength(); },
                           Others<CCadDot>(0.0)});
}

// Minus the area between the chord and the arc, signed by the bulge. The radius is signed too: with half the
// chord h it is (h/b + h*b)/2, and the arc's height over the chord is h*b.
double ArcTerm(double chord, double bulge) {
    if (IsStraight(bulge)) return 0;
    const double h = chord * 0.5;
    const double radius = (h / bulge + h * bulge) * 0.5;
    return -(math::Atan(bulge) * 2 * radius * radius - (radius - h * bulge) * h);
}

double Trapezoid(const math::DPOINT2& from, const math::DPOINT2& to) {
    return (to.y + from.y) * 0.5 * (to.x - from.x);
}

} // namespace

math::DPOINT2 GetStartPoint(const CCadObject* object) {
    return EndOfObject(object, End::kStart);
}

math::DPOINT2 GetEndPoint(const CCadObject* object) {
    return EndOfObject(object, End::kEnd);
}

math::DPOINT2 GetCadStartPoint(const CCadObject* object) {
    return GetStartPoint(object);
}

math::DPOINT2 GetCadEndPoint(const CCadObject* object) {
    return GetEndPoint(object);
}

double GetCadLength(const CCadObject* object) {
    double length = 0;
    TreeWalk walk(object, ContainerMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf) length += LengthOfLeaf(walk.Object());
    return length;
}

double GetSegLength(const CCadPolyline* polyline, int i) {
    if (!polyline || i < 0 || i >= polyline->GetSegmentCount())
        return std::numeric_limits<double>::quiet_NaN();
    return polyline->GetSegment(i).GetLength();
}

double GetSegLength(const CCadObject* object, int i) {
    return VisitCad(object, kSegmentContours,
                    Handle{[](const SinglePiece auto& piece) { return piece.GetLength(); },
                           [i](const Contour& contour) { return contour.object.GetSegment(i).GetLength(); },
                           Others<CCadDot>(0.0)});
}

double GetCadPolylineArea(const CCadMultiSegments* contour, bool bSigned) {
    if (!contour) return 0;
    const int count = contour->GetSegmentCount();
    if (count <= 0) return 0;
    const math::DPOINT2 start = contour->GetStartPoint();
    math::DPOINT2 previous = start;
    double sum = 0;
    for (int i = 0; i < count; ++i) {
        const SEGMENT segment = contour->GetSegment(i);
        const double chord = math::D2GetDistance(previous, segment.ptEnd);
        if (chord < kZeroLength) continue;
        const double under = Trapezoid(previous, segment.ptEnd);
        sum += segment.nType == SEGMENT::kLine ? under : under + ArcTerm(chord, segment.dBulge);
        previous = segment.ptEnd;
    }
    sum += Trapezoid(previous, start);
    return bSigned ? sum : std::abs(sum);
}

CContourDirection::ContourDirection_T GetCadOBjectDir(const CCadObject* object) {
    const auto byFlag = [](const auto& curve) { return DirectionOf(curve.IsCounterClockwise()); };
    return VisitCad(object, kSegmentContours,
                    Handle{[&](const CCadCircle& circle) { return byFlag(circle); },
                           [&](const CCadEllipse& ellipse) { return byFlag(ellipse); },
                           [](const CCadArc& arc) { return GetContourDirectionEx(&arc); },
                           [](const CCadEllipseArc& arc) { return GetContourDirectionEx(&arc); },
                           [](const Contour& contour) { return GetContourDirectionEx(&contour.object); },
                           Others<CCadDot, CCadLine>(CContourDirection::NONE)});
}

} // namespace qev
