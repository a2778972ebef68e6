// Cutting a stretch of a contour out. A segment that is taken whole keeps its bulge to the bit; of a part the
// bulge is the tangent of a quarter of the part's angle, and the ends are points of the segment, so that the
// part lies on the same circle. The cut begins as a polyline and becomes an extended one when the first
// Bezier piece is met, since most cuts have none and callers work faster with polylines.
//
// Error: the ends of a part are right to about 1e-16 of the coordinates, its bulge to 1e-16 of itself, so
// that the part leaves the circle by no more than the rounding of its ends.

#include <cmath>
#include <memory>

#include <qev/measure/positions.h>
#include <qev/range/sub_contour.h>
#include <qevdata/polyline.h>
#include <qevdata/polyline_ex.h>
#include <qevmath/arc.h>
#include <qevmath/elementary.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

// The cut while it grows: a polyline until a Bezier piece asks for an extended one.
class Cut {
public:
    explicit Cut(const math::DPOINT2& start) : m_pPlain(std::make_unique<CCadPolyline>(true)) {
        m_pPlain->SetStartPoint(start);
    }

    // Adds the stretch of a segment between two ratios. Of a part of a Bezier piece nothing is added, kept
    // so; the polyline becomes an extended one all the same.
    void Add(const SEGMENT& segment, double from, double to) {
        const bool whole = from == 0 && to == 1;
        if (segment.nType == SEGMENT::kBezier) {
            Extend();
            if (whole) m_pExtended->AddBezier(segment.ptCtrl1, segment.ptCtrl2, segment.ptEnd);
        } else if (whole) {
            AddArc(segment.ptEnd, segment.GetArc().bulge);
        } else {
            AddArc(segment.GetPoint(to), PartialBulge(segment, to - from));
        }
    }

    std::unique_ptr<CCadMultiSegments> Take() {
        if (m_pExtended) return std::move(m_pExtended);
        return std::move(m_pPlain);
    }

private:
    // The bulge of a part of a segment; 0 for a line, which has no sweep.
    static double PartialBulge(const SEGMENT& segment, double part) {
        const auto arc = math::SolveCentreArc(segment.ptStart, segment.ptEnd, segment.GetArc().bulge);
        return math::Tan(part * (arc ? arc->sweep : 0) * 0.25);
    }

    void AddArc(const math::DPOINT2& end, double bulge) {
        if (m_pExtended)
            m_pExtended->AddArc(end, bulge);
        else
            m_pPlain->AddArc(end, bulge);
    }

    void Extend() {
        if (m_pExtended) return;
        m_pExtended = std::make_unique<CCadPolylineEx>(true);
        m_pExtended->SetStartPoint(m_pPlain->GetStartPoint());
        for (const auto& node : m_pPlain->GetNodes()) m_pExtended->AddArc({node.x, node.y}, node.bulge);
        m_pPlain.reset();
    }

    std::unique_ptr<CCadPolyline> m_pPlain;
    std::unique_ptr<CCadPolylineEx> m_pExtended;
};

// Where a joint mode moves a ratio: to the segment's start (0) or end (1). A position at a segment's start is
// at a joint already and stays, one at its end moves as any other.
double RoundedRatio(double ratio, int mode, bool isStart) {
    constexpr int kNearest = 1;
    constexpr int kOutward = 2;
    constexpr int kInward = 3;
    if (IsSameRatio(ratio, 0)) return 0;
    if (mode == kNearest) return ratio < 0.5 ? 0 : 1;
    if (mode == kOutward) return isStart ? 0 : 1;
    if (mode == kInward) return isStart || IsSameRatio(ratio, 1) ? 1 : 0;
    return ratio;
}

// Segments from one position to another in the contour's direction, fractions included; once round for equal
// ones.
double SpanInSegments(const math::PosRange& range, int count) {
    const double span = PolyPosToDouble(range.end) - PolyPosToDouble(range.start);
    return span > 0 ? span : span + count;
}

} // namespace

CCadMultiSegments* GetMultiSementsByRange(const CCadMultiSegments* contour, const math::PosRange& range) {
    if (IsInvalidRange(contour, range)) return nullptr;
    const int count = contour->GetSegmentCount();
    const bool runsRound =
        range.start.nSegIndex == range.end.nSegIndex && !(range.end.dRatio > range.start.dRatio);
    int i = range.start.nSegIndex;
    double from = range.start.dRatio;
    Cut cut(contour->GetSegment(i).GetPoint(from));
    for (bool first = true;; first = false) {
        const bool last = i == range.end.nSegIndex && !(first && runsRound);
        cut.Add(contour->GetSegment(i), from, last ? range.end.dRatio : 1.0);
        if (last) return cut.Take().release();
        from = 0;
        i = (i + 1) % count;
    }
}

CCadMultiSegments* GetPolylineByRange(const CCadMultiSegments* contour, const math::PosRange& range) {
    return GetMultiSementsByRange(contour, range);
}

CCadMultiSegments* GetMultiSementsByRangeRound(const CCadMultiSegments* contour, const math::PosRange& range,
                                               int nMode) {
    if (IsInvalidRange(contour, range)) return nullptr;
    math::PosRange rounded = range;
    rounded.start.dRatio = RoundedRatio(range.start.dRatio, nMode, true);
    rounded.end.dRatio = RoundedRatio(range.end.dRatio, nMode, false);
    const int count = contour->GetSegmentCount();
    // Not measured between the moved ends: where they have passed each other, that would be a way round the
    // contour.
    const double span = SpanInSegments(range, count) + (rounded.end.dRatio - range.end.dRatio)
                        - (rounded.start.dRatio - range.start.dRatio);
    NormalizePosRange(contour, rounded);
    const bool fits = span > kSameRatio && span < count + kSameRatio && !IsInvalidRange(contour, rounded);
    return GetMultiSementsByRange(contour, fits ? rounded : range);
}

} // namespace qev
