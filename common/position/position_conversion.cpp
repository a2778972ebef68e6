// Positions as points of the drawing, and back.
//
// A point of a contour is the segment's point at the ratio, one of an ellipse the point of its converted
// polyline at the fraction of its length. Back, the picking of the data library finds the object and the
// nearest position on it; on one segment that is given, the point has to lie on it first, and the ratio is
// that of the distance or of the angle from its start. These two ways back differ in a few digits, and each
// is the inverse that its callers know.
//
// Error: the ratio on a line is right to about 1e-16 of the coordinates over the length. Points are tested
// against arcs in chord form (math::BulgeArc), since the far centre of a nearly straight arc would blur them:
// a point that an arc answers is always found on it again, with a ratio that is right to some 1e-16.

#include <algorithm>
#include <cmath>
#include <optional>

#include <qev/measure/measures.h>
#include <qev/measure/positions.h>
#include <qev/position/converted_position.h>
#include <qev/position/nearest_position.h>
#include <qev/position/position_conversion.h>
#include <qevdata/picking.h>
#include <qevdata/polyline.h>
#include <qevmath/arc.h>
#include <qevmath/line.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"
#include "data/contour_index.h"
#include "length_up_to.h"

namespace qev {
namespace {

using math::DPOINT2;
using math::POLYPOS;
using MaybePoint = std::optional<DPOINT2>;

// The point of a whole ellipse, or an arc of one, by its converted polyline: none when it cannot be
// converted.
template <class Ellipse>
MaybePoint PointOfEllipse(const Ellipse& ellipse, double ratio) {
    const CCadPolyline* const polyline = ellipse.GetPolyline();
    POLYPOS mapped;
    DPOINT2 point;
    if (!polyline || !GetMapPos(&ellipse, polyline, {}, {0, ratio}, mapped)
        || !PosToCoor(polyline, mapped.nSegIndex, mapped.dRatio, point))
        return std::nullopt;
    return point;
}

// `kept` is the index that the contour keeps, or null.
MaybePoint PointOnContour(const CCadObject& contour, const ContourIndex* kept, int index, double ratio) {
    const int count = kept ? kept->GetSegmentCount() : contour.GetSegmentCount();
    if (index < 0 || index >= count) return std::nullopt;
    return PointOf(contour, kept, index, ratio);
}

// A line answers whatever the index is, the other single pieces for their only segment 0. Both kinds that
// keep an index are served, and need not be asked what they are.
MaybePoint PointAt(const CCadObject* object, int index, double ratio) {
    const ContourIndex* const kept = object ? ContourIndex::KeptBy(*object) : nullptr;
    if (kept) return PointOnContour(*object, kept, index, ratio);
    const auto ofFirst = [index](const auto& pointOf) {
        return index == 0 ? MaybePoint(pointOf()) : MaybePoint();
    };
    return VisitCad(
        object, kPointContours,
        Handle{[&](const CCadLine& line) {
                   return SEGMENT(line.GetStartPoint(), line.GetEndPoint()).GetPoint(ratio);
               },
               [&](const CCadArc& arc) {
                   return ofFirst([&] { return arc.GetPoint(arc.GetCentralAngle() * ratio); });
               },
               [&](const CCadCircle& circle) {
                   const double angle = ratio * math::kTwoPi;
                   return ofFirst([&] {
                       return circle.GetPoint(circle.IsCounterClockwise() ? angle : math::kTwoPi - angle);
                   });
               },
               [&](const CCadEllipse& ellipse) {
                   return ofFirst([&] { return PointOfEllipse(ellipse, ratio); });
               },
               [&](const CCadEllipseArc& arc) { return ofFirst([&] { return PointOfEllipse(arc, ratio); }); },
               [&](const Contour& contour) { return PointOnContour(contour.object, nullptr, index, ratio); },
               Others<CCadDot>(MaybePoint())});
}

// Picks with the calculator's search.
struct Picker : CPosCalculator {
    static bool Retrieve(const CCadObject& object, const DPOINT2& point, PosInfo& info) {
        Picker picker;
        picker.Init(nullptr, &point, 0);
        return picker._RetrieveNearestPos(&object, &info, false);
    }
};

bool IsAt(const DPOINT2& p, const DPOINT2& q) {
    return IsSameLength(p.x, q.x) && IsSameLength(p.y, q.y);
}

// Whether a point lies on an arc segment; an arc that cannot be solved holds none.
bool IsOnArc(const SEGMENT& segment, const DPOINT2& point) {
    const bool isSolved = math::SolveCentreArc(segment.ptStart, segment.ptEnd, segment.dBulge).has_value();
    return isSolved && segment.GetArc().IsWithin(point, math::kOnCurve);
}

// The ends answer exactly 0 and 1; between them the angle travelled over the sweep.
std::optional<double> RatioOnArc(const SEGMENT& segment, const DPOINT2& point) {
    if (IsAt(point, segment.ptStart)) return 0.0;
    if (IsAt(point, segment.ptEnd)) return 1.0;
    return IsOnArc(segment, point) ? std::optional(segment.GetArc().GetFootRatio(point)) : std::nullopt;
}

std::optional<double> RatioOnSegment(const SEGMENT& segment, const DPOINT2& point) {
    if (segment.nType == SEGMENT::kArc) return RatioOnArc(segment, point);
    const double length = segment.nType == SEGMENT::kLine ? segment.GetLength() : 0;
    if (length == 0 || !math::IsPointInLine(point, segment.ptStart, segment.ptEnd)) return std::nullopt;
    return math::D2GetDistance(segment.ptStart, point) / length;
}

bool IsOnSegment(const SEGMENT& segment, const DPOINT2& point) {
    return segment.nType == SEGMENT::kLine ? math::IsPointInLine(point, segment.ptStart, segment.ptEnd)
                                           : IsOnArc(segment, point);
}

} // namespace

bool PosToCoor(const CCadObject* object, int nSegIndex, double dRatio, DPOINT2& point) {
    if (std::isnan(dRatio)) return false;
    const MaybePoint answer = PointAt(object, nSegIndex, std::clamp(dRatio, 0.0, 1.0));
    if (answer) point = *answer;
    return answer.has_value();
}

bool CoorToPos(const CCadObject* object, const DPOINT2& point, POLYPOS& pos, double dTolerance) {
    const CCadObject* hit = Hit(object, point, dTolerance, false);
    if (!hit) return false;
    PosInfo info;
    Picker::Retrieve(*hit, point, info);
    if (info.nIndex < 0) return false;
    pos = {info.nIndex, info.dRatio};
    return true;
}

bool CoorToPos(const CCadObject* object, const DPOINT2& point, POLYPOS& pos) {
    return CoorToPos(object, point, pos, kDefaultPickTolerance);
}

bool CoorToPos(const CCadPolyline* polyline, const DPOINT2& point, std::vector<POLYPOS>& positions) {
    if (!polyline) return !positions.empty();
    const int count = polyline->GetSegmentCount();
    int passed = -1; // the segment behind a joint that has been recorded
    VisitSegmentsAt(*polyline, point, [&](int i) {
        const SEGMENT segment = polyline->GetSegment(i);
        if (i == passed || !IsOnSegment(segment, point)) return;
        const double ratio =
            CPosCalculator::GetPerpendicularFootRatio(point, segment.ptStart, segment.ptEnd, segment.dBulge);
        if (!IsSameRatio(ratio, 1) || (i == count - 1 && !polyline->IsClose())) {
            positions.push_back({i, ratio});
            return;
        }
        passed =
            i + 1; // The point is at a joint, which is recorded once, as the start of the segment after it.
        if (passed < count) positions.push_back({passed, 0.0});
    });
    return !positions.empty();
}

bool CoorToRatio(const CCadObject* object, const DPOINT2& point, int nSegIndex, double& dRatio) {
    if (!object || !kRatioContours.Has(object->GetType())) return false;
    if (nSegIndex < 0 || nSegIndex >= object->GetSegmentCount()) return false;
    const std::optional<double> ratio = RatioOnSegment(object->GetSegment(nSegIndex), point);
    if (ratio) dRatio = *ratio;
    return ratio.has_value();
}

bool GetLengthStartToPos(const CCadObject* object, const POLYPOS& pos, double& dLength) {
    if (!object) return false;
    const cad_t code = object->GetType();
    if (ShapeOf(code) == Shape::kText || code == kCadGroup) dLength = 0;
    dLength = GetLengthUpTo(object, kDirectionContours, pos, dLength);
    return true;
}

bool FindCadAndPosByPoint(const CCadGroup* group, const DPOINT2& point, const CCadObject*& object,
                          POLYPOS& pos, double dTolerance) {
    CPosCalculator calculator;
    calculator.Init(group, &point, dTolerance);
    PosInfo info;
    if (!calculator.CalculatePosition(&info, false) || info.nIndex < 0) return false;
    object = info.pObject;
    pos = {info.nIndex, info.dRatio};
    NormalizePos(object, pos);
    return true;
}

} // namespace qev
