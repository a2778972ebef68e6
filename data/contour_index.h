/// \file
/// What a polyline keeps of its segments, so that repeated questions do not measure them all again. Not
/// installed: for the library itself, and for the positions of the common library.
#pragma once

#include <algorithm>
#include <limits>
#include <vector>

#include <qev/export.h>
#include <qevmath/bounds.h>

namespace qev {

class CCadObject;
class CCadPolylineBase;

/// The lengths of a contour's segments and the boxes round runs of them; a value that does not change.
class ContourIndex {
public:
    /// Number of neighbouring segments that share a box. The last run of a contour may be shorter.
    static constexpr int kRun = 8;

    /// Measures every segment of a contour, and keeps no reference to it. Throws when memory is refused.
    explicit ContourIndex(const CCadObject& contour);
    /// What a polyline keeps, made now when it was asked before; null when there is none.
    static const ContourIndex* KeptBy(const CCadPolylineBase& polyline);

    /// The exact bounding box of the whole contour.
    const math::Bounds& GetBounds() const { return m_bounds; }
    /// Length in mm, summed up from the first segment to the last.
    double GetLength() const { return m_dLength; }
    /// Length in mm of the segment at an index, which has to be one of the contour's.
    double GetSegmentLength(int index) const { return m_vecLengths[static_cast<std::size_t>(index)]; }
    /// Number of segments that the contour had.
    int GetSegmentCount() const { return static_cast<int>(m_vecLengths.size()); }
    /// The largest magnitude, in mm, among the coordinates of the box and of p: the rounding of distances
    /// between p and the contour is a small part of it.
    QEVDATA_API double GetExtent(const math::DPOINT2& p) const;
    /// Whether a search by boxes is worth while: with few runs the boxes cost as much as the segments that
    /// they save.
    QEVDATA_API bool IsForSearch() const;
    /// Whether there is a Bezier piece.
    bool HasBezier() const { return m_bHasBezier; }

    /// Calls visit(index) for the segments, in order, of every run whose box is at most `reach` mm away from
    /// p.
    template <class Visit>
    void VisitWithin(const math::DPOINT2& p, double reach, Visit visit) const {
        for (int run = 0, count = GetRunCount(); run < count; ++run)
            if (m_vecRuns[run].GetSquaredDistance(p) <= reach * reach) VisitRun(run, visit);
    }
    /// Calls visit(index) for the segments, in order, of the one run whose box is nearest to p; of equally
    /// near ones the first.
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

/// The index of a CCadPolyline or a CCadPolylineEx, which keeps it until it is changed. Null the first time
/// that it is asked for, for a contour without segments and when memory is refused. Null too for every other
/// class, one that derives from these included, since its segments may change where the polyline does not see
/// it.
QEVDATA_API const ContourIndex* IndexOf(const CCadObject& object);

} // namespace qev
