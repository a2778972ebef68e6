/// \file
/// A set of ranges on one contour: excluded zones that many positions are asked against, and what is free
/// between them.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// The zones of one contour, sorted and merged once, so that each question takes a logarithm of their number.
/// The answers are those of IsRangeIntersected on the list that the set was made from. It keeps neither the
/// list nor the contour, may be copied, and its const functions may be called from any thread.
class QEVCOMMON_API CRangeSet {
public:
    /// The zones of a list on a contour, in any order. They are sorted as by SortRange and merged as by
    /// CombineRange. Left out are invalid ranges (IsInvalidRange without a contour) and those with a position
    /// on a segment that the contour does not have; an end at (count, 0) is allowed. Where the last zone
    /// reaches round to its own start, the set is the whole contour, (0, 0) to (count, 0). Empty for an
    /// object without segments and for null. Takes O(n log n). Throws std::bad_alloc without memory.
    CRangeSet(const CCadObject* contour, const std::vector<math::PosRange>& ranges);

    /// Whether a position lies in a zone, ends included within a ratio of 1e-9. A joint is written in normal
    /// form (NormalizePos): at the end of a segment it is not found in a zone that starts with the next
    /// segment. False for an invalid position.
    bool Holds(const math::POLYPOS& pos) const;

    /// Whether a range shares at least a point with a zone: ends that touch within a ratio of 1e-9
    /// count. Where either runs over the start point, ends count only when they are equal. False for an
    /// invalid range.
    bool Meets(const math::PosRange& range) const;

    /// The zones: disjoint, in the order of the contour, one over the start point last. The set keeps them.
    const std::vector<math::PosRange>& GetRanges() const { return m_vecRanges; }

    /// Writes the stretches between the zones, in the order of the contour, in normal form and with the tag
    /// 0; one over the start point of a closed contour comes last. An open contour ends at (count - 1, 1).
    /// Zones less than 1e-9 of a segment apart and those that meet at a joint have none between them. A set
    /// without zones leaves the whole contour, which is (0, 0) to (count, 0) of a closed one; a contour
    /// without segments has nothing free. The output is replaced. Throws std::bad_alloc without memory.
    void GetFree(std::vector<math::PosRange>& free) const;

    /// Whether the zones leave nothing of the contour free. False for a contour without segments.
    bool IsWhole() const;

private:
    template <class Visit>
    void VisitGaps(const Visit& visit) const;

    std::vector<math::PosRange> m_vecRanges;
    std::vector<math::PosRange> m_vecSorted; // apart from those over the start point; searched
    math::PosRange m_over;                   // all over the start point as one
    int m_nSegments = 0;
    bool m_bClosed = false;
};

} // namespace qev
