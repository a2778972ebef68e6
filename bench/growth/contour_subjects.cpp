#include <iterator>
#include <map>

#include <gp_Trsf2d.hxx>
#include <gp_Vec2d.hxx>

#include "subject.h"

namespace qev::bench {
namespace {

using math::POLYPOS;
using math::PosRange;
using Ranges = std::vector<PosRange>;

class Picker : public CPosCalculator {
public:
    using CPosCalculator::_RetrieveNearestPos;
};
double Nearest(const CCadObject& contour, const DPOINT2& p) {
    Picker picker;
    PosInfo info;
    picker.Init(nullptr, &p, 0);
    picker._RetrieveNearestPos(&contour, &info, false);
    return info.nIndex + info.dRatio;
}

// The second position of a question.
const POLYPOS& Other(const Input& in, int i) {
    return in.positions[(i + 1) % Input::kQuestions];
}
PosRange Between(const Input& in, int i) {
    return {in.positions[i], Other(in, i)};
}

double CountOf(CCadMultiSegments* cut) {
    const std::unique_ptr<CCadMultiSegments> owned(cut);
    return cut ? cut->GetSegmentCount() : 0;
}

std::unique_ptr<CTopoMultiPolyline> Regrouped(const CCadPolyline& contour) {
    return std::unique_ptr<CTopoMultiPolyline>(CTopoMultiPolyline::CreateTopoMultiPolyline(&contour));
}
// Regrouped once for each size.
CTopoMultiPolyline& Curve(Input& in) {
    static std::map<int, std::unique_ptr<CTopoMultiPolyline>> kept;
    auto& curve = kept[in.n];
    if (!curve) curve = Regrouped(in.curve);
    return *curve;
}

// The set of the zones, put together once for each size.
const CRangeSet& Zones(Input& in) {
    static std::map<int, CRangeSet> kept;
    return kept.try_emplace(in.n, &in.closed, in.zones).first->second;
}

constexpr Kind kWhole = Kind::kWhole, kQuestion = Kind::kQuestion;

const Subject kSubjects[] = {
    // counts, ends, measures
    {"GetCadSegments", kQuestion, [](Input& in, int) { return Number(GetCadSegments(&in.open)); }},
    {"GetPreSegmentIndex", kQuestion,
     [](Input& in, int i) { return Number(GetPreSegmentIndex(&in.closed, in.positions[i].nSegIndex)); }},
    {"GetNextSegmentIndex", kQuestion,
     [](Input& in, int i) { return Number(GetNextSegmentIndex(&in.closed, in.positions[i].nSegIndex)); }},
    {"IsInvalidPos", kQuestion,
     [](Input& in, int i) { return Number(IsInvalidPos(&in.open, in.positions[i])); }},
    {"IsInvalidRange", kQuestion,
     [](Input& in, int i) { return Number(IsInvalidRange(&in.open, Between(in, i))); }},
    {"NormalizePos", kQuestion,
     [](Input& in, int i) {
         POLYPOS pos = in.positions[i];
         NormalizePos(&in.closed, pos);
         return At(pos);
     }},
    {"NormalizePosRange", kQuestion,
     [](Input& in, int i) {
         PosRange range = Between(in, i);
         NormalizePosRange(&in.closed, range);
         return At(range.end);
     }},
    {"DoubleToPolyPos", kQuestion,
     [](Input& in, int i) { return At(DoubleToPolyPos(&in.closed, At(in.positions[i]))); }},
    {"GetStartPoint", kQuestion, [](Input& in, int) { return Blend(GetStartPoint(&in.open)); }},
    {"GetEndPoint", kQuestion, [](Input& in, int) { return Blend(GetEndPoint(&in.open)); }},
    {"GetCadStartPoint", kQuestion, [](Input& in, int) { return Blend(GetCadStartPoint(&in.open)); }},
    {"GetCadEndPoint", kQuestion, [](Input& in, int) { return Blend(GetCadEndPoint(&in.open)); }},
    {"GetCadLength", kQuestion, [](Input& in, int) { return GetCadLength(&in.open); }},
    {"GetSegLength", kQuestion,
     [](Input& in, int i) {
         return GetSegLength(static_cast<const CCadObject*>(&in.open), in.positions[i].nSegIndex);
     }},
    {"GetSegLength of a polyline", kQuestion,
     [](Input& in, int i) { return GetSegLength(&in.open, in.positions[i].nSegIndex); }},
    {"GetCadPolylineArea", kWhole, [](Input& in, int) { return GetCadPolylineArea(&in.closed, true); }},
    {"GetCadOBjectDir", kWhole, [](Input& in, int) { return Number(GetCadOBjectDir(&in.closed)); }},
    {"GetContourDirectionEx", kWhole,
     [](Input& in, int) { return Number(GetContourDirectionEx(&in.closed)); }},
    {"EndsMeet", kQuestion, [](Input& in, int) { return Number(EndsMeet(in.closed)); }},
    {"GetVector", kQuestion,
     [](Input& in, int i) { return Blend(GetVector(&in.open, in.positions[i].nSegIndex, 0.5)); }},
    {"GetCornerAngle", kQuestion,
     [](Input& in, int i) { return GetCornerAngle(&in.open, in.positions[i].nSegIndex); }},
    {"ConvexGrahamScan", kWhole,
     [](Input& in, int) {
         std::vector<CConvexHelper::Point> corners;
         CConvexHelper::ConvexGrahamScan(in.cloud, corners);
         return static_cast<double>(corners.size());
     }},
    // the contours' own
    {"GetLength of a contour", kQuestion, [](Input& in, int) { return in.open.GetLength(); }},
    {"GetBoundRect of a contour", kQuestion, [](Input& in, int) { return in.open.GetBoundRect().width; }},
    {"Clone of a contour", kWhole,
     [](Input& in, int) {
         const std::unique_ptr<CCadObject> clone(in.open.Clone(false));
         return Blend(clone->GetStartPoint());
     }},
    {"ReverseDir of a contour", kWhole, [](Input& in, int) { return in.beziers.ReverseDir(false), 0.0; }},
    {"AddLine to a contour", kWhole,
     [](Input& in, int) {
         CCadPolyline made(false);
         made.SetStartPoint({0, 0});
         for (int i = 1; i <= in.n; ++i) made.AddLine({1.0 * i, 0});
         return Blend(made.GetEndPoint());
     }},
    {"AddArc to a contour", kWhole,
     [](Input& in, int) {
         CCadPolyline made(false);
         for (int i = 1; i <= in.n; ++i) made.AddArc({1.0 * i, 0}, 0.1);
         return Blend(made.GetEndPoint());
     }},
    {"AddBezier to a contour", kWhole,
     [](Input& in, int) {
         CCadPolylineEx made(false);
         for (const SEGMENT& piece : in.beziers.GetNodes())
             made.AddBezier(piece.ptCtrl1, piece.ptCtrl2, piece.ptEnd);
         return Blend(made.GetEndPoint());
     }},
    {"ApplyTransform", kWhole, [](Input& in, int) { return in.closed.ApplyTransform({}), 0.0; }},
    {"ApplyTransform2D", kWhole, [](Input& in, int) { return in.beziers.ApplyTransform2D({}), 0.0; }},
    {"GetDirection of a contour", kWhole, [](Input& in, int) { return Number(in.closed.GetDirection()); }},
    // positions
    {"PosToCoor", kQuestion,
     [](Input& in, int i) {
         DPOINT2 point;
         PosToCoor(&in.open, in.positions[i].nSegIndex, in.positions[i].dRatio, point);
         return Blend(point);
     }},
    {"CoorToPos", kQuestion,
     [](Input& in, int i) {
         POLYPOS pos;
         CoorToPos(&in.open, in.near[i], pos, 5);
         return At(pos);
     }},
    {"CoorToPos for all positions", kQuestion,
     [](Input& in, int i) {
         std::vector<POLYPOS> found;
         CoorToPos(&in.open, in.on[i], found);
         return static_cast<double>(found.size());
     }},
    {"CoorToRatio", kQuestion,
     [](Input& in, int i) {
         double ratio = 0;
         CoorToRatio(&in.open, in.on[i], in.positions[i].nSegIndex, ratio);
         return ratio;
     }},
    {"_RetrieveNearestPos", kQuestion, [](Input& in, int i) { return Nearest(in.open, in.near[i]); }},
    {"_RetrieveNearestPos of Beziers", kQuestion,
     [](Input& in, int i) { return Nearest(in.beziers, in.near[i]); }},
    {"GetMinDistance", kQuestion,
     [](Input& in, int i) {
         DPOINT2 nearest;
         return GetMinDistance(&in.open, in.near[i], nearest);
     }},
    {"GetMinDistance of Beziers", kQuestion,
     [](Input& in, int i) {
         DPOINT2 nearest;
         return GetMinDistance(&in.beziers, in.near[i], nearest);
     }},
    {"GetPointSide", kQuestion,
     [](Input& in, int i) { return Number(GetPointSide(&in.closed, in.near[i], 0.01)); }},
    {"GetClearance", kQuestion,
     [](Input& in, int i) {
         const CCadCircle circle(in.near[i], 3, true, false);
         return GetClearance(&in.beziers, &circle);
     }},
    {"GetPtInMultiRatio", kQuestion,
     [](Input& in, int i) { return CPosCalculator::GetPtInMultiRatio(in.on[i], &in.open); }},
    {"GetLengthStartToPos", kQuestion,
     [](Input& in, int i) {
         double length = 0;
         GetLengthStartToPos(&in.open, in.positions[i], length);
         return length;
     }},
    {"GetLineLength_Dot2Dot", kQuestion,
     [](Input& in, int i) {
         double length = 0;
         GetLineLength_Dot2Dot(&in.open, in.positions[i], Other(in, i), length);
         return length;
     }},
    {"GetLineLength_Dot2Dot2", kQuestion,
     [](Input& in, int i) {
         double length = 0;
         GetLineLength_Dot2Dot2(&in.closed, in.positions[i], Other(in, i), length);
         return length;
     }},
    {"GetPosByOffset", kQuestion,
     [](Input& in, int i) {
         POLYPOS pos;
         GetPosByOffset(&in.open, in.positions[0], in.lengths[i], pos);
         return At(pos);
     }},
    {"GetOffsetTable", kWhole,
     [](Input& in, int) {
         std::vector<int> table;
         GetOffsetTable(in.n, in.n, 1, table);
         return static_cast<double>(table.size());
     }},
    {"CollectPos", kWhole,
     [](Input& in, int) {
         std::vector<int> joints;
         CollectPos(&in.open, 1, joints);
         return static_cast<double>(joints.size());
     }},
    {"CollectTurnDirPos", kWhole,
     [](Input& in, int) {
         std::vector<int> joints, second;
         CollectTurnDirPos(&in.closed, 1, joints, 4, second);
         return static_cast<double>(joints.size() + second.size());
     }},
    {"Convert2Polyline", kWhole, [](Input& in, int) { return CountOf(Convert2Polyline(&in.open, 1, 0.01)); }},
    {"Convert2Polyline with a map", kWhole,
     [](Input& in, int) {
         std::vector<int> map;
         return CountOf(Convert2Polyline(&in.open, map, 0.01));
     }},
    {"Convert2Polyline of Beziers", kWhole,
     [](Input& in, int) { return CountOf(Convert2Polyline(&in.beziers, 0.01)); }},
    {"operator() of the converter", kWhole,
     [](Input& in, int) {
         CCadPolyline* made = nullptr;
         CConvertCadObjectToCadPolyline("SegmentType=Both;AbsoluteError=0.01;")(&in.beziers, made);
         return CountOf(made);
     }},
    {"GetMapPos", kQuestion,
     [](Input& in, int i) {
         POLYPOS pos;
         GetMapPos(&in.open, in.chords.get(), in.chordMap, in.positions[i], pos);
         return At(pos);
     }},
    // goes over the map, which is the caller's and in any order
    {"GetMapPos by length", kWhole,
     [](Input& in, int i) {
         POLYPOS pos;
         GetMapPos(&in.open, in.positions[i], in.chords.get(), pos, in.chordMap);
         return At(pos);
     }},
    {"MapPos", kQuestion,
     [](Input& in, int i) {
         int segment = in.positions[i].nSegIndex;
         double ratio = 0;
         MapPos(&in.open, in.chords.get(), &in.chordMap, segment, in.positions[i].dRatio, &segment, &ratio);
         return segment + ratio;
     }},
    {"FindSegmentIndexByRate", kQuestion,
     [](Input& in, int i) {
         double before = 0;
         return FindSegmentIndexByRate(&in.open, At(in.positions[i]) / in.n, 0, 0, before) + before;
     }},
    {"GetSegMap", kWhole,
     [](Input& in, int) {
         std::vector<int> map;
         GetSegMap(&in.open, &in.closed, map);
         return static_cast<double>(map.size());
     }},
    // ranges
    {"GetMultiSementsByRange", kWhole,
     [](Input& in, int i) { return CountOf(GetMultiSementsByRange(&in.closed, Between(in, i))); }},
    {"GetPolylineByRange", kWhole,
     [](Input& in, int i) { return CountOf(GetPolylineByRange(&in.closed, Between(in, i))); }},
    {"CutStretch", kWhole, [](Input& in, int i) { return CountOf(CutStretch(&in.closed, Between(in, i))); }},
    {"GetMultiSementsByRangeRound", kWhole,
     [](Input& in, int i) { return CountOf(GetMultiSementsByRangeRound(&in.closed, Between(in, i), 1)); }},
    {"GenerateInvalidRange", kQuestion,
     [](Input& in, int i) {
         PosRange range;
         GenerateInvalidRange(&in.closed, in.positions[i], 1, 1, range);
         return At(range.end);
     }},
    {"GenerateCornerInvalidRange", kWhole,
     [](Input& in, int) {
         Ranges ranges;
         GenerateCornerInvalidRange(&in.closed, 0.01, 1, &ranges);
         return static_cast<double>(ranges.size());
     }},
    {"IsRangeIntersected round a position", kQuestion,
     [](Input& in, int i) {
         return Number(IsRangeIntersected(&in.closed, in.positions[i], 1, 1, in.zones[i]));
     }},
    {"IsRangeIntersected of a list and a position", kWhole,
     [](Input& in, int i) { return Number(IsRangeIntersected(&in.zones, in.positions[i])); }},
    {"IsRangeIntersected of a list and a range", kWhole,
     [](Input& in, int i) { return Number(IsRangeIntersected(&in.zones, in.gaps[i])); }},
    {"IsRangeIntersected of two lists", kWhole,
     [](Input& in, int) { return Number(IsRangeIntersected(&in.zones, &in.gaps)); }},
    {"CRangeSet", kWhole,
     [](Input& in, int) { return Number(CRangeSet(&in.closed, in.shuffled).GetRanges().size()); }},
    {"GetFree", kWhole,
     [](Input& in, int) {
         Ranges free;
         CRangeSet(&in.closed, in.zones).GetFree(free);
         return Number(free.size());
     }},
    {"Holds", kQuestion, [](Input& in, int i) { return Number(Zones(in).Holds(in.positions[i])); }},
    {"Meets", kQuestion, [](Input& in, int i) { return Number(Zones(in).Meets(in.gaps[i])); }},
    {"IsWhole", kQuestion, [](Input& in, int) { return Number(Zones(in).IsWhole()); }},
    {"SortRange", kWhole,
     [](Input& in, int) {
         Ranges ranges = in.shuffled;
         SortRange(&ranges);
         return At(ranges.front().start);
     }},
    {"SortRange with equal starts", kWhole,
     [](Input& in, int) {
         Ranges ranges = in.paired;
         SortRange(&ranges);
         return At(ranges.front().start);
     }},
    {"SortRange with one that is no number", kWhole,
     [](Input& in, int) {
         Ranges ranges = in.shuffled;
         ranges[in.n / 4].start.dRatio = std::nan("");
         SortRange(&ranges);
         return At(ranges.back().end);
     }},
    {"CombineRange", kWhole,
     [](Input& in, int) {
         Ranges ranges = in.zones;
         CombineRange(&ranges, in.n);
         return static_cast<double>(ranges.size());
     }},
    // regrouped contours
    {"CreateTopoMultiPolyline", kWhole,
     [](Input& in, int) { return Number(Regrouped(in.open)->GetNodeCount()); }},
    {"CreateTopoMultiPolyline of one curve", kWhole,
     [](Input& in, int) { return Number(Regrouped(in.curve)->GetNodeCount()); }},
    {"GetPoint of a regrouped curve", kQuestion,
     [](Input& in, int i) { return Blend(Curve(in).GetPoint(0, in.positions[i].dRatio)); }},
    {"GetEndPoint of a regrouped curve", kQuestion,
     [](Input& in, int) { return Blend(Curve(in).GetEndPoint()); }},
    {"CTopoMultiPolyline copied", kWhole,
     [](Input& in, int) { return Number(CTopoMultiPolyline(Curve(in)).GetNodeCount()); }},
    {"operator= of a regrouped curve", kWhole,
     [](Input& in, int) {
         static CTopoMultiPolyline copy(Curve(in));
         copy = Curve(in);
         return Number(copy.GetNodeCount());
     }},
    {"ReverseDir of a regrouped curve", kWhole, [](Input& in, int) { return Curve(in).ReverseDir(), 0.0; }},
    {"Translate of a regrouped curve", kWhole,
     [](Input& in, int) { return Curve(in).Translate(gp_Vec2d(1, 0)), 0.0; }},
    {"Rotate of a regrouped curve", kWhole,
     [](Input& in, int) {
         return Curve(in).Rotate({0, 0}, 1), 0.0;
     }},
    {"Mirror of a regrouped curve", kWhole,
     [](Input& in, int) {
         return Number(Curve(in).Mirror({0, 0}, 1));
     }},
};

} // namespace

std::span<const Subject> ContourSubjects() {
    return kSubjects;
}

} // namespace qev::bench
