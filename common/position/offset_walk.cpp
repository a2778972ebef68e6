// Walking along a contour by a length.
//
// A single piece is one stretch: the ratio moves by the offset over the length, and whole turns come off. A
// contour is walked segment by segment, since only their lengths tell where the walk ends; the length left
// goes down by each segment passed, so that the answer has the rounding of the segments on the way and not of
// the whole contour. A walk of many laps would take too long: once a whole lap has been measured on the way,
// the laps but the last are taken off at once. A contour that has been asked before has the lengths in its
// index; they are the segments' own to the bit.
//
// Error: each segment passed rounds the length left by about 1e-16 of it. Taking n laps off at once rounds
// once by 1e-16 of n laps in place of n times, so that a short walk, whose last digits hosts have stored,
// takes every step (kLongWalk). Rejected: a table of running sums and a search in it, which answers at once
// but subtracts two long sums: another rounding, and for short walks on long contours a worse one.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <qev/measure/measures.h>
#include <qev/measure/positions.h>
#include <qev/position/offset_walk.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"
#include "data/contour_index.h"

namespace qev {
namespace {

using math::POLYPOS;

constexpr int kNoWalk = -1;
// Segments. A walk that would still pass more of them than this takes whole laps off at once; a shorter one
// takes every step, so that its last digits do not depend on the shortcut.
constexpr double kLongWalk = 1e5;
constexpr int kMostSteps = 1'000'000; // of an offset table on each side: more are no samples but a wrong step

// The laps as the answer of a walk.
int ToLaps(double laps) {
    laps = std::abs(laps);
    return laps <= std::numeric_limits<int>::max() ? static_cast<int>(laps) : kNoWalk;
}

// The place on a piece, in [0, 1], that the ratio of a walk stands for. A ratio within kSameRatio of a whole
// number is the end that the walk has come to, so that rounding carries no walk over it. Taking off the whole
// turns at once gives the bits that adding or subtracting 1 turn by turn would give, since all but the last
// of those sums are exact.
double Wrapped(double ratio, bool backward, bool closed) {
    const double turn = std::round(ratio);
    if (IsSameRatio(ratio, turn) && (backward ? turn <= 0 : turn >= 1)) return backward || closed ? 0 : 1;
    if (backward && ratio < 0) return ratio - std::floor(ratio);
    return !backward && ratio > 1 ? ratio - (std::ceil(ratio) - 1) : ratio;
}

// Single pieces wrap by their length. A change that is a whole number within kSameRatio counts as that many
// laps, though its rounding may lie just below. The output is written last, since it may be `pos`.
int WalkPiece(const CCadObject& piece, const POLYPOS& pos, double offset, POLYPOS& out) {
    const double length = GetCadLength(&piece);
    if (!std::isfinite(length)) return kNoWalk;
    const double ratio = length > 0 ? (pos.dRatio * length + offset) / length : pos.dRatio;
    const double change = ratio - pos.dRatio;
    const double lap = offset < 0 ? -1 : 1;
    double laps = std::trunc(change);
    if (IsSameRatio(change - laps, lap)) laps += lap;
    const POLYPOS reached{pos.nSegIndex, Wrapped(ratio, offset < 0, piece.IsClose())};
    if (IsInvalidPos(&piece, reached)) return kNoWalk;
    const int answer = ToLaps(laps);
    if (answer != kNoWalk) out = reached;
    return answer;
}

// A walk over the segments of a contour. Forward and backward share all but the side from which a segment is
// entered: it is passed from ratio 0 up, or from ratio 1 down.
class SegmentWalk {
public:
    SegmentWalk(const CCadObject& contour, int count, const POLYPOS& pos, double offset)
        : m_contour(contour), m_pIndex(IndexOf(contour)), m_nCount(count), m_nDirection(offset < 0 ? -1 : 1),
          m_nIndex(pos.nSegIndex), m_dLeft(std::abs(offset)), m_dEntry(pos.dRatio) {}

    // Passes segments until the rest of the way lies within one; false when it never does.
    bool Run() {
        EnterSegment();
        double available = m_dLength * (m_nDirection > 0 ? 1 - m_dEntry : m_dEntry);
        double atLapStart = std::numeric_limits<double>::infinity();
        while (available < m_dLeft) {
            m_dLeft -= available;
            m_bAtEnd = IsAtLastSegment() && m_dLeft < kZeroLength;
            if (m_bAtEnd) break;
            Step();
            m_dEntry = m_nDirection > 0 ? 0.0 : 1.0;
            available = m_dLength;
            if ((m_nPassed - 1) % m_nCount != 0) continue; // laps are counted from the first whole segment
            if (!SkipLaps(atLapStart - m_dLeft)) return false;
            atLapStart = m_dLeft;
        }
        return std::isfinite(m_dLength);
    }

    // The position reached; a ratio of 1 is the start of the next segment. An open contour has none behind
    // its very end: a forward walk stays there, also when it has just come round to the start, and so does a
    // backward one that leaves the end by less than the tolerance.
    POLYPOS Position() {
        if (m_bAtEnd) return m_nDirection > 0 ? POLYPOS{m_nCount - 1, 1.0} : POLYPOS{0, 0.0};
        const double ratio = std::max(m_dEntry + m_nDirection * (m_dLeft / m_dLength), 0.0);
        const bool open = !m_contour.IsClose();
        if (!IsSameRatio(ratio, 1)) {
            const bool isRound = open && m_nDirection > 0 && m_nPassed > 0 && m_nIndex == 0;
            if (!isRound || !IsSameRatio(ratio, 0)) return {m_nIndex, ratio};
            --m_nPassed;
            return {m_nCount - 1, 1.0};
        }
        const bool isEnd = open && m_nIndex == m_nCount - 1;
        if (isEnd && (m_nDirection > 0 || m_nPassed == 0)) return {m_nIndex, 1.0};
        m_nPassed += m_nDirection;
        return {(m_nIndex + 1) % m_nCount, 0.0};
    }

    std::int64_t Passed() const { return m_nPassed; }

private:
    // Whether the walk goes over the end of an open contour when it leaves the present segment.
    bool IsAtLastSegment() const {
        return m_nIndex == (m_nDirection > 0 ? m_nCount - 1 : 0) && !m_contour.IsClose();
    }

    void EnterSegment() {
        m_dLength =
            m_pIndex ? m_pIndex->GetSegmentLength(m_nIndex) : m_contour.GetSegment(m_nIndex).GetLength();
    }

    void Step() {
        ++m_nPassed;
        m_nIndex = (m_nCount + m_nIndex + m_nDirection) % m_nCount;
        EnterSegment();
    }

    // Takes laps of a long walk off at once, but for the last one. False for a lap without length and for
    // more laps than can be answered.
    bool SkipLaps(double lap) {
        const double laps = std::floor(m_dLeft / lap) - 1;
        if (!(lap > 0) || laps > std::numeric_limits<int>::max()) return false;
        if (laps * m_nCount < kLongWalk) return true;
        m_dLeft -= laps * lap;
        m_nPassed += static_cast<std::int64_t>(laps) * m_nCount;
        return true;
    }

    const CCadObject& m_contour;
    const ContourIndex* m_pIndex; // null when the contour has none
    int m_nCount;
    int m_nDirection;
    int m_nIndex;
    std::int64_t m_nPassed = 0;
    double m_dLeft;
    double m_dEntry; // the ratio at which the present segment was entered
    double m_dLength = 0;
    bool m_bAtEnd = false; // the walk ends at an end of an open contour
};

// The laps are the segments passed over the count; a walk that ends on the segment it began on, before the
// place where it began, has one less behind it.
int WalkSegments(const CCadObject& contour, int count, const POLYPOS& pos, double offset, POLYPOS& out) {
    SegmentWalk walk(contour, count, pos, offset);
    if (!walk.Run()) return kNoWalk;
    const POLYPOS reached = walk.Position();
    if (IsInvalidPos(&contour, reached)) return kNoWalk;
    const double ahead = (reached.dRatio - pos.dRatio) * (offset < 0 ? -1 : 1);
    const bool startNotReached = reached.nSegIndex == pos.nSegIndex && ahead <= -kSameRatio;
    const std::int64_t passed = walk.Passed();
    const std::int64_t whole = (startNotReached ? passed - 1 : passed) / count;
    const int laps = ToLaps(passed == 0 ? 0 : static_cast<double>(whole));
    if (laps != kNoWalk) out = reached;
    return laps;
}

// A polyline of one segment is walked as the one piece that it is.
bool IsWalkedAsPiece(const CCadObject& object, int count) {
    return VisitCad(&object, kSegmentContours,
                    Handle{[](const SinglePiece auto&) { return true; },
                           [count](const Contour& contour) {
                               return count == 1 && contour.object.GetType() == kCadPolyline;
                           },
                           Others<CCadDot>(false)});
}

} // namespace

int GetPosByOffset(const CCadObject* object, const POLYPOS& pos, double dOffset, POLYPOS& out) {
    if (IsInvalidPos(object, pos) || !std::isfinite(dOffset)) return kNoWalk;
    if (std::abs(dOffset) < kZeroLength) {
        out = pos;
        return 0;
    }
    const int count = GetCadSegments(object);
    return IsWalkedAsPiece(*object, count) ? WalkPiece(*object, pos, dOffset, out)
                                           : WalkSegments(*object, count, pos, dOffset, out);
}

void GetOffsetTable(double dBack, double dForward, double dStep, std::vector<int>& out) {
    const double back = std::trunc(dBack / dStep);
    const double forward = std::trunc(dForward / dStep);
    if (!(back <= kMostSteps && forward <= kMostSteps)) return;
    for (int k = 1; k <= back || k <= forward; ++k) {
        if (k <= forward) out.push_back(k);
        if (k <= back) out.push_back(-k);
    }
}

} // namespace qev
