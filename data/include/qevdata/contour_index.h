/// \file
/// What a contour keeps of its segments, so that repeated questions do not measure them all again.
#pragma once

#include <atomic>
#include <vector>

#include <qev/export.h>
#include <qevdata/lazy.h>
#include <qevmath/bounds.h>

namespace qev {

class CCadObject;

/// The lengths of a contour's segments and the boxes round runs of them; a value that does not change.
class QEVDATA_API ContourIndex {
public:
    /// So many segments, but for the last run, share a box.
    static constexpr int kRun = 8;

    /// Measures every segment of a contour, and keeps no reference to it. Throws when memory is refused.
    explicit ContourIndex(const CCadObject& contour);

    /// The exact bounding box of the whole contour.
    const math::Bounds& GetBounds() const { return m_bounds; }
    /// Length in mm, summed up from the first segment to the last.
    double GetLength() const { return m_dLength; }
    /// Length of the segment at an index, which has to be one of the contour's.
    double GetSegmentLength(int index) const { return m_vecLengths[static_cast<std::size_t>(index)]; }
    /// Number of segments that the contour had.
    int GetSegmentCount() const { return static_cast<int>(m_vecLengths.size()); }
    /// The largest coordinate of the box and of p, which the rounding of distances between them goes by.
    double GetExtent(const math::DPOINT2& p) const;
    /// Whether there are enough runs for a search by boxes to be worth while.
    bool IsForSearch() const;
    /// Whether there is a Bezier piece.
    bool HasBezier() const { return m_bHasBezier; }

    /// Calls visit(index) for the segments, in order, of every run whose box is at most `reach` mm away from
    /// p.
    template <class Visit>
    void VisitWithin(const math::DPOINT2& p, double reach, Visit visit) const {
        for (int run = 0, count = GetRunCount(); run < count; ++run)
            if (m_vecRuns[run].GetSquaredDistance(p) <= reach * reach) VisitRun(run, visit);
    }
    /// The same for the one run whose box is nearest to p.
    template <class Visit>
    void VisitNearest(const math::DPOINT2& p, Visit visit) const {
        int nearest = 0;
        double least = std::numeric_limits<double>::infinity();
        for (int run = 0, count = GetRunCount(); run < count; ++run) {
            const double square = m_vecRuns[run].GetSquaredDistance(p);
            if (!(square < least)) continue;
            least = square;
            nearest = run;
        }
        VisitRun(nearest, visit);
    }

private:
    int GetRunCount() const { return static_cast<int>(m_vecRuns.size()); }
    template <class Visit>
    void VisitRun(int run, Visit visit) const {
        const int end = std::min((run + 1) * kRun, GetSegmentCount());
        for (int i = run * kRun; i < end; ++i) visit(i);
    }

    std::vector<double> m_vecLengths;
    std::vector<math::Bounds> m_vecRuns;
    math::Bounds m_bounds;
    double m_dLength = 0;
    bool m_bHasBezier = false;
};

/// Holds a contour's index from the second time on that it is asked for, since many contours are asked once.
class QEVDATA_API LazyIndex {
public:
    LazyIndex() = default;
    /// Takes nothing over: the copy has not been asked either.
    LazyIndex(const LazyIndex&) noexcept {}
    /// Forgets the own index and takes nothing over; assigned to itself it stays as it is.
    LazyIndex& operator=(const LazyIndex& other);

    /// The index of the contour that this belongs to; null the first time, for a contour without segments and
    /// when memory is refused. It lasts until Drop.
    const ContourIndex* Of(const CCadObject& contour) const;
    /// Forgets the index: the contour is changed.
    void Drop();

private:
    Lazy<ContourIndex> m_index;
    mutable std::atomic<bool> m_bAsked = false;
};

} // namespace qev
