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
#include <utility>

#include <qev/position/nearest_position.h>
#include <qev/types.h>
#include <qevdata/group_index.h>
#include <qevdata/picking.h>
#include <qevdata/polyline.h>
#include <qevdata/tree_walk.h>
#include <qevmath/angle.h>
#include <qevmath/line.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"
#include "data/picked.h"
#include "data/running_lengths.h"
#include "segment_distance.h"

namespace qev {
namespace {

using math::DPOINT2;
using math::POLYPOS;

// The nearest place so far. Only a distance that is smaller by more than kSameLength replaces it, so that the
// first of equal segments wins.
struct Nearest {
    double distance = std::numeric_limits<double>::max();
    POLYPOS place{-1, 0.0};

    void Take(double candidate, const POLYPOS& at) {
        if (!(candidate + kSameLength < distance)) return;
        distance = candidate;
        place = at;
    }
};

// The step is the number that hosts have stored positions with: 0.01 in single precision.
constexpr double kSampleStep = 0.01f;

// Offers the samples of a Bezier piece, in order, by offer(distance, ratio). Along the piece the distance
// changes by no more than the length does: so those samples are passed over that cannot be within `reach`.
template <class Offer>
void SearchSamples(const SEGMENT& piece, const DPOINT2& p, double length, double reach, const Offer& offer) {
    constexpr double kSlack = 1e-6; // of the steps: more than the samples' places on the piece are off by
    int passedOver = 0;
    for (double ratio = 0; ratio <= 1; ratio += kSampleStep) { // NOLINT: the sum is meant
        if (passedOver > 0) {
            --passedOver;
            continue;
        }
        const double distance = math::D2GetDistance(p, piece.GetPoint(ratio));
        offer(distance, ratio);
        const double steps = (distance - reach) / (kSampleStep * length) * (1 - kSlack);
        if (steps >= 1) passedOver = static_cast<int>(std::min(steps, 1 / kSampleStep));
    }
}

// Only an arc has a bulge, whatever the field of a line says. `solved` is its centre form, or null.
double DistanceTo(const SEGMENT& segment, const math::CentreArc* solved, const DPOINT2& p) {
    return SegmentDistance(p, segment.ptStart, segment.ptEnd, segment.GetArc().bulge, solved);
}

// The search of all segments, which is what a nearest segment is by definition.
POLYPOS NearestOfAll(const CCadObject& contour, const DPOINT2& p) {
    constexpr double kEverywhere = std::numeric_limits<double>::infinity();
    Nearest nearest;
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i) {
        const SEGMENT segment = contour.GetSegment(i);
        if (segment.nType == SEGMENT::kBezier)
            SearchSamples(segment, p, 0, kEverywhere, [&](double distance, double ratio) {
                nearest.Take(distance, {i, ratio});
            });
        else
            nearest.Take(DistanceTo(segment, nullptr, p), {i, 0.0});
    }
    return nearest.place;
}

// The place that NearestOfAll ends with, found by looking at those segments only that are near; nothing when
// that cannot be told. Every distance that is computed for another segment, or for a sample that is passed
// over, is more than `reach`.
//
// NearestOfAll does not simply end with the least distance: it goes by what it has met before. But every
// place s that is nearer than all places before it by more than kSameLength is taken by NearestOfAll,
// whatever it held, and by this search, which sees a part of them. From s on both hold s. They go on alike:
// both look at the near places in the same order, and one that is not looked at here is farther away than
// `reach`, so that NearestOfAll does not take it while it holds something nearer than `reach`. It is
// therefore enough to meet one such s whose distance lies below `reach` by more than kSameLength. That is
// what `leastBefore` tells: it starts at `reach`, which stands for all places that are not looked at, and
// goes down with the others. When no such s was met, because distances within kSameLength of each other
// lie along the way, the answer is nothing, and all segments are searched.
class NearSearch {
public:
    NearSearch(const CCadObject& contour, const ContourIndex& index, const DPOINT2& p, double reach)
        : m_contour(contour), m_index(index), m_point(p), m_dReach(reach), m_dLeastBefore(reach) {}

    void LookAt(int i) {
        const SEGMENT segment = SegmentOf(m_contour, &m_index, i);
        const auto offer = [this, i](double distance, double ratio) {
            m_nearest.Take(distance, {i, ratio});
            m_bSure = m_bSure || distance + kSameLength < m_dLeastBefore; // an s, which has been taken
            m_dLeastBefore = std::min(m_dLeastBefore, distance);
        };
        if (segment.nType == SEGMENT::kBezier)
            SearchSamples(segment, m_point, m_index.GetSegmentLength(i), m_dReach, offer);
        else
            offer(DistanceTo(segment, m_index.FindSolved(i), m_point), 0);
    }
    std::optional<POLYPOS> Answer() const { return m_bSure ? std::optional(m_nearest.place) : std::nullopt; }

private:
    const CCadObject& m_contour;
    const ContourIndex& m_index;
    DPOINT2 m_point;
    double m_dReach;
    double m_dLeastBefore;
    Nearest m_nearest;
    bool m_bSure = false;
};

// A single near segment needs no search: its distance lies below `reach` by a margin, which is more than
// kSameLength, so that it would be the s of the search.
std::optional<POLYPOS> NearestByIndex(const CCadObject& contour, const ContourIndex& index, const DPOINT2& p,
                                      const NearSegments& near) {
    if (near.isListed && near.count == 1 && index.HasNoBezier()) return POLYPOS{near.segments[0], 0.0};
    NearSearch search(contour, index, p, near.Reach());
    if (near.isListed)
        for (int k = 0; k < near.count; ++k) search.LookAt(near.segments[k]);
    else
        index.VisitWithin(p, near.Reach() + near.margin, [&](int i) { search.LookAt(i); });
    return search.Answer();
}

// `near` is null where the segments near p are not known yet.
POLYPOS NearestSegment(const CCadObject& contour, const ContourIndex* index, const DPOINT2& p,
                       const NearSegments* near) {
    NearSegments own;
    if (!index || (!near && !index->FindNear(contour, p, own))) return NearestOfAll(contour, p);
    const auto found = NearestByIndex(contour, *index, p, near ? *near : own);
    return found ? *found : NearestOfAll(contour, p);
}

// The place on the nearest segment; the end of a segment that another one follows is the start of that one.
// The index is -1 when there is no nearest segment.
POLYPOS NearestOnContour(const CCadObject& contour, const DPOINT2& p, const NearSegments* near) {
    const ContourIndex* index = IndexOf(contour);
    POLYPOS place = NearestSegment(contour, index, p, near);
    const int i = place.nSegIndex;
    if (i < 0) return place;
    const SEGMENT nearest = SegmentOf(contour, index, i);
    if (nearest.nType != SEGMENT::kBezier)
        place.dRatio = SegmentFootRatio(p, nearest.ptStart, nearest.ptEnd, nearest.GetArc().bulge,
                                        index ? index->FindSolved(i) : nullptr);
    if (!IsSameRatio(place.dRatio, 1)) return place;
    const int count = contour.GetSegmentCount();
    if (i + 1 != count || contour.IsClose()) place = {i + 1 < count ? i + 1 : 0, 0.0};
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

// The first segment that holds a point, and the length up to the point on it; none when no segment does.
std::optional<std::pair<int, double>> FirstHolding(const CCadObject& contour, const DPOINT2& p) {
    std::optional<std::pair<int, double>> found;
    VisitSegmentsAt(contour, p, [&](int i) {
        const auto length = found ? std::nullopt : LengthTo(p, contour.GetSegment(i));
        if (length) found.emplace(i, *length);
    });
    return found;
}

// The length up to a point as a fraction of the whole length, 0 when all segments have none. The first
// segment that holds the point counts; 1 when none does.
double RatioAlong(const CCadObject& contour, const DPOINT2& p) {
    const double total = contour.GetLength();
    const RunningLengths lengths(contour);
    if (total == 0 && lengths.GetCount() > 0) return 0;
    const auto held = FirstHolding(contour, p);
    return (held ? lengths.Before(held->first) + held->second : lengths.Total()) / total;
}

std::optional<POLYPOS> NearestOnEllipse(const CCadPolyline* polyline, bool closed, const DPOINT2& p) {
    if (!polyline) return std::nullopt;
    DPOINT2 nearest;
    GetMinDistance(polyline, p, nearest);
    const double ratio = RatioAlong(*polyline, nearest);
    return POLYPOS{0, closed ? StartForEnd(ratio) : ratio};
}

// Where a point lies on an object; none for a kind without positions. `near` is null, or the segments of the
// object that a search for it has found near. Both kinds that keep an index are picked, and need not be asked
// what they are.
std::optional<POLYPOS> NearestPlace(const CCadObject* object, const DPOINT2& p, const NearSegments* near) {
    if (ContourIndex::KeptBy(*object)) return NearestOnContour(*object, p, near);
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
            [&](const Contour& contour) { return NearestOnContour(contour.object, p, near); },
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
    m_pIndex = nullptr;
    if (point) m_ptPoint = *point;
    m_dTolerance = tolerance;
}

void CPosCalculator::Init(const CGroupIndex& index, const DPOINT2* point, double tolerance) {
    Init(nullptr, point, tolerance);
    m_pIndex = &index;
}

bool CPosCalculator::CalculatePosition(PosInfo* info, bool bClosedOnly) {
    if (!info) return false;
    const Picked hit = m_pIndex ? Pick(*m_pIndex, m_ptPoint, m_dTolerance, bClosedOnly)
                                : Pick(m_pGroup, m_ptPoint, m_dTolerance, bClosedOnly);
    if (!hit.object) return false;
    const bool found = Retrieve(hit.object, &hit, info, bClosedOnly);
    info->pObject = hit.object;
    return found;
}

bool CPosCalculator::_RetrieveNearestPos(const CCadObject* object, PosInfo* info, bool bClosedOnly) const {
    return Retrieve(object, nullptr, info, bClosedOnly);
}

// `hit` is null, or what the pick has learned of the object, which then need not be searched again.
bool CPosCalculator::Retrieve(const CCadObject* object, const Picked* hit, PosInfo* info,
                              bool closedOnly) const {
    if (!object || !info || (closedOnly && !object->IsClose())) return false;
    if (const auto place = NearestPlace(object, m_ptPoint, hit && hit->hasNear ? &hit->near : nullptr))
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
