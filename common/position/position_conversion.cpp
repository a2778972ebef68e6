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
#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/line.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"

namespace qev {
namespace {

using math::DPOINT2;
using math::POLYPOS;
using Point = std::optional<DPOINT2>;

// Of a whole ellipse or an arc of one.
template <class Ellipse>
Point PointOfEllipse(const Ellipse& ellipse, double ratio) {
    const CCadPolyline* const polyline = ellipse.GetPolyline();
    POLYPOS mapped;
    DPOINT2 point;
    if (!polyline || !GetMapPos(&ellipse, polyline, {}, {0, ratio}, mapped)
        || !PosToCoor(polyline, mapped.nSegIndex, mapped.dRatio, point))
        return std::nullopt;
    return point;
}

Point PointAt(const CCadObject* object, int index, double ratio) {
    const auto ofFirst = [index](const auto& pointOf) { return index == 0 ? Point(pointOf()) : Point(); };
    return VisitCad(
        object, kPointContours, Point(),
        Handle{[&](const CCadLine& line) -> Point {
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
               [&](const Contour& contour) -> Point {
                   if (index < 0 || index >= contour.object.GetSegmentCount()) return std::nullopt;
                   return contour.object.GetSegment(index).GetPoint(ratio);
               }});
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
    return IsSame(p.x, q.x) && IsSame(p.y, q.y);
}

std::optional<double> RatioOnArc(const SEGMENT& segment, const DPOINT2& point) {
    if (IsAt(point, segment.ptStart)) return 0.0;
    if (IsAt(point, segment.ptEnd)) return 1.0;
    DPOINT2 centre;
    double radius = 0;
    double start = 0;
    double sweep = 0;
    math::SolveArc(segment.ptStart, segment.ptEnd, segment.dBulge, centre, radius, start, sweep);
    const bool left = sweep >= 0;
    if (!math::IsPointInArc(point, centre, radius, start, std::abs(sweep), left) || sweep == 0)
        return std::nullopt;
    const double angle = math::D2GetNormalAngle(point - centre);
    return math::RegularizeRadian(left ? angle - start : start - angle) / std::abs(sweep);
}

std::optional<double> RatioOnSegment(const SEGMENT& segment, const DPOINT2& point) {
    if (segment.nType == SEGMENT::kArc) return RatioOnArc(segment, point);
    const double length = segment.nType == SEGMENT::kLine ? segment.GetLength() : 0;
    if (length == 0 || !math::IsPointInLine(point, segment.ptStart, segment.ptEnd)) return std::nullopt;
    return math::D2GetDistance(segment.ptStart, point) / length;
}

bool IsOnSegment(const SEGMENT& segment, const DPOINT2& point) {
    if (segment.nType == SEGMENT::kLine) return math::IsPointInLine(point, segment.ptStart, segment.ptEnd);
    DPOINT2 centre;
    double radius = 0;
    double start = 0;
    double sweep = 0;
    return math::SolveArc(segment.ptStart, segment.ptEnd, segment.dBulge, centre, radius, start, sweep)
           && math::IsPointInArc(point, centre, radius, start, std::abs(sweep), segment.dBulge > 0);
}

double LengthBefore(const CCadObject& contour, const POLYPOS& pos, double length) {
    const int count = contour.GetSegmentCount();
    for (int i = 0, end = std::min(pos.nSegIndex, count); i < end; ++i)
        length += contour.GetSegment(i).GetLength();
    const bool hasSegment = pos.nSegIndex >= 0 && pos.nSegIndex < count;
    return hasSegment ? length + contour.GetSegment(pos.nSegIndex).GetLength() * pos.dRatio : length;
}

} // namespace

bool PosToCoor(const CCadObject* object, int nSegIndex, double dRatio, DPOINT2& point) {
    if (std::isnan(dRatio)) return false;
    const Point answer = PointAt(object, nSegIndex, std::clamp(dRatio, 0.0, 1.0));
    if (answer) point = *answer;
    return answer.has_value();
}

bool CoorToPos(const CCadObject* object, const DPOINT2& point, POLYPOS& pos, double dTolerance) {
    const CCadObject* hit = Hit(object, point, dTolerance, false);
    if (!hit) return false;
    PosInfo info;
    Picker::Retrieve(*hit, point, info);
    pos = {info.nIndex, info.dRatio};
    return true;
}

bool CoorToPos(const CCadObject* object, const DPOINT2& point, POLYPOS& pos) {
    return CoorToPos(object, point, pos, kDefaultPickTolerance);
}

bool CoorToPos(const CCadPolyline* polyline, const DPOINT2& point, std::vector<POLYPOS>& positions) {
    const int count = polyline ? polyline->GetSegmentCount() : 0;
    for (int i = 0; i < count; ++i) {
        const SEGMENT segment = polyline->GetSegment(i);
        if (!IsOnSegment(segment, point)) continue;
        const double ratio =
            CPosCalculator::GetPerpendicularFootRatio(point, segment.ptStart, segment.ptEnd, segment.dBulge);
        if (!IsSame(ratio, 1) || (i == count - 1 && !polyline->IsClose())) {
            positions.push_back({i, ratio});
            continue;
        }
        ++i; // the joint is recorded once, as the start of the segment after it
        if (i < count) positions.push_back({i, 0.0});
    }
    return !positions.empty();
}

bool CoorToRatio(const CCadObject* object, const DPOINT2& point, int nSegIndex, double& dRatio) {
    using Ratio = std::optional<double>;
    const Ratio ratio = VisitCad(object, kRatioContours, Ratio(), [&](const Contour& contour) {
        const bool hasSegment = nSegIndex >= 0 && nSegIndex < contour.object.GetSegmentCount();
        return hasSegment ? RatioOnSegment(contour.object.GetSegment(nSegIndex), point) : Ratio();
    });
    if (ratio) dRatio = *ratio;
    return ratio.has_value();
}

bool GetLengthStartToPos(const CCadObject* object, const POLYPOS& pos, double& dLength) {
    if (!object) return false;
    const cad_t code = object->GetType();
    if (ShapeOf(code) == Shape::kText || code == kCadGroup) dLength = 0;
    dLength =
        VisitCad(object, kDirectionContours, dLength,
                 Handle{[](const CCadDot&) { return 0.0; },
                        [&](const SinglePiece auto& piece) { return piece.GetLength() * pos.dRatio; },
                        [&](const Contour& contour) { return LengthBefore(contour.object, pos, dLength); }});
    return true;
}

bool FindCadAndPosByPoint(const CCadGroup* group, const DPOINT2& point, const CCadObject*& object,
                          POLYPOS& pos, double dTolerance) {
    CPosCalculator calculator;
    calculator.Init(group, &point, dTolerance);
    PosInfo info;
    if (!calculator.CalculatePosition(&info, false)) return false;
    object = info.pObject;
    pos = {info.nIndex, info.dRatio};
    if (IsInvalidPos(object, pos)) NormalizePos(object, pos);
    return true;
}

bool IsOverStartPoint(const math::PosRange& range) {
    if (IsInvalidRange(range)) return false;
    if (range.start.nSegIndex != range.end.nSegIndex) return range.start.nSegIndex > range.end.nSegIndex;
    return range.end.dRatio <= range.start.dRatio && !IsSame(range.start.dRatio, range.end.dRatio);
}

bool IsOverStartPoint(const POLYPOS& start, const POLYPOS& end) {
    return IsOverStartPoint(math::PosRange(start, end));
}

} // namespace qev
