/// \file
/// What a polyline keeps of its segments, so that repeated questions do not measure them all again. Not
/// installed: for the library itself, and for measures and positions of the common library.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <qevdata/polyline_base.h>
#include <qevmath/tolerance.h>

#include "box_tree.h"

namespace qev {

/// The square in mm^2 of a point's distance from the line between two others.
inline double SquareFromLine(const math::DPOINT2& p, const math::DPOINT2& a, const math::DPOINT2& b) {
    const math::DPOINT2 along = b - a, from = p - a;
    const double square = math::Dot(along, along);
    const double ratio = square > 0 ? math::Dot(from, along) / square : 0;
    const math::DPOINT2 gap = from - along * std::clamp(ratio, 0.0, 1.0);
    return math::Dot(gap, gap);
}

/// The segments of a contour that may be the nearest to a point.
struct NearSegments {
    /// So many are listed at most; on ordinary contours one or two are near.
    static constexpr int kMost = 32;

    double distance = 0;             ///< mm; of the nearest one, to `margin`
    double margin = 0;               ///< mm; more than such a distance may be off, however it is computed
    bool isListed = false;           ///< whether all are in the list; else there are too many
    int count = 0;                   ///< how many are listed
    std::array<int, kMost> segments; ///< their indices, ascending

    /// In mm: a distance computed for a segment that is not among those near is more than this.
    double Reach() const { return distance + 2 * margin; }
};

/// What is worked out of a contour's segments: running sums of the lengths, where each segment lies, and a
/// tree of boxes and strips along runs of them. A value that does not change.
class ContourIndex {
public:
    /// Measures every segment of a polyline, and keeps no reference to it. Throws when memory is refused.
    explicit ContourIndex(const CCadPolylineBase& contour);
    /// What an object keeps at present, found without a call; null when it keeps none. Asking does not count
    /// as a question.
    static const ContourIndex* KeptBy(const CCadObject& object) {
        if (!object.m_bKeepsIndex.load(std::memory_order_acquire)) return nullptr;
        return static_cast<const CCadPolylineBase&>(object).m_pIndex.load(std::memory_order_relaxed);
    }
    /// The exact bounding box that an object keeps at present, found without a call; null when it keeps none.
    /// Asking does not count as a question.
    static const math::Bounds* BoxKeptBy(const CCadObject& object) {
        if (!object.m_bKeepsBox.load(std::memory_order_acquire)) return nullptr;
        return &static_cast<const CCadPolylineBase&>(object).m_box;
    }
    /// What IndexOf answers for an object that keeps no index yet.
    QEVDATA_API static const ContourIndex* MadeFor(const CCadObject& object);
    /// What KeptBoxOf answers for an object that keeps no box yet.
    static const math::Bounds* BoxMadeFor(const CCadObject& object);
    /// An object that is changed keeps nothing any more.
    static void Forget(const CCadObject& object);
    /// Number of segments up to which a search by the tree costs as much as one without.
    static constexpr int kFew = 32;
    static_assert(kFew <= NearSegments::kMost); // all of a few may be near

    /// Number of neighbouring segments that share a box of the tree.
    static constexpr int kRun = BoxTree::kFan;

    /// Whether all lengths and coordinates are numbers that can be searched and summed. Where this is false,
    /// callers ask every segment.
    bool IsMeasured() const { return m_bIsMeasured; }
    /// A box that holds the whole contour: the exact one where it has no arcs; round an arc it may be a
    /// little larger.
    const math::Bounds& GetBounds() const { return m_bounds; }
    /// Number of segments that the contour had.
    int GetSegmentCount() const { return static_cast<int>(m_vecLengths.size()); }
    /// Length in mm of the segment at an index, which has to be one of the contour's.
    double GetSegmentLength(int index) const { return m_vecLengths[static_cast<std::size_t>(index)]; }
    /// The sums of the lengths in mm from the first segment on: entry i lies in front of segment i, and the
    /// last one, behind them all, is the whole length.
    const std::vector<double>& GetSums() const { return m_vecSums; }
    /// Length in mm of the whole contour.
    double GetTotal() const { return m_vecSums.back(); }
    /// How many segments there are to a mm of the contour; infinite when it has no length.
    double GetSegmentsPerLength() const { return m_dSegmentsPerLength; }
    /// Whether the contour ends where it starts.
    bool IsClosed() const { return m_bIsClosed; }
    /// Whether all segments are straight.
    bool HasOnlyLines() const { return m_arcs.curvature.empty(); }
    /// Whether all segments are lines and arcs.
    bool HasNoBezier() const { return m_vecIsBezier.empty(); }
    /// Where the segment at an index starts; at the number of segments, where the last one ends.
    math::DPOINT2 GetJoint(int index) const { return {m_vecX[index], m_vecY[index]}; }

    /// The centre form of the segment at an index, all zeros of one that has none. Null where the contour has
    /// more than kFew segments, of which most are never the nearest, or only straight ones.
    const math::CentreArc* FindSolved(int index) const {
        return m_vecSolved.empty() ? nullptr : &m_vecSolved[static_cast<std::size_t>(index)];
    }

    /// The boxes of the runs of kRun segments, in the order of the contour; of nothing where IsMeasured is
    /// false.
    const BoxTree& GetTree() const { return m_tree; }
    /// How far in mm the segments under a box of the tree may be from the line between their first and their
    /// last joint.
    double GetStripWidth(int level, int i) const { return m_vecStrips[level][i]; }

    /// Finds the segments that may be the nearest to p on the contour, which has to be the one that was
    /// measured. A Bezier piece counts by its nearest point and by the samples at each hundredth of its
    /// length, which lie a little farther. False when p or the contour has numbers that are none or are
    /// beyond measure: then every segment may be.
    QEVDATA_API bool FindNear(const CCadObject& contour, const math::DPOINT2& p, NearSegments& near) const;

    /// Calls visit(index), in order, for all segments that have a point within `reach` mm of p, and for some
    /// of their neighbours.
    template <class Visit>
    void VisitWithin(const math::DPOINT2& p, double reach, Visit&& visit) const {
        const auto isNear = [&](double lowerX, double lowerY, double upperX, double upperY) {
            return p.x >= lowerX - reach && p.x <= upperX + reach && p.y >= lowerY - reach
                   && p.y <= upperY + reach;
        };
        m_tree.VisitInOrder(isNear, [&](int run) {
            const int end = std::min((run + 1) * kRun, GetSegmentCount());
            for (int i = run * kRun; i < end; ++i) visit(i);
        });
    }

private:
    // What tells how far a segment is where not all are straight, each number in a row of its own, so that a
    // compiler works on several segments at once. A line is an arc without curvature, and so is the chord of
    // a Bezier piece, as which it stands here. For each place of a run; none when all segments are lines.
    struct Arcs {
        std::vector<double> leavingX, leavingY; // unit vector of travel at the start, (0, 0) without a chord
        std::vector<double> arrivingX, arrivingY; // that at the end
        std::vector<double> curvature;            // 1/mm, positive counter-clockwise
        std::vector<double> wideness;             // 1 for more than a half turn, else -1
    };
    class Builder;
    class Search;
    // mm. Coordinates beyond are not searched: their squares and the margins would leave the range of
    // numbers.
    static constexpr double kFarthest = 1e100;

    std::vector<double> m_vecLengths;
    std::vector<double> m_vecSums;
    Arcs m_arcs;
    std::vector<char> m_vecIsBezier;          // for each segment; none when there is no Bezier piece
    std::vector<math::CentreArc> m_vecSolved; // for each of a few segments; none for many and for lines only
    std::vector<double> m_vecX, m_vecY;       // the joints, the last one repeated to the end of the last run
    std::vector<double> m_vecInverse; // 1 / (square of the chord), 0 without a chord; for each place of a run
    std::vector<double> m_vecWidths;  // mm; how far a segment's points may be from its chord, as the curves
    std::vector<std::vector<double>> m_vecStrips; // mm; so for the chords over the boxes of each level
    BoxTree m_tree;                               // of the runs
    math::Bounds m_bounds;
    double m_dExtent = 0;            // mm; the largest magnitude of a coordinate
    double m_dLongest = 0;           // mm; the greatest length of a segment
    double m_dSegmentsPerLength = 0; // 1/mm
    bool m_bIsMeasured = true;
    bool m_bIsClosed = false;
};

/// The index of a CCadPolyline or a CCadPolylineEx, which keeps it until it is changed. Null the first time
/// that it is asked for, for a contour without segments and when memory is refused. Null too for every other
/// class, one that derives from these included, since its segments may change where the polyline does not see
/// it.
inline const ContourIndex* IndexOf(const CCadObject& object) {
    const ContourIndex* const kept = ContourIndex::KeptBy(object);
    return kept ? kept : ContourIndex::MadeFor(object);
}

/// The segment of a contour at an index, which has to be one of its own. Where there is an index of the
/// contour, which may be null, and all segments are straight, it is not asked for it.
inline SEGMENT SegmentOf(const CCadObject& contour, const ContourIndex* index, int i) {
    const bool isLine = index && index->HasOnlyLines();
    return isLine ? SEGMENT(index->GetJoint(i), index->GetJoint(i + 1)) : contour.GetSegment(i);
}

/// The point at a fraction from 0 to 1 of the length of a contour's segment, whose index has to be one of its
/// own. Where there is an index of the contour, which may be null, and all segments are straight, the contour
/// is not asked for the segment.
inline math::DPOINT2 PointOf(const CCadObject& contour, const ContourIndex* index, int i, double ratio) {
    if (!index || !index->HasOnlyLines()) return contour.GetSegment(i).GetPoint(ratio);
    const math::DPOINT2 start = index->GetJoint(i), end = index->GetJoint(i + 1);
    if (start.x == end.x && start.y == end.y) return start; // also where it lies at infinity
    const int nearer = ratio < 0.5 ? 0 : 1;
    // math::Interpolate without its branch, to the bit: that subtracts from the end, which is to add -0 there
    const double share = std::copysign(ratio - nearer, ratio - 2 * nearer);
    return index->GetJoint(i + nearer) + (end - start) * share;
}

/// The box that a CCadPolyline or a CCadPolylineEx keeps. Null the first time that it is asked for, and for
/// every other class, one that derives from these included, so that the segments have to be asked.
inline const math::Bounds* KeptBoxOf(const CCadObject& object) {
    const math::Bounds* const kept = ContourIndex::BoxKeptBy(object);
    return kept ? kept : ContourIndex::BoxMadeFor(object);
}

/// Calls visit(index), in order, for all segments of a contour that have a point within a few
/// math::kOnCurve (1e-6 mm) of p, and for others: with an index for few of them, without for all.
template <class Visit>
void VisitSegmentsAt(const CCadObject& contour, const math::DPOINT2& p, Visit&& visit) {
    constexpr double kReach =
        4 * math::kOnCurve;           // what tests of points on lines and arcs allow for, with room
    constexpr double kDigits = 1e-14; // of the coordinates and the length: for their rounding
    const ContourIndex* index = IndexOf(contour);
    if (index && index->IsMeasured()) {
        index->VisitWithin(p, kReach + kDigits * (index->GetTotal() + math::Norm(p)), visit);
    } else {
        for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i) visit(i);
    }
}

} // namespace qev
