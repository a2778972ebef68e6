#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <qev/position/nearest_position.h>
#include <qevdata/contour_index.h>
#include <qevdata/picking.h>
#include <qevdata/polyline.h>
#include <qevdata/tree_walk.h>
#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/line.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::DPOINT2;

struct Place {
    int index = 0;
    double ratio = 0;
};

struct SolvedArc {
    DPOINT2 centre;
    double radius = 0;
    double start = 0;
    double sweep = 0;

    SolvedArc(const DPOINT2& a, const DPOINT2& b, double bulge) {
        math::SolveArc(a, b, bulge, centre, radius, start, sweep);
    }
    double End() const { return start + sweep; }
    bool Sweeps(double angle) const {
        return angle >= std::min(start, End()) && angle <= std::max(start, End());
    }
    double AngleOf(const DPOINT2& p) const { return math::D2GetNormalAngle(p - centre); }
};

// Whether an arc is so flat that angles about its far centre do not tell 1e-9 mm of a drawing apart. Its
// chord does.
bool IsFlat(double bulge) {
    constexpr double kFlat = 1e-4;
    return std::abs(bulge) < kFlat;
}

double ArcDistance(const DPOINT2& p, const SolvedArc& arc, double toNearerEnd) {
    const double angle = arc.AngleOf(p);
    const bool beside =
        arc.Sweeps(angle) || arc.Sweeps(angle - math::kTwoPi) || arc.Sweeps(angle + math::kTwoPi);
    return beside ? std::abs(arc.radius - math::D2GetDistance(p, arc.centre)) : toNearerEnd;
}

// The height of the triangle over the line, by Heron's rule; outside the feet of the ends the nearer end.
double LineDistance(double da, double db, double length) {
    const double longer = std::max(da, db);
    const double shorter = std::min(da, db);
    if (!(shorter * shorter + length * length - longer * longer > 0)) return shorter;
    const double half = (da + db + length) / 2;
    const double square = (half - da) * half * (half - db) * (half - length);
    return 2 * std::sqrt(std::max(square, 0.0)) / length;
}

// Outside the sweep: 1 when the angle, folded towards the arc, is nearer to its end than to its start. Angles
// and sweep are bounded, so each fold takes a few turns at most; they follow each other, since one loop with
// both would not end on a clockwise arc.
double NearerEnd(double angle, const SolvedArc& arc) {
    const auto toEnds = [&arc](double a) {
        return std::min(std::abs(a - arc.start), std::abs(a - arc.End()));
    };
    while (angle < arc.start) angle += math::kTwoPi;
    while (angle > arc.End()) angle -= math::kTwoPi;
    if (angle < arc.start && toEnds(angle + math::kTwoPi) < toEnds(angle)) angle += math::kTwoPi;
    return std::abs(angle - arc.End()) < std::abs(angle - arc.start) ? 1 : 0;
}

double ArcFootRatio(const DPOINT2& p, const SolvedArc& arc) {
    if (std::abs(arc.sweep) < kSame) return 0;
    double angle = arc.AngleOf(p);
    if (arc.Sweeps(angle - math::kTwoPi))
        angle -= math::kTwoPi;
    else if (arc.Sweeps(angle + math::kTwoPi))
        angle += math::kTwoPi;
    return arc.Sweeps(angle) ? (angle - arc.start) / arc.sweep : NearerEnd(angle, arc);
}

// The nearest of the samples of a Bezier piece, when it is nearer than the best so far. The step is the
// number that hosts have stored positions with: 0.01 in single precision.
void SearchSamples(const SEGMENT& segment, const DPOINT2& p, int index, double& best, Place& place) {
    constexpr double kStep = 0.01f;
    for (double ratio = 0; ratio <= 1; ratio += kStep) { // NOLINT: the sum is meant
        const double distance = math::D2GetDistance(p, segment.GetPoint(ratio));
        if (!(distance + kSame < best)) continue;
        best = distance;
        place = {index, ratio};
    }
}

double SegmentDistance(const SEGMENT& segment, const DPOINT2& p) {
    return CPosCalculator::GetMinDistance(p, segment.ptStart, segment.ptEnd, segment.dBulge);
}

// The search of all segments, below, by those alone that come near: the segment that it ends with, or none
// when that cannot be told. What it has seen before matters only up to a segment that is nearer by more than
// kSame than all before it: that one it takes in any case. From there on this search does as it does, since
// what lies out of reach is farther than the best.
std::optional<int> NearestByIndex(const CCadObject& contour, const ContourIndex& index, const DPOINT2& p) {
    // Heron's rule errs by up to 1.5e-8 of the lengths that go into it.
    constexpr double kRounding = 1e-7;
    const double margin = kRounding * (1 + index.GetExtent(p));
    double least = std::numeric_limits<double>::max();
    index.VisitNearest(p, [&](int i) { least = std::min(least, SegmentDistance(contour.GetSegment(i), p)); });
    const double reach = least + margin;
    double best = std::numeric_limits<double>::max();
    double leastBefore = reach; // and what is out of reach is farther
    bool isSure = false;
    int nearest = -1;
    index.VisitWithin(p, reach + margin, [&](int i) {
        const double distance = SegmentDistance(contour.GetSegment(i), p);
        if (distance + kSame < best) {
            isSure = isSure || distance + kSame < leastBefore;
            best = distance;
            nearest = i;
        }
        leastBefore = std::min(leastBefore, distance);
    });
    return isSure ? std::optional(nearest) : std::nullopt;
}

// Only a distance that is smaller by more than kSame replaces the best, so the first of equal segments wins.
Place NearestOfAll(const CCadObject& contour, const DPOINT2& p) {
    double best = std::numeric_limits<double>::max();
    Place place{-1, 0};
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i) {
        const SEGMENT segment = contour.GetSegment(i);
        if (segment.nType == SEGMENT::kBezier) {
            SearchSamples(segment, p, i, best, place);
            continue;
        }
        const double distance = SegmentDistance(segment, p);
        if (!(distance + kSame < best)) continue;
        best = distance;
        place = {i, 0};
    }
    return place;
}

Place NearestSegment(const CCadObject& contour, const DPOINT2& p) {
    const ContourIndex* index = contour.GetIndex();
    const bool isUsed = index && index->IsForSearch() && !index->HasBezier();
    const auto found = isUsed ? NearestByIndex(contour, *index, p) : std::nullopt;
    return found ? Place{*found, 0} : NearestOfAll(contour, p);
}

std::optional<Place> NearestOnContour(const CCadObject& contour, const DPOINT2& p) {
    Place place = NearestSegment(contour, p);
    if (place.index < 0) return std::nullopt;
    const SEGMENT nearest = contour.GetSegment(place.index);
    if (nearest.nType != SEGMENT::kBezier)
        place.ratio =
            CPosCalculator::GetPerpendicularFootRatio(p, nearest.ptStart, nearest.ptEnd, nearest.dBulge);
    const int count = contour.GetSegmentCount();
    if (IsSame(place.ratio, 1) && (contour.IsClose() || place.index + 1 != count))
        place = {place.index + 1 < count ? place.index + 1 : 0, 0};
    return place;
}

double CircleRatio(const CCadCircle& circle, const DPOINT2& p) {
    const DPOINT2 fromCentre = p - circle.GetCenterPoint();
    double ratio = math::Norm(fromCentre) > kSame ? math::D2GetNormalAngle(fromCentre) / math::kTwoPi : 0;
    if (!circle.IsCounterClockwise()) ratio = 1 - ratio;
    return ratio == 1 ? 0 : ratio;
}

// The turn from an arc's start to a point on it. A point that lies before the start, as near as the test of
// points on arcs allows, is the start: it must not count for a whole turn.
double TravelledTo(const DPOINT2& p, const SolvedArc& arc) {
    const double angle = arc.AngleOf(p);
    if (IsSame(angle, arc.start)) return 0;
    const double turn = math::RegularizeRadian(arc.sweep > 0 ? angle - arc.start : arc.start - angle);
    return math::kTwoPi - turn < turn - std::abs(arc.sweep) ? 0 : turn;
}

// The length up to a point, which lies on one of the segments, by that of the whole contour.
double RatioAlong(const CCadObject& contour, const DPOINT2& p) {
    const double total = contour.GetLength();
    double before = 0;
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i) {
        const SEGMENT segment = contour.GetSegment(i);
        if (std::abs(segment.dBulge) < kSame) {
            if (math::IsPointInLine(p, segment.ptStart, segment.ptEnd))
                return (before + math::D2GetDistance(p, segment.ptStart)) / total;
        } else {
            const SolvedArc arc(segment.ptStart, segment.ptEnd, segment.dBulge);
            const bool left = arc.sweep > 0;
            if (math::IsPointInArc(p, arc.centre, arc.radius, arc.start, std::abs(arc.sweep), left))
                return (before + arc.radius * TravelledTo(p, arc)) / total;
        }
        before += segment.GetLength();
    }
    return before / total;
}

std::optional<Place> NearestOnEllipse(const CCadPolyline* polyline, const DPOINT2& p) {
    if (!polyline) return std::nullopt;
    DPOINT2 nearest;
    GetMinDistance(polyline, p, nearest);
    return Place{0, RatioAlong(*polyline, nearest)};
}

// Where a point lies on an object; none for a kind without positions.
std::optional<Place> NearestPlace(const CCadObject* object, const DPOINT2& p) {
    using Answer = std::optional<Place>;
    return VisitCad(
        object, kPickedContours, Answer(),
        Handle{[&](const CCadLine& line) -> Answer {
                   // the point itself, not its foot: the hit test has put it beside the line
                   return Place{0, math::D2GetDistance(line.GetStartPoint(), p) / line.GetLength()};
               },
               [&](const CCadArc& arc) -> Answer {
                   return Place{0, CPosCalculator::GetPerpendicularFootRatio(
                                       p, arc.GetStartPoint(), arc.GetEndPoint(), arc.GetBulge())};
               },
               [&](const CCadCircle& circle) -> Answer {
                   return Place{0, CircleRatio(circle, p)};
               },
               [&](const CCadEllipse& ellipse) { return NearestOnEllipse(ellipse.GetPolyline(), p); },
               [&](const CCadEllipseArc& arc) { return NearestOnEllipse(arc.GetPolyline(), p); },
               [&](const Contour& contour) { return NearestOnContour(contour.object, p); }});
}

void Select(const std::list<CCadObject*>* objects, CCadGroup* into, bool closedOnly) {
    if (!into) return;
    TreeWalk walk(objects, PickedMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next()) {
        CCadObject* object = walk.Object();
        // what has a group's code but is none is passed over
        if (step != TreeWalk::Step::kLeaf || IsGroupCode(object->GetType())) continue;
        if (!closedOnly || object->IsClose()) into->PushBack(object);
    }
}

} // namespace

void CPosCalculator::Init(const CCadGroup* group, const DPOINT2* point, double tolerance) {
    m_pGroup = group;
    if (point) m_ptPoint = *point;
    m_dTolerance = tolerance;
}

bool CPosCalculator::CalculatePosition(PosInfo* info, bool bClosedOnly) {
    const CCadObject* hit = info ? Hit(m_pGroup, m_ptPoint, m_dTolerance, bClosedOnly) : nullptr;
    if (!hit) return false;
    const bool found = _RetrieveNearestPos(hit, info, bClosedOnly);
    info->pObject = hit;
    return found;
}

bool CPosCalculator::_RetrieveNearestPos(const CCadObject* object, PosInfo* info, bool bClosedOnly) const {
    if (!object || !info || (bClosedOnly && !object->IsClose())) return false;
    if (const auto place = NearestPlace(object, m_ptPoint))
        *info = {nullptr, static_cast<int>(object->GetID()), place->index, place->ratio};
    return true;
}

void CPosCalculator::_SelectObject(const CCadGroup* group, CCadGroup* into) {
    if (group) Select(&group->GetObjectsList(), into, false);
}
void CPosCalculator::_SelectObject(const std::list<CCadObject*>* objects, CCadGroup* into) {
    Select(objects, into, false);
}
void CPosCalculator::_SelectClosedObject(const CCadGroup* group, CCadGroup* into) {
    if (group) Select(&group->GetObjectsList(), into, true);
}
void CPosCalculator::_SelectClosedObject(const std::list<CCadObject*>* objects, CCadGroup* into) {
    Select(objects, into, true);
}

void CPosCalculator::_Line(const CCadObject* object, PosInfo* info) const {
    _RetrieveNearestPos(object, info, false);
}
void CPosCalculator::_Arc(const CCadObject* object, PosInfo* info) const {
    _RetrieveNearestPos(object, info, false);
}
void CPosCalculator::_Circle(const CCadObject* object, PosInfo* info) const {
    _RetrieveNearestPos(object, info, false);
}
void CPosCalculator::_Ellipse(const CCadObject* object, PosInfo* info) const {
    _RetrieveNearestPos(object, info, false);
}
void CPosCalculator::_EllipseArc(const CCadObject* object, PosInfo* info) const {
    _RetrieveNearestPos(object, info, false);
}
void CPosCalculator::_MultiSegments(const CCadObject* object, PosInfo* info) const {
    _RetrieveNearestPos(object, info, false);
}

double CPosCalculator::GetMinDistance(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b,
                                      const double& bulge) {
    const double da = math::D2GetDistance(p, a);
    const double db = math::D2GetDistance(p, b);
    const double length = math::D2GetDistance(a, b);
    if (length < kSame) return da;
    if (da < kSame || db < kSame) return 0;
    if (std::abs(bulge) < kSame) return LineDistance(da, db, length);
    const math::BulgeArc arc{a, b, bulge};
    if (IsFlat(bulge)) return math::D2GetDistance(p, arc.PointAt(arc.GetFootRatio(p)));
    return ArcDistance(p, SolvedArc(a, b, bulge), std::min(da, db));
}

double CPosCalculator::GetPerpendicularFootRatio(const DPOINT2& p, const DPOINT2& a, const DPOINT2& b,
                                                 const double& bulge) {
    if (math::D2GetDistance(p, a) < kSame) return 0;
    if (math::D2GetDistance(p, b) < kSame) return 1;
    const DPOINT2 chord = b - a;
    double ratio = 0;
    if (!(std::abs(bulge) < kSame))
        ratio = IsFlat(bulge) ? math::BulgeArc{a, b, bulge}.GetFootRatio(p)
                              : ArcFootRatio(p, SolvedArc(a, b, bulge));
    else if (!(math::Dot(chord, chord) < kSame))
        ratio = math::Dot(p - a, chord) / math::Dot(chord, chord);
    if (ratio >= 1) return 1;
    return ratio > 0 ? ratio : 0;
}

double CPosCalculator::GetPtInMultiRatio(const DPOINT2& p, CCadObject* contour) {
    return contour ? RatioAlong(*contour, p) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace qev
