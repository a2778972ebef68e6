// Lengths, walks and searches ask a contour the same questions again and again. The index answers a length in
// one step, finds the segment at a length in a logarithm, and finds the segments near a point by a tree of
// boxes. It is made on the second question only, since most contours of a drawing are asked once, when it
// would cost more than it saves.
//
// The lengths are running sums from the first segment on, in the order in which a loop without the index
// adds them up, so that both give equal bits.
//
// The search does not decide which segment is the nearest: that goes by rules of the callers, which hosts
// have stored the answers of. It finds those that may be, by distances of its own, which are cheap and right:
// of a line from the foot on it, which needs no root; of an arc from
//     | k (t^2 + n^2) - 2 n | / (1 + sqrt((k t)^2 + (1 - k n)^2))
// where t and n are the point's coordinates along the tangent at the start and to its left, and k is the
// curvature. That is the distance from the circle, | rho - 1/k |, multiplied out, so that no far centre takes
// the digits: for k = 0 it is the distance from the line, so that one formula serves lines and arcs, without
// a branch. Whether the foot lies on the arc is seen from the two tangents at its ends: up to a half turn it
// lies ahead of the start and behind the end, on a wider arc it does one of the two. Both are off by some
// 1e-16 of the coordinates. Every segment is kept whose distance is within the margins of the least, the
// margin being more than a distance by the callers' rules may be off; what is left out then is farther away
// than what is kept, by anybody's rule.
//
// A box is a poor bound where a contour runs across the axes: among 1e5 segments of a circle a search by
// boxes alone looks at some hundred. So each box of the tree also stands for a strip, the chord from its
// first to its last joint and how far the contour leaves it. What passes the box has to pass the strip. A
// strip is as wide as its parts need: for each, how far the ends of its chord are from the strip's chord,
// which is where the part's chord is farthest from it, since a distance is convex, and the part's own width.
//
// Rejected: strips without boxes, which are wide where a contour is jagged or goes round; trees that are
// sorted in space, since neighbours along a contour are neighbours in the plane already; boxes of fewer than
// eight segments, which take longer to pass than the segments to measure.
#include "contour_index.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <typeinfo>

#include <qevdata/polyline.h>
#include <qevdata/polyline_ex.h>
#include <qevmath/tolerance.h>

#include "lazy.h"

namespace qev {
namespace {

using math::DPOINT2;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

// One search; what it has found so far.
class ContourIndex::Search {
public:
    Search(const ContourIndex& index, const CCadObject& contour, const DPOINT2& p, double extent)
        : m_index(index), m_contour(contour), m_point(p), m_dExtent(extent) {}

    void Run(NearSegments& near) {
        const int count = m_index.GetSegmentCount();
        if (count > kFew)
            m_index.m_tree.VisitNearestFirst(
                m_point, m_dSquareBound, [this](int level, int i) { return IsStripFar(level, i); },
                [this](int run) { MeasureRun(run); });
        else if (m_index.HasNoBezier())
            return ListOfFew(near);
        else
            for (int run = 0; run * kRun < count; ++run) MeasureRun(run);
        Write(near);
    }

private:
    using Squares = std::array<double, kRun>;
    struct Candidate {
        double square; // mm^2; of the distance
        int segment;
    };

    void Write(NearSegments& near) {
        DropFar();
        near.distance = m_dLeast;
        near.margin = MarginAt(m_dLeast);
        near.isListed = !m_bOverflow;
        near.count = m_nCount;
        for (int i = 0; i < m_nCount; ++i) near.segments[i] = m_candidates[i].segment;
        if (m_nCount > 1) std::sort(near.segments.begin(), near.segments.begin() + m_nCount);
    }

    // Of a few lines and arcs all are measured before the first is listed, so that none is listed that others
    // then beat. They are measured by twos; a place behind an odd number stands for the contour's end.
    void ListOfFew(NearSegments& near) {
        const int count = m_index.GetSegmentCount();
        std::array<double, kFew> squares;
        Measure(0, count + count % 2, squares.data());
        double even = kInfinity, odd = kInfinity;
        for (int i = 0; i < count; i += 2) {
            even = std::min(even, squares[i]);
            odd = std::min(odd, squares[i + 1]);
        }
        Lower(std::sqrt(std::min(even, odd)));
        near.distance = m_dLeast;
        near.margin = MarginAt(m_dLeast);
        near.isListed = true;
        const double bound = m_dSquareBound;
        int listed = 0;
        for (int i = 0; i < count; ++i) {
            near.segments[listed] = i;
            listed += squares[i] <= bound ? 1 : 0;
        }
        near.count = listed;
    }

    // More than a distance near `distance` may be off by, by the rules of the callers or here. Heron's rule
    // errs by up to 1.5e-8 of the segment's length and of the distance; an arc's distance by 1e-16 of the
    // radius, which is at most 2,500 chords or lies within the box. All err by some last digits of the
    // coordinates. The rest makes it more than twice what counts as nearer.
    double MarginAt(double distance) const {
        constexpr double kHeron = 5e-8, kDigits = 1e-14, kLeast = 3e-9; // the last one in mm
        return kHeron * (m_index.m_dLongest + distance) + kDigits * m_dExtent + kLeast;
    }

    bool IsStripFar(int level, int i) const {
        const int size = kRun << 3 * level, count = m_index.GetSegmentCount(); // 3: eight boxes in one
        const double width = m_index.m_vecStrips[level][i];
        const double square = SquareFromLine(m_point, m_index.GetJoint(i * size),
                                             m_index.GetJoint(std::min(i * size + size, count)));
        const double limit = m_dBound + width;
        return !(square <= limit * limit);
    }

    void MeasureRun(int run) {
        Squares squares;
        Measure(run, kRun, squares.data());
        const int first = run * kRun, count = std::min(kRun, m_index.GetSegmentCount() - first);
        if (!m_index.HasNoBezier()) return MeasurePieces(first, count, squares);
        const double least = Least(squares);
        if (!(least <= m_dSquareBound)) return;
        Lower(std::sqrt(least));
        for (int k = 0; k < count; ++k)
            if (squares[k] <= m_dSquareBound) Keep({squares[k], first + k});
    }

    // The squares of the distances of so many places, from a run on; for a Bezier piece that from its chord.
    // The places of the last run behind the last segment stand for its end, which is no nearer than it is.
    void Measure(int run, int places, double* squares) const {
        if (m_index.HasOnlyLines())
            MeasureChords(run, places, squares);
        else
            MeasureArcs(run, places, squares);
    }

    // The ratio of a foot is kept between 0 and 1 by sums, from which a compiler makes no branches; far
    // beyond the ends they lose no more than the last digits of the distance.
    void MeasureChords(int run, int places, double* squares) const {
        const std::ptrdiff_t first = std::ptrdiff_t{run} * kRun;
        const double* const x = m_index.m_vecX.data() + first;
        const double* const y = m_index.m_vecY.data() + first;
        const double* const inverse = m_index.m_vecInverse.data() + first;
        for (int k = 0; k < places; ++k) {
            const double alongX = x[k + 1] - x[k], alongY = y[k + 1] - y[k];
            const double fromX = m_point.x - x[k], fromY = m_point.y - y[k];
            const double ratio = (fromX * alongX + fromY * alongY) * inverse[k];
            const double foot = (std::abs(ratio) - std::abs(ratio - 1) + 1) * 0.5; // from 0 to 1
            const double gapX = fromX - alongX * foot, gapY = fromY - alongY * foot;
            squares[k] = gapX * gapX + gapY * gapY;
        }
    }

    // Lines are arcs without curvature here.
    void MeasureArcs(int run, int places, double* squares) const {
        const std::ptrdiff_t first = std::ptrdiff_t{run} * kRun;
        const double* const x = m_index.m_vecX.data() + first;
        const double* const y = m_index.m_vecY.data() + first;
        const double* const leavingX = m_index.m_arcs.leavingX.data() + first;
        const double* const leavingY = m_index.m_arcs.leavingY.data() + first;
        const double* const arrivingX = m_index.m_arcs.arrivingX.data() + first;
        const double* const arrivingY = m_index.m_arcs.arrivingY.data() + first;
        const double* const curvature = m_index.m_arcs.curvature.data() + first;
        const double* const wideness = m_index.m_arcs.wideness.data() + first;
        for (int k = 0; k < places; ++k) {
            const DPOINT2 fromStart{m_point.x - x[k], m_point.y - y[k]};
            const DPOINT2 fromEnd{m_point.x - x[k + 1], m_point.y - y[k + 1]};
            const double ahead = fromStart.x * leavingX[k] + fromStart.y * leavingY[k];
            const double left = leavingX[k] * fromStart.y - leavingY[k] * fromStart.x;
            const double behind = -(fromEnd.x * arrivingX[k] + fromEnd.y * arrivingY[k]);
            const double toStart = math::Dot(fromStart, fromStart), toEnd = math::Dot(fromEnd, fromEnd);
            const double nearerEnd = toStart < toEnd ? toStart : toEnd;
            const DPOINT2 fromCentre{curvature[k] * ahead, 1 - curvature[k] * left}; // times the curvature
            const double gap = (curvature[k] * toStart - 2 * left) / (1 + math::Norm(fromCentre));
            // twice the greater of the two on a wide arc, twice the smaller on the others
            const double beside = ahead + behind + wideness[k] * std::abs(ahead - behind);
            squares[k] = beside > 0 ? gap * gap : nearerEnd;
        }
    }

    // The one with the nearest chord comes first: most Bezier pieces need not be measured then.
    void MeasurePieces(int first, int count, const Squares& squares) {
        const int nearest =
            static_cast<int>(std::min_element(squares.data(), squares.data() + count) - squares.data());
        MeasurePiece(first + nearest, squares[nearest]);
        for (int k = 0; k < count; ++k)
            if (k != nearest) MeasurePiece(first + k, squares[k]);
    }
    void MeasurePiece(int i, double square) {
        if (!m_index.m_vecIsBezier[i]) {
            if (square <= m_dSquareBound) Offer(std::sqrt(square), 0, i);
            return;
        }
        const double limit = m_dBound + m_index.m_vecWidths[i];
        if (square <= limit * limit) OfferBezier(i);
    }

    // The nearest point of the piece, of which the nearest sample is at most half a step away.
    void OfferBezier(int i) {
        constexpr double kHalfStep = 0.0051; // of the length; samples are a hundredth apart
        const DPOINT2 nearest = m_contour.GetSegment(i).GetNearest(m_point);
        Offer(math::Norm(m_point - nearest), kHalfStep * m_index.GetSegmentLength(i), i);
    }

    // A segment whose distance by any rule is `distance` at least and `slack` more at most.
    void Offer(double distance, double slack, int i) {
        if (!(distance <= m_dBound)) return;
        Lower(distance + slack);
        Keep({distance * distance, i});
    }

    void Lower(double distance) {
        if (!(distance < m_dLeast)) return;
        m_dLeast = distance;
        m_dBound =
            m_dLeast + 3 * MarginAt(m_dLeast); // NearSegments::Reach, and once more for these distances
        m_dSquareBound = m_dBound * m_dBound;
    }

    void Keep(const Candidate& candidate) {
        if (m_nCount == NearSegments::kMost) DropFar();
        m_bOverflow = m_bOverflow || m_nCount == NearSegments::kMost;
        if (!m_bOverflow) m_candidates[m_nCount++] = candidate;
    }
    void DropFar() {
        int kept = 0;
        for (int i = 0; i < m_nCount; ++i)
            if (m_candidates[i].square <= m_dSquareBound) m_candidates[kept++] = m_candidates[i];
        m_nCount = kept;
    }

    const ContourIndex& m_index;
    const CCadObject& m_contour;
    DPOINT2 m_point;
    double m_dExtent;            // mm; the largest magnitude of a coordinate, those of the point too
    double m_dLeast = kInfinity; // mm; the least distance, to a sample for a Bezier piece
    double m_dBound = kInfinity; // mm; the distance up to which segments are kept
    double m_dSquareBound = kInfinity;
    std::array<Candidate, NearSegments::kMost> m_candidates;
    int m_nCount = 0;
    bool m_bOverflow = false;
};

bool ContourIndex::FindNear(const CCadObject& contour, const DPOINT2& p, NearSegments& near) const {
    const bool isMeasurable = std::abs(p.x) < kFarthest && std::abs(p.y) < kFarthest; // not one that is none
    if (!m_bIsMeasured || !isMeasurable) return false;
    const double extent = std::max({m_dExtent, std::abs(p.x), std::abs(p.y)});
    Search search(*this, contour, p, extent);
    search.Run(near);
    return true;
}

const ContourIndex* CCadPolylineBase::Index() const {
    const bool isFirst = !m_bAsked.exchange(true, std::memory_order_relaxed);
    if (isFirst || GetSegmentCount() <= 0) return nullptr;
    return GetOrMake(m_pIndex, [this] { return std::make_unique<const ContourIndex>(*this); });
}

// Of threads that ask at the same time one writes the box; the others go on without.
const math::Bounds* CCadPolylineBase::Box() const {
    BoxState state = BoxState::kNotAsked;
    if (m_boxState.compare_exchange_strong(state, BoxState::kAsked)) return nullptr;
    const bool isSecond = state == BoxState::kAsked;
    if (!isSecond || !m_boxState.compare_exchange_strong(state, BoxState::kMade)) return nullptr;
    m_box = {};
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) m_box.Add(GetSegment(i).GetBounds());
    return &m_box;
}

void CCadPolylineBase::DropIndex() {
    Drop(m_pIndex);
    m_boxState.store(BoxState::kNotAsked, std::memory_order_relaxed);
    m_bAsked.store(false, std::memory_order_relaxed);
    ContourIndex::Forget(*this);
}

namespace {

// The class itself is asked for, not what it derives from: a cast would be slower, and would hand out the
// index of a derived class whose own segments the polyline knows nothing of.
const CCadPolylineBase* OwnPolyline(const CCadObject& object) {
    const std::type_info& type = typeid(object);
    const bool isOwn = type == typeid(CCadPolyline) || type == typeid(CCadPolylineEx);
    return isOwn ? static_cast<const CCadPolylineBase*>(&object) : nullptr;
}

} // namespace

const ContourIndex* ContourIndex::MadeFor(const CCadObject& object) {
    const CCadPolylineBase* const polyline = OwnPolyline(object);
    const ContourIndex* const made = polyline ? polyline->Index() : nullptr;
    if (made) object.m_bKeepsIndex.store(true, std::memory_order_release);
    return made;
}

const math::Bounds* ContourIndex::BoxMadeFor(const CCadObject& object) {
    const CCadPolylineBase* const polyline = OwnPolyline(object);
    const math::Bounds* const made = polyline ? polyline->Box() : nullptr;
    if (made) object.m_bKeepsBox.store(true, std::memory_order_release);
    return made;
}

void ContourIndex::Forget(const CCadObject& object) {
    object.m_bKeepsBox.store(false, std::memory_order_relaxed);
    object.m_bKeepsIndex.store(false, std::memory_order_relaxed);
}

} // namespace qev
