// Walking along a contour by a length.
//
// A single piece is one stretch: the ratio moves by the offset over the length, and whole turns come off. On
// a contour a walk that stays on its segment does the same. One that leaves it ends at a length from the
// contour's start: the length in front of its place plus the offset, whole laps taken off. The segment there
// is found by the running sums of the segments' lengths, which a contour that was asked before keeps in its
// index: so a walk costs a logarithm, however far it goes.
//
// Error: the sums and the length reached are rounded by about 1e-16 of the contour's length for each segment;
// the whole laps are taken off without rounding (std::fmod is exact), so that many laps blur nothing.
// Rejected: to add the segments on the way up from the start of the walk. That rounds a short walk on a long
// contour less, but costs a step for each segment, and two walks that end in one place would differ by where
// they began.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include <qev/measure/measures.h>
#include <qev/measure/positions.h>
#include <qev/position/offset_walk.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/position_order.h"
#include "../kinds/tolerance.h"
#include "data/contour_index.h"
#include "data/running_lengths.h"

namespace qev {
namespace {

using math::POLYPOS;

constexpr int kNoWalk = -1;
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

// Where a walk over segments ends, and how many joints it has passed: of those behind its start the joint at
// the start of the contour counts as well.
struct Arrival {
    POLYPOS place;
    std::int64_t passed;
};

// A walk over the segments of a contour, forward for a positive offset and backward for a negative one.
class SegmentWalk {
public:
    SegmentWalk(const CCadObject& contour, const POLYPOS& pos, double offset)
        : m_contour(contour), m_lengths(contour), m_pos(pos), m_dOffset(offset) {}

    // None on a contour whose length is 0 or no number, and when more laps are made than can be counted.
    std::optional<Arrival> Run() const {
        const double own = m_lengths.Of(m_pos.nSegIndex);
        const double available = own * (IsForward() ? 1 - m_pos.dRatio : m_pos.dRatio);
        if (!(available < std::abs(m_dOffset))) return WithinSegment(own);
        const double total = m_lengths.Total();
        if (!(total > 0) || !std::isfinite(total)) return std::nullopt;
        double left = m_dOffset, laps = 0;
        if (!(std::abs(m_dOffset) < total)) {
            left = std::fmod(m_dOffset, total); // exact
            laps = std::round((m_dOffset - left) / total);
            if (!(std::abs(laps) < std::numeric_limits<int>::max())) return std::nullopt;
        }
        const double from = m_lengths.Before(m_pos.nSegIndex) + own * m_pos.dRatio;
        return AtLength(from + left, static_cast<std::int64_t>(laps), total);
    }

private:
    bool IsForward() const { return m_dOffset > 0; }

    // The rest of the way lies on the segment that the walk begins on.
    std::optional<Arrival> WithinSegment(double own) const {
        if (!std::isfinite(own)) return std::nullopt;
        return OnSegment(m_pos.nSegIndex, m_pos.dRatio + m_dOffset / own, 0);
    }

    // The place at a length, which lies at most a lap before the contour's start or two behind it, `laps`
    // whole laps further on.
    Arrival AtLength(double length, std::int64_t laps, double total) const {
        if (const auto end = AtOpenEnd(length, laps, total)) return *end;
        while (length < 0) {
            length += total;
            --laps;
        }
        while (length >= total) {
            length -= total;
            ++laps;
        }
        if (length == 0) return OnSegment(0, 0, laps);
        const RunningLengths::Place place =
            IsForward() ? m_lengths.EndingFrom(length) : m_lengths.EndingBehind(length);
        return OnSegment(place.segment, (length - place.before) / m_lengths.Of(place.segment), laps);
    }

    // An open contour has nothing behind its end: a walk forward that comes within the tolerance of it stays
    // there, also after laps, and so does one backward at the start.
    std::optional<Arrival> AtOpenEnd(double length, std::int64_t laps, double total) const {
        const double tolerance = kZeroLength + kSumRounding * total;
        if (length > 2 * tolerance && length < total - 2 * tolerance) return std::nullopt; // most walks
        const double ends = std::round(length / total);
        const bool isNear = std::abs(length - ends * total) < tolerance;
        if (!isNear || m_contour.IsClose()) return std::nullopt;
        laps += static_cast<std::int64_t>(ends);
        if (IsForward() ? laps < 1 : laps > 0) return std::nullopt; // the end that the walk comes from
        const int last = m_lengths.GetCount() - 1;
        return IsForward() ? Arrival{{last, 1.0}, PassedAt(last, laps - 1)}
                           : Arrival{{0, 0.0}, PassedAt(0, laps)};
    }

    // The position at a ratio of a segment; a ratio of 1 is the start of the next segment. Behind the last
    // segment of an open contour there is none: a walk forward stays there, and so does one backward that
    // leaves the end by less than the tolerance.
    Arrival OnSegment(int segment, double ratio, std::int64_t laps) const {
        ratio = std::clamp(ratio, 0.0, 1.0); // rounded sums pass a very short segment
        const std::int64_t passed = PassedAt(segment, laps);
        if (!IsSameRatio(ratio, 1)) return {{segment, ratio}, passed};
        const int count = m_lengths.GetCount();
        const bool isEnd = segment == count - 1 && !m_contour.IsClose();
        if (isEnd && (IsForward() || passed == 0)) return {{segment, 1.0}, passed};
        return {{(segment + 1) % count, 0.0}, passed + (IsForward() ? 1 : -1)};
    }

    std::int64_t PassedAt(int segment, std::int64_t laps) const {
        const std::int64_t ahead = laps * m_lengths.GetCount() + segment - m_pos.nSegIndex;
        return IsForward() ? ahead : -ahead;
    }

    // Of the contour's length: what the few additions that lead to a length may be off by.
    static constexpr double kSumRounding = 4 * std::numeric_limits<double>::epsilon();

    const CCadObject& m_contour;
    RunningLengths m_lengths;
    POLYPOS m_pos;
    double m_dOffset;
};

// The laps are the segments passed over the count; a walk that ends on the segment it began on, before the
// place where it began, has one less behind it.
int WalkSegments(const CCadObject& contour, int count, const POLYPOS& pos, double offset, POLYPOS& out) {
    const std::optional<Arrival> arrival = SegmentWalk(contour, pos, offset).Run();
    if (!arrival) return kNoWalk;
    const POLYPOS& reached = arrival->place;
    const double ahead = (reached.dRatio - pos.dRatio) * (offset < 0 ? -1 : 1);
    const bool startNotReached = reached.nSegIndex == pos.nSegIndex && ahead <= -kSameRatio;
    const std::int64_t passed = startNotReached ? arrival->passed - 1 : arrival->passed;
    const std::int64_t whole = passed < count ? 0 : passed / count;
    const int laps = ToLaps(static_cast<double>(whole));
    if (laps != kNoWalk) {
        out.nSegIndex = reached.nSegIndex; // one by one, so that who reads them next does not wait for both
        out.dRatio = reached.dRatio;
    }
    return laps;
}

// Of the objects with one segment a single piece is walked as what it is, and so is a polyline.
bool IsWalkedAsPiece(const CCadObject& object) {
    return VisitCad(&object, kSegmentContours,
                    Handle{[](const SinglePiece auto&) { return true; },
                           [](const Contour& contour) { return contour.object.GetType() == kCadPolyline; },
                           Others<CCadDot>(false)});
}

} // namespace

int GetPosByOffset(const CCadObject* object, const POLYPOS& pos, double dOffset, POLYPOS& out) {
    const ContourIndex* const kept = object ? ContourIndex::KeptBy(*object) : nullptr;
    const int count = kept ? kept->GetSegmentCount() : GetCadSegments(object);
    if (!IsPosOn(object, count, pos) || !std::isfinite(dOffset)) return kNoWalk;
    if (std::abs(dOffset) < kZeroLength) {
        out = pos;
        return 0;
    }
    return count == 1 && IsWalkedAsPiece(*object) ? WalkPiece(*object, pos, dOffset, out)
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
