// A set of ranges on one contour.
//
// The zones that callers see are merged by CombineRange. Questions do not go to those, as a zone over the
// start point is compared exactly and a plain one within the tolerance: a merged zone does not tell any more
// which of its ends came from which. They go to the list taken apart (range_relations.h): its plain ranges,
// of which one search finds the only one that can matter, and those over the start point as one. So a set
// answers as the list does, to the last bit of an end.
//
// The free stretches are the gaps between the zones along the contour laid flat, from (0, 0) to (count, 0). A
// zone over the start point covers both ends of it. Where it leaves both ends free, a closed contour has one
// stretch there, the last one going on into the first.

#include <algorithm>
#include <iterator>

#include <qev/measure/positions.h>
#include <qev/range/range_set.h>
#include <qev/range/ranges.h>

#include "../kinds/tolerance.h"
#include "range_relations.h"

namespace qev {
namespace {

using math::POLYPOS;
using math::PosRange;

bool IsOnContour(const POLYPOS& pos, int count) {
    return pos.nSegIndex < count || (pos.nSegIndex == count && IsSameRatio(pos.dRatio, 0));
}

// The end of a segment as the start of the next one, the last segment's as (count, 0).
POLYPOS Laid(const POLYPOS& pos) {
    return IsSameRatio(pos.dRatio, 1) ? POLYPOS{pos.nSegIndex + 1, 0.0} : pos;
}

} // namespace

CRangeSet::CRangeSet(const CCadObject* contour, const std::vector<PosRange>& ranges)
    : m_nSegments(std::max(GetCadSegments(contour), 0)), m_bClosed(contour && contour->IsClose()) {
    const auto isZone = [this](const PosRange& range) {
        return IsWellFormed(range) && IsOnContour(range.start, m_nSegments)
               && IsOnContour(range.end, m_nSegments);
    };
    std::copy_if(ranges.begin(), ranges.end(), std::back_inserter(m_vecRanges), isZone);
    SortRange(&m_vecRanges);
    m_over = TakeApart(m_vecRanges, m_vecSorted).range;
    CombineRange(&m_vecRanges, m_nSegments);
    if (!m_vecRanges.empty()
        && !IsWellFormed(m_vecRanges.back())) // it ends less than the tolerance before its start
        m_vecRanges = {PosRange({0, 0.0}, {m_nSegments, 0.0}, m_vecRanges.back().nTag)};
}

bool CRangeSet::Holds(const POLYPOS& pos) const {
    return IsWellFormed(pos) && (Touches(m_vecSorted, pos, pos) || HoldsOverStart(m_over, pos));
}

bool CRangeSet::Meets(const PosRange& range) const {
    return IsWellFormed(range) && qev::Meets(m_vecSorted, {m_over}, range);
}

// Visits the gaps in order as long as visit(from, to) is true. The positions are laid flat.
template <class Visit>
void CRangeSet::VisitGaps(const Visit& visit) const {
    if (m_nSegments < 1) return;
    const bool runsOver = !m_vecRanges.empty() && RunsOverStart(m_vecRanges.back());
    POLYPOS from = runsOver ? m_vecRanges.back().end : POLYPOS{0, 0.0};
    const auto visitUpTo = [&](const POLYPOS& to) {
        const bool isGap = IsClearlyBefore(from, to) && IsClearlyBefore(Laid(from), Laid(to));
        return !isGap || visit(Laid(from), Laid(to));
    };
    for (const PosRange& zone : m_vecRanges) {
        if (!visitUpTo(zone.start)) return;
        from = zone.end;
    }
    if (!runsOver) visitUpTo({m_nSegments, 0.0});
}

void CRangeSet::GetFree(std::vector<PosRange>& free) const {
    free.clear();
    VisitGaps([&free](const POLYPOS& from, const POLYPOS& to) {
        free.emplace_back(from, to);
        return true;
    });
    if (free.empty() || free.back().end.nSegIndex < m_nSegments) return;
    const bool atStart = IsSamePos(free.front().start, {0, 0.0});
    if (!m_bClosed) {
        free.back().end = {m_nSegments - 1, 1.0};
    } else if (!atStart) {
        free.back().end = {0, 0.0};
    } else if (free.size() > 1) {
        free.back().end = free.front().end;
        free.erase(free.begin());
    }
}

bool CRangeSet::IsWhole() const {
    bool whole = m_nSegments > 0;
    VisitGaps([&whole](const POLYPOS&, const POLYPOS&) { return whole = false; });
    return whole;
}

} // namespace qev
