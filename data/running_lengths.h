/// \file
/// Lengths along a contour. Not installed: for the library itself.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <qevdata/cad_object.h>

#include "contour_index.h"

namespace qev {

/// The running sums of a contour's segment lengths, from the first segment on and in their order: what every
/// walk, length and fraction along a contour is measured by. A contour with an index answers in a logarithm;
/// any other is summed anew for each question, with equal bits. The contour has to outlive this.
class RunningLengths {
public:
    explicit RunningLengths(const CCadObject& contour)
        : m_contour(contour), m_pIndex(IndexOf(contour)),
          m_nCount(m_pIndex ? m_pIndex->GetSegmentCount() : contour.GetSegmentCount()) {
        if (m_pIndex && !m_pIndex->IsMeasured()) m_pIndex = nullptr;
    }

    /// A segment, and the length in mm in front of it.
    struct Place {
        int segment;
        double before;
    };

    /// Whether the sums are kept, so that they cost nothing.
    bool HasSums() const { return m_pIndex; }
    /// Number of segments.
    int GetCount() const { return m_nCount; }
    /// Length in mm of a segment, which has to be one of the contour's.
    double Of(int i) const {
        return m_pIndex ? m_pIndex->GetSegmentLength(i) : m_contour.GetSegment(i).GetLength();
    }
    /// Length in mm in front of segment i; of the whole contour for the number of segments and above, 0 for
    /// less than 1.
    double Before(int i) const {
        const int end = std::clamp(i, 0, m_nCount);
        if (m_pIndex) return m_pIndex->GetSums()[end];
        double sum = 0;
        for (int k = 0; k < end; ++k) sum += Of(k);
        return sum;
    }
    /// Length in mm of the whole contour.
    double Total() const { return Before(m_nCount); }

    /// The first segment that ends at a length in mm or behind it; behind the last one when there is none.
    Place EndingFrom(double length) const {
        return FirstWhere(length, [length](double end) { return end >= length; });
    }
    /// The first segment that ends behind a length in mm; behind the last one when there is none.
    Place EndingBehind(double length) const {
        return FirstWhere(length, [length](double end) { return end > length; });
    }
    /// The first segment whose end passes a test, which has to pass for every greater length too; behind the
    /// last one when there is none. It is looked for first where the contour is about so many mm long, which
    /// changes how soon it is found and nothing else.
    template <class Test>
    Place FirstWhere(double about, const Test& isReached) const {
        if (m_pIndex) return FirstOfSums(about, isReached);
        double before = 0;
        for (int i = 0; i < m_nCount; ++i) {
            const double end = before + Of(i);
            if (isReached(end)) return {i, before};
            before = end;
        }
        return {m_nCount, before};
    }

private:
    static constexpr int kRow = 8;

    // The first of a row of segments among which the contour is probably so many mm long; there are as many
    // segments at least. Most contours have segments of like lengths, so that the mean length leads near the
    // place, and a few corrections by it to the place: past fewer sums, which lie far apart in memory, than
    // halving goes through.
    int GuessedRow(double length) const {
        constexpr int kGuesses = 6;
        constexpr double kNear = 3; // segments, less than half a row
        const double* const sums = m_pIndex->GetSums().data();
        const double segmentsPerLength = m_pIndex->GetSegmentsPerLength();
        double guess = length * segmentsPerLength;
        int i = 0;
        for (int k = 0; k < kGuesses; ++k) {
            i = guess > 0 ? (guess < m_nCount ? static_cast<int>(guess) : m_nCount) : 0;
            const double missed = (length - sums[i]) * segmentsPerLength;
            if (std::abs(missed) < kNear) break;
            guess = i + missed;
        }
        return std::clamp(i - kRow / 2, 0, m_nCount - kRow);
    }

    // The place is counted off in the guessed row, of which all sums are looked at, without a branch that
    // would be guessed wrong. Where it is not there, since lengths are too uneven, all are halved.
    template <class Test>
    Place FirstOfSums(double about, const Test& isReached) const {
        if (m_nCount < kRow) return HalvedSums(isReached);
        const int first = GuessedRow(about);
        const double* const row = m_pIndex->GetSums().data() + first;
        const bool isBefore = first > 0 && isReached(row[0]);
        if (isBefore || !isReached(row[kRow])) return HalvedSums(isReached);
        std::ptrdiff_t passed = 0;
        for (int k = 1; k < kRow; ++k) passed += isReached(row[k]) ? 0 : 1;
        return {first + static_cast<int>(passed), row[passed]};
    }
    template <class Test>
    Place HalvedSums(const Test& isReached) const {
        const std::vector<double>& sums = m_pIndex->GetSums();
        const auto end =
            std::partition_point(sums.begin() + 1, sums.end(), [&](double sum) { return !isReached(sum); });
        return {static_cast<int>(end - sums.begin()) - 1, *(end - 1)};
    }

    const CCadObject& m_contour;
    const ContourIndex* m_pIndex; // null when the contour has none
    int m_nCount;
};

} // namespace qev
