// Picking: the object of a group at a point, and the position on it that is nearest to the point.
//
// Which object is hit is the data library's matter (Hit); here its nearest place is found, by what the object
// is. A line answers the point's distance from its start, a circle the angle, an arc its foot. A segment
// contour is searched for its nearest segment first, whose foot is the answer. A contour that is asked again
// has an index, with which a few segments are looked at in place of all; NearestByIndex says why the answer
// is the same to the bit. An ellipse answers the fraction of its converted polyline's length, which is what
// its positions are.
//
// Rejected: the nearest place by the exact nearest points of the curves, which the picking itself uses.
// Positions that hosts have stored go by the distances and feet of segment_distance.cpp, by the samples of a
// Bezier piece and by the first of equal segments, and must be found again.

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <qev/position/nearest_position.h>
#include <qev/types.h>
#include <qevdata/picking.h>
#include <qevdata/polyline.h>
#include <qevdata/tree_walk.h>
#include <qevmath/angle.h>
#include <qevmath/line.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"
#include "data/contour_index.h"

namespace qev {
namespace {

using math::DPOINT2;
using math::POLYPOS;

// The nearest place so far. Only a distance that is smaller by more than kSameLength replaces it, so that the
// first of equal segments wins.
struct Nearest {
    double distance = std::numeric_limits<double>::max();
    POLYPOS place{-1, 0.0};

    bool Take(double candidate, const POLYPOS& at) {
        if (!(candidate + kSameLength < distance)) return false;
        distance = candidate;
        place = at;
        return true;
    }
};

// Offers samples of a Bezier piece. The step is the number that hosts have stored positions with: 0.01 in
// single precision.
void SearchSamples(const SEGMENT& segment, const DPOINT2& p, int index, Nearest& nearest) {
    constexpr double kStep = 0.01f;
    for (double ratio = 0; ratio <= 1; ratio += kStep) // NOLINT: the sum is meant
        nearest.Take(math::D2GetDistance(p, segment.GetPoint(ratio)), {index, ratio});
}

// Only an arc has a bulge, whatever the field of a line says.
double SegmentDistance(const SEGMENT& segment, const DPOINT2& p) {
    return CPosCalculator::GetMinDistance(p, segment.ptStart, segment.ptEnd, segment.GetArc().bulge);
}

// The search of all segments, which is what a nearest segment is by definition.
POLYPOS NearestOfAll(const CCadObject& contour, const DPOINT2& p) {
    Nearest nearest;
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i) {
        const SEGMENT segment = contour.GetSegment(i);
        if (segment.nType == SEGMENT::kBezier)
            SearchSamples(segment, p, i, nearest);
        else
            nearest.Take(SegmentDistance(segment, p), {i, 0.0});
    }
    return nearest.place;
}

// The segment that NearestOfAll ends with, found by looking at those segments only that may matter; nothing
// when that cannot be told. The contour has no Bezier pieces.
//
// The index keeps a box round every run of neighbouring segments. The least distance in the nearest run is an
// upper bound of the least of all. A run whose box is farther away than `reach` and one margin more cannot
// hold a segment whose computed distance is `reach` or less, since the margin is more than the error of a
// computed distance. So the segments that are not visited are all farther away than `reach`.
//
// NearestOfAll does not simply end with the least distance: it goes by what it has met before. But every
// segment s that is nearer than all segments before it by more than kSameLength is taken by NearestOfAll,
// whatever it held, and by this search, which sees a part of them. From s on both hold s. They go on alike:
// both look at the visited segments in the same order, and a segment that is not visited is farther away than
// `reach`, so that NearestOfAll does not take it while it holds something nearer than `reach`. It is
// therefore enough to meet one such s whose distance lies below `reach` by more than kSameLength. That is
// what `leastBefore` tells: it starts at `reach`, which stands for all segments that are not visited, and
// goes down with the visited ones. When no such s was met, because distances within kSameLength of each other
// lie along the way, the answer is nothing, and all segments are searched.
std::optional<int> NearestByIndex(const CCadObject& contour, const ContourIndex& index, const DPOINT2& p) {
    // The distances by Heron's rule err by up to 1.5e-8 of the lengths that go into it, and these are at most
    // three times the largest coordinate; distances from arcs err by 1e-16 of the radius, which is at most
    // 2,500 chords. The 1 mm serves small contours that lie at the origin.
    constexpr double kRounding = 1e-7;
    const double margin = kRounding * (1 + index.GetExtent(p));
    double least = std::numeric_limits<double>::max();
    index.VisitNearest(p, [&](int i) { least = std::min(least, SegmentDistance(contour.GetSegment(i), p)); });
    const double reach = least + margin;
    double leastBefore = reach;
    bool isSure = false;
    Nearest nearest;
    index.VisitWithin(p, reach + margin, [&](int i) {
        const double distance = SegmentDistance(contour.GetSegment(i), p);
        if (nearest.Take(distance, {i, 0.0}) && distance + kSameLength < leastBefore) isSure = true;
        leastBefore = std::min(leastBefore, distance);
    });
    return isSure ? std::optional(nearest.place.nSegIndex) : std::nullopt;
}

POLYPOS NearestSegment(const CCadObject& contour, const DPOINT2& p) {
    const ContourIndex* index = IndexOf(contour);
    const bool isUsed = index && index->IsForSearch() && !index->HasBezier();
    const auto found = isUsed ? NearestByIndex(contour, *index, p) : std::nullopt;
    return found ? POLYPOS{*found, 0.0} : NearestOfAll(contour, p);
}

// The place on the nearest segment; the end of a segment that another one follows is the start of that one.
// The index is -1 when there is no nearest segment.
POLYPOS NearestOnContour(const CCadObject& contour, const DPOINT2& p) {
    POLYPOS place = NearestSegment(contour, p);
    if (place.nSegIndex < 0) return place;
    const SEGMENT nearest = contour.GetSegment(place.nSegIndex);
    if (nearest.nType != SEGMENT::kBezier)
        place.dRatio = CPosCalculator::GetPerpendicularFootRatio(p, nearest.ptStart, nearest.ptEnd,
                                                                 nearest.GetArc().bulge);
    const int next = place.nSegIndex + 1;
    const int count = contour.GetSegmentCount();
    if (IsSameRatio(place.dRatio, 1) && (contour.IsClose() || next != count))
        place = {next < count ? next : 0, 0.0};
    return place;
}

// The ratio on a closed piece: its end is written as its start.
double StartForEnd(double ratio) {
    return IsSameRatio(ratio, 1) ? 0 : ratio;
}

// The fraction of the turn from angle 0 on in the circle's direction; the centre itself counts as angle 0.
double CircleRatio(const CCadCircle& circle, const DPOINT2& p) {
    const DPOINT2 fromCentre = p - circle.GetCenterPoint();
    double ratio =
        math::Norm(fromCentre) > kZeroLength ? math::D2GetNormalAngle(fromCentre) / math::kTwoPi : 0;
    if (!circle.IsCounterClockwise()) ratio = 1 - ratio;
    return StartForEnd(ratio);
}

// The length up to a point that lies on a segment, within the test of points on lines and arcs.
std::optional<double> LengthTo(const DPOINT2& p, const SEGMENT& segment) {
    const math::BulgeArc arc = segment.GetArc();
    const bool isOn =
        arc.IsStraight() ? math::IsPointInLine(p, arc.start, arc.end) : arc.IsWithin(p, math::kOnCurve);
    if (!isOn) return std::nullopt;
    return arc.IsStraight() ? math::D2GetDistance(p, arc.start) : arc.GetLength() * arc.GetFootRatio(p);
}

// The length up to a point as a fraction of the whole length, 0 when all segments have none. The first
// segment that holds the point counts; 1 when none does.
double RatioAlong(const CCadObject& contour, const DPOINT2& p) {
    const double total = contour.GetLength();
    const int count = contour.GetSegmentCount();
    if (total == 0 && count > 0) return 0;
    double before = 0;
    for (int i = 0; i < count; ++i) {
        const SEGMENT segment = contour.GetSegment(i);
        if (const auto length = LengthTo(p, segment)) return (before + *length) / total;
        before += segment.GetLength();
    }
    return before / total;
}

std::optional<POLYPOS> NearestOnEllipse(const CCadPolyline* polyline, bool closed, const DPOINT2& p) {
    if (!polyline) return std::nullopt;
    DPOINT2 nearest;
    GetMinDistance(polyline, p, nearest);
    const double ratio = RatioAlong(*polyline, nearest);
    return POLYPOS{0, closed ? StartForEnd(ratio) : ratio};
}

// Where a point lies on an object; none for a kind without positions.
std::optional<POLYPOS> NearestPlace(const CCadObject* object, const DPOINT2& p) {
    return VisitCad(
        object, kPickedContours,
        Handle{
            [&](const CCadLine& line) {
                // The distance of the point itself, not of its foot: the hit test has put it beside the
                // line.
                const double length = line.GetLength();
                const double toPoint = math::D2GetDistance(line.GetStartPoint(), p);
                return POLYPOS{0, length > 0 ? toPoint / length : 0};
            },
            [&](const CCadArc& arc) {
                const double ratio = CPosCalculator::GetPerpendicularFootRatio(
                    p, arc.GetStartPoint(), arc.GetEndPoint(), arc.GetBulge());
                return POLYPOS{0, arc.IsClose() ? StartForEnd(ratio) : ratio};
            },
            [&](const CCadCircle& circle) {
                return POLYPOS{0, CircleRatio(circle, p)};
            },
            [&](const CCadEllipse& ellipse) { return NearestOnEllipse(ellipse.GetPolyline(), true, p); },
            [&](const CCadEllipseArc& arc) { return NearestOnEllipse(arc.GetPolyline(), arc.IsClose(), p); },
            [&](const Contour& contour) { return NearestOnContour(contour.object, p); },
            Others<CCadDot>(std::optional<POLYPOS>())});
}

void Select(const std::list<CCadObject*>* objects, CCadGroup* into, bool closedOnly) {
    if (!into) return;
    TreeWalk walk(objects, SelectedMembers);
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
        *info = {nullptr, static_cast<int>(object->GetID()), place->nSegIndex, place->dRatio};
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

double CPosCalculator::GetPtInMultiRatio(const DPOINT2& p, CCadObject* contour) {
    return contour ? RatioAlong(*contour, p) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace qev
