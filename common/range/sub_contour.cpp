// Cutting a stretch of a contour out. A segment that is taken whole keeps its bulge to the bit; of a part the
// bulge is the tangent of a quarter of the part's angle, and the ends are points of the segment, so that the
// part lies on the same circle. The cut begins as a polyline and becomes an extended one when the first
// Bezier piece is met, since most cuts have none and callers work faster with polylines.
//
// Error: the ends of a part are right to about 1e-16 of the coordinates, its bulge to 1e-16 of itself, so
// that the part leaves the circle by no more than the rounding of its ends. An end within kSameRatio of a
// joint is taken as the joint, so that its segment is taken whole.

#include <algorithm>
#include <cstdint>
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

// The modes in which the ends of a cut move to joints.
constexpr int kNearest = 1;
constexpr int kOutward = 2;
constexpr int kInward = 3;

// The cut while it grows: a polyline until a Bezier piece asks for an extended one.
class Cut {
public:
    explicit Cut(const math::DPOINT2& start) : m_pPlain(std::make_unique<CCadPolyline>(true)) {
        m_pPlain->SetStartPoint(start);
    }

    // Adds the stretch of a segment between two ratios. Of a part of a Bezier piece nothing is added; the
    // polyline becomes an extended one all the same.
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

    // Adds the stretch of a segment between two ratios, of a Bezier piece too, unless it has no length.
    void AddStretch(const SEGMENT& segment, double from, double to) {
        const bool whole = from == 0 && to == 1;
        if (from == to) return;
        if (whole || segment.nType != SEGMENT::kBezier) return Add(segment, from, to);
        const math::CubicBezier bezier = segment.GetBezier();
        const auto part = bezier.Between(bezier.ParameterAt(from), bezier.ParameterAt(to));
        Extend();
        m_pExtended->AddBezier(part.ctrl1, part.ctrl2, part.end);
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
    }

    std::unique_ptr<CCadPolyline> m_pPlain;
    std::unique_ptr<CCadPolylineEx> m_pExtended;
};

// The joint that a mode moves a position to: the index of the segment that begins there, the count behind the
// last one. A position within the tolerance of a joint is there already and stays.
std::int64_t JointOf(const math::POLYPOS& pos, int mode, bool isStart) {
    const std::int64_t before = pos.nSegIndex;
    if (IsSameRatio(pos.dRatio, 0)) return before;
    if (IsSameRatio(pos.dRatio, 1)) return before + 1;
    if (mode == kNearest) return pos.dRatio < 0.5 ? before : before + 1;
    return isStart == (mode == kOutward) ? before : before + 1;
}

// Whether a range ends on its own segment at or before its start, and so runs once round.
bool RunsRound(const math::PosRange& range) {
    return range.start.nSegIndex == range.end.nSegIndex && !(range.end.dRatio > range.start.dRatio);
}

// Calls add(segment, from, to) for the stretches of a valid range, in order; those at its ends may have no
// length. runsRound tells whether the range does, as it was given.
template <class Add>
void VisitStretches(const CCadMultiSegments& contour, const math::PosRange& range, bool runsRound,
                    const Add& add) {
    const int count = contour.GetSegmentCount();
    int i = range.start.nSegIndex;
    double from = range.start.dRatio;
    for (bool first = true;; first = false) {
        const bool last = i == range.end.nSegIndex && !(first && runsRound);
        add(contour.GetSegment(i), from, last ? range.end.dRatio : 1.0);
        if (last) return;
        from = 0;
        i = (i + 1) % count;
    }
}

// A ratio, or 0 or 1 where it is next to that.
double Snapped(double ratio) {
    if (IsSameRatio(ratio, 0)) return 0;
    return IsSameRatio(ratio, 1) ? 1 : ratio;
}

} // namespace

CCadMultiSegments* GetMultiSementsByRange(const CCadMultiSegments* contour, const math::PosRange& range) {
    if (IsInvalidRange(contour, range)) return nullptr;
    math::PosRange exact = range;
    if (IsSameRatio(range.start.dRatio, 0)) exact.start.dRatio = 0;
    if (IsSameRatio(range.end.dRatio, 1)) exact.end.dRatio = 1;
    Cut cut(contour->GetSegment(exact.start.nSegIndex).GetPoint(exact.start.dRatio));
    VisitStretches(*contour, exact, RunsRound(range),
                   [&](const SEGMENT& segment, double from, double to) { cut.Add(segment, from, to); });
    return cut.Take().release();
}

CCadMultiSegments* CutStretch(const CCadMultiSegments* contour, const math::PosRange& range) {
    if (IsInvalidRange(contour, range)) return nullptr;
    math::PosRange exact = range;
    for (math::POLYPOS* end : {&exact.start, &exact.end}) end->dRatio = Snapped(end->dRatio);
    Cut cut(contour->GetSegment(exact.start.nSegIndex).GetPoint(exact.start.dRatio));
    VisitStretches(*contour, exact, RunsRound(range), [&](const SEGMENT& segment, double from, double to) {
        cut.AddStretch(segment, from, to);
    });
    auto taken = cut.Take();
    return taken->GetSegmentCount() > 0 ? taken.release() : nullptr;
}

CCadMultiSegments* GetPolylineByRange(const CCadMultiSegments* contour, const math::PosRange& range) {
    return GetMultiSementsByRange(contour, range);
}

CCadMultiSegments* GetMultiSementsByRangeRound(const CCadMultiSegments* contour, const math::PosRange& range,
                                               int nMode) {
    if (IsInvalidRange(contour, range)) return nullptr;
    const int count = contour->GetSegmentCount();
    const bool passesStart = range.start.nSegIndex > range.end.nSegIndex || RunsRound(range);
    // Joints are counted on over the start point, so that ends that have passed each other give less than
    // nothing, not a way round the contour.
    const std::int64_t first = JointOf(range.start, nMode, true);
    const std::int64_t last = JointOf(range.end, nMode, false) + (passesStart ? count : 0);
    const bool moves = nMode == kNearest || nMode == kOutward || nMode == kInward;
    if (!moves || last <= first) return GetMultiSementsByRange(contour, range);
    Cut cut(contour->GetSegment(static_cast<int>(first % count)).GetPoint(0));
    // Outward, both ends may move past each other: the contour is cut out once then.
    for (std::int64_t joint = first; joint < std::min(last, first + count); ++joint)
        cut.Add(contour->GetSegment(static_cast<int>(joint % count)), 0, 1);
    return cut.Take().release();
}

} // namespace qev
