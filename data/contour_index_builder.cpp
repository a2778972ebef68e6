// An index is filled in passes over rows of numbers, which a compiler works on several at a time: the joints,
// lengths and boxes as if all segments were lines, then what is more on curves, then the sums, the tree and
// the strips. Rejected: one pass that measures segment after segment, which takes twice as long; the exact
// boxes and tangents of the arcs, which take angles and most of the time. A box may be larger than what it
// holds, and the tangents at the ends of an arc follow from its bulge.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <qevdata/polyline.h>
#include <qevmath/tolerance.h>

#include "contour_index.h"

namespace qev {

using math::DPOINT2;

// Fills one index.
class ContourIndex::Builder {
public:
    Builder(ContourIndex& index, const CCadPolylineBase& contour)
        : m_index(index), m_contour(contour), m_nCount(contour.GetSegmentCount()),
          m_vecBoxes((m_nCount + kRun - 1) / kRun) {}

    void Build() {
        const std::size_t places = m_vecBoxes.size() * kRun;
        m_index.m_vecLengths.resize(m_nCount);
        m_index.m_vecSums.resize(m_nCount + 1);
        m_index.m_vecX.resize(places + 1);
        m_index.m_vecY.resize(places + 1);
        m_index.m_vecInverse.resize(places);
        const bool hasCurves = AddJoints();
        MeasureChords();
        BoxJoints();
        if (hasCurves) AddCurves(places);
        AddUp();
        m_index.m_bIsClosed = EndsMeet(m_contour);
        MeasureBoxes();
    }

private:
    // Whether there are curves. A polyline of lines and arcs hands out its nodes, so that no segment is asked
    // for by a call.
    bool AddJoints() {
        bool hasCurves = false;
        SetJoint(0, m_contour.GetStartPoint());
        if (const auto* const polyline = dynamic_cast<const CCadPolyline*>(&m_contour)) {
            for (int i = 0; i < m_nCount; ++i) {
                const CCadPolyline::ARCNODE& node = polyline->GetNodes()[i];
                SetJoint(i + 1, {node.x, node.y});
                hasCurves = hasCurves || node.bulge != 0;
            }
        } else {
            for (int i = 0; i < m_nCount; ++i) {
                const SEGMENT segment = m_contour.GetSegment(i);
                SetJoint(i + 1, segment.ptEnd);
                hasCurves = hasCurves || segment.nType != SEGMENT::kLine;
            }
        }
        std::fill(m_index.m_vecX.begin() + m_nCount, m_index.m_vecX.end(), m_index.m_vecX[m_nCount]);
        std::fill(m_index.m_vecY.begin() + m_nCount, m_index.m_vecY.end(), m_index.m_vecY[m_nCount]);
        return hasCurves;
    }
    void SetJoint(int i, const DPOINT2& joint) {
        m_index.m_vecX[i] = joint.x;
        m_index.m_vecY[i] = joint.y;
    }

    // Lengths as if all were lines, and the inverse squares.
    void MeasureChords() {
        const double* const x = m_index.m_vecX.data();
        const double* const y = m_index.m_vecY.data();
        double* const lengths = m_index.m_vecLengths.data();
        double* const inverses = m_index.m_vecInverse.data();
        for (int i = 0; i < m_nCount; ++i) {
            const DPOINT2 along{x[i + 1] - x[i], y[i + 1] - y[i]};
            const double square = math::Dot(along, along);
            lengths[i] = std::sqrt(square);
            inverses[i] = InverseOf(square);
        }
    }
    // 1 / (the square of a chord); 0 for next to no chord and for what is no number.
    static double InverseOf(double square) {
        const double inverse = 1 / square;
        return inverse <= std::numeric_limits<double>::max() ? inverse : 0;
    }

    void BoxJoints() {
        for (std::size_t run = 0; run < m_vecBoxes.size(); ++run) {
            const double* const x = m_index.m_vecX.data() + run * kRun;
            const double* const y = m_index.m_vecY.data() + run * kRun;
            DPOINT2 lower{x[0], y[0]}, upper = lower;
            for (int k = 1; k <= kRun; ++k) {
                lower = {std::min(lower.x, x[k]), std::min(lower.y, y[k])};
                upper = {std::max(upper.x, x[k]), std::max(upper.y, y[k])};
            }
            m_vecBoxes[run] = {lower, upper};
        }
    }

    void AddCurves(std::size_t places) {
        Arcs& arcs = m_index.m_arcs;
        for (auto* const row : {&arcs.leavingX, &arcs.leavingY, &arcs.arrivingX, &arcs.arrivingY,
                                &arcs.curvature, &arcs.wideness})
            row->resize(places);
        m_index.m_vecWidths.reserve(m_nCount);
        if (m_nCount <= kFew) m_index.m_vecSolved.resize(m_nCount);
        for (int i = 0; i < m_nCount; ++i) AddCurve(i, m_contour.GetSegment(i));
    }

    void AddCurve(int i, const SEGMENT& segment) {
        m_index.m_vecWidths.push_back(WidthOf(segment));
        SetArc(i, segment.GetArc());
        if (segment.nType == SEGMENT::kLine) return;
        m_vecBoxes[i / kRun].Add(BoxOf(segment));
        m_index.m_vecLengths[i] = segment.GetLength();
        if (m_nCount <= kFew) m_index.m_vecSolved[i] = SolvedOf(segment.GetArc());
        if (segment.nType != SEGMENT::kBezier) return;
        m_index.m_vecIsBezier.resize(m_nCount);
        m_index.m_vecIsBezier[i] = true;
    }

    static math::CentreArc SolvedOf(const math::BulgeArc& arc) {
        return math::SolveCentreArc(arc.start, arc.end, arc.bulge).value_or(math::CentreArc{});
    }

    // The tangents at the ends are the chord's direction turned by half the included angle, whose sine and
    // cosine are 2 / (1/b + b) and (1/b - b) / (1/b + b) for a bulge b.
    void SetArc(int i, const math::BulgeArc& arc) {
        const DPOINT2 chord = arc.end - arc.start;
        const double length = math::Norm(chord);
        const DPOINT2 along = length > 0 ? chord / length : DPOINT2{};
        DPOINT2 leaving = along, arriving = along;
        double curvature = 0;
        if (!arc.IsStraight()) {
            const double sum = 1 / arc.bulge + arc.bulge, cosine = (1 / arc.bulge - arc.bulge) / sum;
            const DPOINT2 across = math::LeftOf(along) * (2 / sum);
            leaving = along * cosine - across;
            arriving = along * cosine + across;
            curvature = 4 / (sum * length);
            // An arc without a chord to speak of is a point by some rules and a circle by others.
            const bool isMeasured = length >= math::kZeroLength && std::isfinite(curvature);
            m_index.m_bIsMeasured = m_index.m_bIsMeasured && isMeasured && math::IsFinite(leaving);
        }
        Arcs& arcs = m_index.m_arcs;
        arcs.leavingX[i] = leaving.x, arcs.leavingY[i] = leaving.y;
        arcs.arrivingX[i] = arriving.x, arcs.arrivingY[i] = arriving.y;
        arcs.curvature[i] = curvature;
        arcs.wideness[i] = std::abs(arc.bulge) > 1 ? 1 : -1;
    }

    // The arc's height over its chord, from which no point of it is farther, or how far the control points of
    // a Bezier piece are from its chord, inside of whose hull the piece lies.
    static double WidthOf(const SEGMENT& segment) {
        if (segment.nType != SEGMENT::kBezier)
            return math::Norm(segment.ptEnd - segment.ptStart) * std::abs(segment.GetArc().bulge) / 2;
        const DPOINT2 &start = segment.ptStart, &end = segment.ptEnd;
        return std::sqrt(std::max(SquareFromLine(segment.ptCtrl1, start, end),
                                  SquareFromLine(segment.ptCtrl2, start, end)));
    }

    // Up to a half turn an arc lies in the rectangle over its chord that is as high as it, which takes no
    // angle.
    static math::Bounds BoxOf(const SEGMENT& segment) {
        const math::BulgeArc arc = segment.GetArc();
        if (segment.nType == SEGMENT::kBezier || !(std::abs(arc.bulge) <= 1)) return segment.GetBounds();
        const DPOINT2 height = math::LeftOf(arc.end - arc.start) * (-arc.bulge / 2);
        math::Bounds box;
        box.Add(arc.start);
        box.Add(arc.end);
        box.Add(arc.start + height);
        box.Add(arc.end + height);
        return box;
    }

    void AddUp() {
        double sum = 0, longest = 0;
        for (int i = 0; i < m_nCount; ++i) {
            const double length = m_index.m_vecLengths[i];
            longest = std::max(longest, length);
            sum += length;
            m_index.m_vecSums[i + 1] = sum;
        }
        m_index.m_dLongest = longest;
        m_index.m_dSegmentsPerLength = m_nCount / sum;
        m_index.m_bIsMeasured = m_index.m_bIsMeasured && std::isfinite(sum);
    }

    void MeasureBoxes() {
        for (const math::Bounds& run : m_vecBoxes) m_index.m_bounds.Add(run);
        const math::Bounds& all = m_index.m_bounds;
        for (const double coordinate : {all.lower.x, all.lower.y, all.upper.x, all.upper.y})
            m_index.m_dExtent = std::max(m_index.m_dExtent, std::abs(coordinate));
        m_index.m_bIsMeasured = m_index.m_bIsMeasured && m_index.m_dExtent < kFarthest;
        if (!m_index.m_bIsMeasured) return; // nobody will search
        m_index.m_tree = BoxTree(m_vecBoxes);
        const std::vector<double>* parts = &m_index.m_vecWidths;
        m_index.m_vecStrips.reserve(m_index.m_tree.GetLevelCount());
        for (int level = 0, size = 1; level < m_index.m_tree.GetLevelCount(); ++level, size *= kRun) {
            m_index.m_vecStrips.push_back(StripsOver(*parts, size));
            parts = &m_index.m_vecStrips.back();
        }
    }

    // The widths of the strips over each eight parts of `size` segments; no widths stand for straight parts.
    std::vector<double> StripsOver(const std::vector<double>& parts, int size) const {
        std::vector<double> strips;
        strips.reserve(m_nCount / (size * kRun) + 1);
        for (int first = 0; first < m_nCount; first += size * kRun)
            strips.push_back(parts.empty() ? StripOverLines(first) : StripOver(parts, first, size));
        return strips;
    }
    double StripOverLines(int first) const {
        const DPOINT2 start = m_index.GetJoint(first), along = m_index.GetJoint(first + kRun) - start;
        const double inverse = InverseOf(math::Dot(along, along));
        double widest = 0;
        for (int k = 1; k < kRun; ++k) {
            const DPOINT2 from = m_index.GetJoint(first + k) - start;
            const DPOINT2 gap = from - along * std::clamp(math::Dot(from, along) * inverse, 0.0, 1.0);
            widest = std::max(widest, math::Dot(gap, gap));
        }
        return std::sqrt(widest);
    }
    double StripOver(const std::vector<double>& parts, int first, int size) const {
        const int behindAll = first + size * kRun;
        const DPOINT2 start = m_index.GetJoint(first), end = JointAt(behindAll);
        double widest = 0, before = 0; // the start is on the strip's chord
        for (int at = first, stop = std::min(behindAll, m_nCount); at < stop; at += size) {
            const double behind = std::sqrt(SquareFromLine(JointAt(at + size), start, end));
            widest = std::max(widest, std::max(before, behind) + parts[at / size]);
            before = behind;
        }
        return widest;
    }
    DPOINT2 JointAt(int i) const { return m_index.GetJoint(std::min(i, m_nCount)); }

    ContourIndex& m_index;
    const CCadPolylineBase& m_contour;
    int m_nCount;
    std::vector<math::Bounds> m_vecBoxes;
};

ContourIndex::ContourIndex(const CCadPolylineBase& contour) {
    Builder(*this, contour).Build();
}

} // namespace qev
