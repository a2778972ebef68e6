// Ordering, merging and intersecting ranges of positions.
//
// A range whose start lies after its end runs over the contour's start point. Every function treats such a
// range as what it is, two pieces: one up to the contour's end and one from its start. Merging goes once over
// the ranges in the order of their starts, where a range can only touch the one merged last. The pieces
// behind the start point, all of which begin at (0, 0), are one; the merged ranges that it reaches are merged
// with it at the end, and what it is then belongs to the last range, which runs over the start point again.
//
// Positions are compared exactly where ranges are merged, so that merging is an order and its answer does not
// depend on what was merged before; they are compared within kSameRatio where a position is asked against an
// end, because such a position was computed by another way. The comparisons of one function stand together in
// PlaceOf.
//
// Sorting: equal starts have to stay in the order that an exchange sort leaves them in, which hosts have
// stored. That is not the order of a stable sort, but it can be told without exchanging. Seen as cells that
// each keep the lesser of what they hold and what comes along, the exchange sort takes the ranges one by one
// from the first cell on: a range passes all cells that do not start behind it, takes the place of the first
// that does, and what stood there goes on in the same way. So a range comes to stand behind all with its own
// start, and each run of equal starts behind it gives its first range to its own end: the run turns by one.
// How often a run is turned before its next range comes is the count of ranges with lesser starts that stand
// between the two in the list (Earlier), and only runs of two or more are turned (OrderTies). All together
// takes O(n log n), and at most O(n^1.5) with runs that are long and many.
//
// A start that is not a number has no order on its segment: it passes every cell there, and every range of
// its segment passes it. So the segment's ranges stand in a queue of which only the numbers change places,
// and a range of a lesser segment turns the queue as a whole: it turns the runs of equal starts in it when
// the first in the queue is a number, and none when it is not. That queue is turned step by step, which takes
// O(n) for each segment with such a start.
//
// Lists. A list is walked with the inline tests of range_relations.h, and whether a range is well-formed is
// asked last, of the few that would meet. One list is asked against another by a search for each of its
// ranges, as many ranges can be asked at once there; a handful is walked, as taking a list apart needs
// memory.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <deque>
#include <limits>
#include <span>
#include <utility>

#include <qev/range/ranges.h>

#include "../kinds/position_order.h"
#include "../kinds/tolerance.h"
#include "range_relations.h"

namespace qev {
namespace {

using math::POLYPOS;
using math::PosRange;

enum class Place { kBefore, kAtStart, kInside, kAtEnd, kAfter };

// Where a position lies beside a range that does not run over the start point.
Place PlaceOf(const POLYPOS& pos, const PosRange& range) {
    if (IsSamePos(pos, range.start)) return Place::kAtStart;
    if (IsSamePos(pos, range.end)) return Place::kAtEnd;
    if (IsStrictlyInside(pos, range)) return Place::kInside;
    return IsBefore(pos, range.start) ? Place::kBefore : Place::kAfter;
}

bool StartsBefore(const PosRange& a, const PosRange& b) {
    return IsBefore(a.start, b.start);
}

// Where a range starts, and its place in the list.
struct Start {
    int nSegIndex;
    std::uint32_t nPlace;
    double dRatio;
    bool IsNumber() const { return !std::isnan(dRatio); }
};

using Starts = std::span<Start>;

// Starts that are not a number come last on their segment; equal ones in the order of their places. A
// function object, which a sort takes in line.
constexpr auto kComesBefore = [](const Start& a, const Start& b) {
    if (a.nSegIndex != b.nSegIndex) return a.nSegIndex < b.nSegIndex;
    if (a.dRatio < b.dRatio) return true;
    if (b.dRatio < a.dRatio) return false;
    return a.IsNumber() != b.IsNumber() ? a.IsNumber() : a.nPlace < b.nPlace;
};

bool HasEarlierPlace(const Start& a, const Start& b) {
    return a.nPlace < b.nPlace;
}

// Neither starts before the other.
bool AreTied(const Start& a, const Start& b) {
    return a.nSegIndex == b.nSegIndex && !(a.dRatio < b.dRatio);
}

// How many of the starts seen so far have a place before a given one (P. M. Fenwick's tree of sums, 1994).
class Earlier {
public:
    explicit Earlier(std::size_t n) : m_vecSums(n + 1) {}
    void Add(Starts starts) {
        for (const Start& start : starts)
            for (std::size_t i = start.nPlace + 1; i < m_vecSums.size(); i += i & (~i + 1)) ++m_vecSums[i];
        m_nTotal += starts.size();
    }
    std::size_t Before(const Start& start) const {
        std::size_t count = 0;
        for (std::size_t i = start.nPlace; i > 0; i &= i - 1) count += m_vecSums[i];
        return count;
    }
    std::size_t GetTotal() const { return m_nTotal; }

private:
    std::vector<std::uint32_t> m_vecSums;
    std::size_t m_nTotal = 0;
};

// Ranges that come one by one and are turned in between.
class Queue {
public:
    // Up to so many turns since the beginning; whole rounds change nothing.
    void TurnUpTo(std::size_t turns) {
        if (m_waiting.empty()) return void(m_nTurns = turns);
        const std::size_t rounds = (turns - m_nTurns) / m_waiting.size();
        if (rounds > 0)
            for (const Start& start : m_waiting) m_nNumbers += rounds * start.IsNumber();
        for (m_nTurns += rounds * m_waiting.size(); m_nTurns < turns; ++m_nTurns) {
            m_nNumbers += m_waiting.front().IsNumber();
            m_waiting.push_back(m_waiting.front());
            m_waiting.pop_front();
        }
    }
    void Add(const Start& start) { m_waiting.push_back(start); }
    // How often the one that was turned to the end was a number.
    std::size_t GetNumbers() const { return m_nNumbers; }
    const std::deque<Start>& GetAll() const { return m_waiting; }

private:
    std::deque<Start> m_waiting;
    std::size_t m_nTurns = 0;
    std::size_t m_nNumbers = 0;
};

// Calls visit for each run of neighbours that are the same.
template <class Same, class Visit>
void VisitRuns(Starts starts, const Same& same, const Visit& visit) {
    for (auto first = starts.begin(); first != starts.end();) {
        const auto end = std::find_if(first, starts.end(), [&](const Start& s) { return !same(*first, s); });
        visit(Starts(first, end));
        first = end;
    }
}

// Orders each run of equal starts among the numbers of a segment: turnsUntil tells how often a run was turned
// from before its segment until one of its ranges came, and turns how often in all.
template <class TurnsUntil>
void OrderRuns(Starts numbers, Earlier& earlier, const TurnsUntil& turnsUntil, std::size_t turns) {
    const std::size_t lesser = earlier.GetTotal();
    VisitRuns(numbers, AreTied, [&](Starts run) {
        if (run.size() > 1) {
            Queue queue;
            for (const Start& start : run) {
                queue.TurnUpTo(turnsUntil(start));
                queue.Add(start);
            }
            queue.TurnUpTo(turns + earlier.GetTotal() - lesser);
            std::copy(queue.GetAll().begin(), queue.GetAll().end(), run.begin());
        }
        earlier.Add(run);
    });
}

// Orders a segment some of whose starts are no numbers; they stand behind the others.
void OrderWithoutNumber(Starts segment, std::size_t numbers, Earlier& earlier) {
    std::vector<Start> coming(segment.begin(), segment.end());
    std::sort(coming.begin(), coming.end(), HasEarlierPlace);
    Queue queue;
    std::vector<std::size_t> idle; // turns that left the runs as they were, until each came
    for (const Start& start : coming) {
        queue.TurnUpTo(earlier.Before(start));
        idle.push_back(earlier.Before(start) - queue.GetNumbers());
        queue.Add(start);
    }
    queue.TurnUpTo(earlier.GetTotal());
    const auto turnsUntil = [&](const Start& start) {
        const auto found = std::lower_bound(coming.begin(), coming.end(), start, HasEarlierPlace);
        return earlier.Before(start) - idle[found - coming.begin()];
    };
    OrderRuns(segment.first(numbers), earlier, turnsUntil, queue.GetNumbers());
    earlier.Add(segment.subspan(numbers));
    const std::vector<Start> ordered(segment.begin(), segment.end());
    auto next = ordered.begin();
    std::transform(queue.GetAll().begin(), queue.GetAll().end(), segment.begin(),
                   [&next](const Start& start) { return start.IsNumber() ? *next++ : start; });
}

// Brings sorted starts into the order in which the exchange sort leaves them.
void OrderTies(Starts starts) {
    Earlier earlier(starts.size());
    const auto sameSegment = [](const Start& a, const Start& b) { return a.nSegIndex == b.nSegIndex; };
    VisitRuns(starts, sameSegment, [&earlier](Starts segment) {
        const auto isNumber = [](const Start& start) { return start.IsNumber(); };
        const std::size_t numbers =
            std::partition_point(segment.begin(), segment.end(), isNumber) - segment.begin();
        if (numbers < segment.size()) return OrderWithoutNumber(segment, numbers, earlier);
        OrderRuns(
            segment, earlier, [&earlier](const Start& start) { return earlier.Before(start); },
            earlier.GetTotal());
    });
}

// Brings ranges into the order of their starts without a second list: each cycle of places is gone round
// once.
void Arrange(std::vector<PosRange>& ranges, Starts starts) {
    for (std::uint32_t i = 0; i < starts.size(); ++i) {
        if (starts[i].nPlace == i) continue;
        const PosRange first = ranges[i];
        std::uint32_t to = i;
        for (std::uint32_t from = starts[to].nPlace; from != i; from = starts[to].nPlace) {
            ranges[to] = ranges[from];
            starts[to].nPlace = to;
            to = from;
        }
        starts[to].nPlace = to;
        ranges[to] = first;
    }
}

// Merges the piece behind the start point, of which something was found, with merged ranges: those that it
// reaches go into it, and what it is then belongs to the last range.
void PutInFront(PosRange front, std::vector<PosRange>& merged) {
    auto apart = merged.begin();
    for (; apart != merged.end() && !IsBefore(front.end, apart->start); ++apart)
        if (!IsBefore(apart->end, front.end)) front.end = apart->end;
    if (apart == merged.end())
        *--apart = front;
    else
        merged.back().end = front.end;
    merged.erase(merged.begin(), apart);
}

bool AreUsable(const PosRange& a, const PosRange& b) {
    return IsWellFormed(a) && IsWellFormed(b);
}

// Up to so many pairs of ranges are asked one by one.
constexpr std::size_t kFewPairs = 64;

} // namespace

OverStart TakeApart(const std::vector<PosRange>& ranges, std::vector<PosRange>& sorted) {
    OverStart over;
    for (const PosRange& range : ranges) {
        if (!IsWellFormed(range)) continue;
        if (RunsOverStart(range))
            over.Add(range);
        else
            sorted.push_back(range);
    }
    if (!std::is_sorted(sorted.begin(), sorted.end(), StartsBefore))
        std::sort(sorted.begin(), sorted.end(), StartsBefore);
    for (std::size_t i = 1; i < sorted.size(); ++i)
        if (IsBefore(sorted[i].end, sorted[i - 1].end)) sorted[i].end = sorted[i - 1].end;
    return over;
}

bool IsOverStartPoint(const PosRange& range) {
    return RunsOverStart(range);
}

bool IsOverStartPoint(const POLYPOS& start, const POLYPOS& end) {
    return RunsOverStart(PosRange(start, end));
}

void SortRange(std::vector<PosRange>* ranges) {
    if (!ranges) return;
    const auto inOrder = [](const PosRange& a, const PosRange& b) {
        return a.start.nSegIndex < b.start.nSegIndex
               || (a.start.nSegIndex == b.start.nSegIndex && a.start.dRatio <= b.start.dRatio);
    };
    const auto outOfOrder = [&inOrder](const PosRange& a, const PosRange& b) { return !inOrder(a, b); };
    // The exchange sort swaps nothing in ranges that are in order, equal starts included.
    if (ranges->size() < 2 || std::adjacent_find(ranges->begin(), ranges->end(), outOfOrder) == ranges->end())
        return;
    std::vector<Start> starts;
    starts.reserve(ranges->size());
    for (const PosRange& range : *ranges)
        starts.push_back(
            {range.start.nSegIndex, static_cast<std::uint32_t>(starts.size()), range.start.dRatio});
    std::sort(starts.begin(), starts.end(), kComesBefore);
    if (std::adjacent_find(starts.begin(), starts.end(), AreTied) != starts.end()) OrderTies(starts);
    Arrange(*ranges, starts);
}

void CombineRange(std::vector<PosRange>* ranges, int nSegments) {
    if (!ranges || ranges->size() < 2 || nSegments == 0) return;
    PosRange front; // all pieces behind the start point, which merge as they all begin there
    bool split = false;
    auto last = ranges->begin(); // the range that was merged last
    for (auto range = ranges->begin(); range != ranges->end(); ++range) {
        POLYPOS end = range->end;
        if (IsTurned(*range) && RunsOverStart(*range)) {
            if (!split || IsBefore(front.end, end)) front.end = end;
            split = true;
            end = {nSegments, 0.0};
        }
        if (range == last) {
            last->end = end;
        } else if (IsBefore(last->end, range->start)) {
            if (++last != range) *last = *range;
            last->end = end;
        } else if (!IsBefore(end, last->end)) {
            last->end = end;
        }
    }
    ranges->erase(last + 1, ranges->end());
    if (split) PutInFront(front, *ranges);
}

bool IsRangeIntersected(const PosRange& range, const POLYPOS& pos) {
    if (!IsWellFormed(range) || !IsWellFormed(pos)) return false;
    return IsStrictlyInside(pos, range) || IsAtAnEnd(pos, range);
}

bool IsRangeIntersected(const POLYPOS& pos, const PosRange& range) {
    return Holds(range, pos);
}

bool IsRangeIntersectedWithoutEndpoint(const PosRange& range, const POLYPOS& pos) {
    if (!IsWellFormed(range) || !IsWellFormed(pos)) return false;
    return RunsOverStart(range) ? IsBefore(pos, range.end) || IsBefore(range.start, pos)
                                : IsStrictlyInside(pos, range);
}

bool IsRangeIntersected(const PosRange& a, const PosRange& b) {
    return AreUsable(a, b) && Meet(a, b);
}

bool IsRangeIntersectedBoundary(const PosRange& a, const PosRange& b) {
    if (!AreUsable(a, b)) return false;
    const bool aWraps = RunsOverStart(a);
    const bool bWraps = RunsOverStart(b);
    if (aWraps && bWraps) return true;
    if (aWraps || bWraps) {
        const PosRange& wrapping = aWraps ? a : b;
        const PosRange& plain = aWraps ? b : a;
        return IsClearlyBefore(wrapping.start, plain.end) || IsClearlyBefore(plain.start, wrapping.end);
    }
    const Place end = PlaceOf(a.end, b);
    const Place start = PlaceOf(a.start, b);
    return start != Place::kAtEnd && start != Place::kAfter && end != Place::kBefore
           && end != Place::kAtStart;
}

// The lambdas hold copies of what is asked, which stay in registers, and std::ranges::any_of has them in its
// loop, where std::any_of, whose loop is unrolled, calls a function for each element. No range lies beside
// one over the start point.
bool IsRangeIntersected(const std::vector<PosRange>* ranges, const PosRange& range) {
    if (!IsWellFormed(range)) return false;
    const bool over = RunsOverStart(range);
    const POLYPOS from = over ? POLYPOS{std::numeric_limits<int>::min(), 0} : range.start;
    const POLYPOS to = over ? POLYPOS{std::numeric_limits<int>::max(), HUGE_VAL} : range.end;
    return std::ranges::any_of(*ranges, [from, to, &range](const PosRange& own) {
        return !LiesBeside(own, from, to) && Meet(own, range) && IsWellFormed(own);
    });
}

bool IsRangeIntersected(const std::vector<PosRange>* a, const std::vector<PosRange>* b) {
    if (a->size() <= 1 || b->size() <= kFewPairs / a->size())
        return std::any_of(a->begin(), a->end(),
                           [b](const PosRange& own) { return IsRangeIntersected(b, own); });
    std::vector<PosRange> sorted;
    const OverStart over = TakeApart(*b, sorted);
    return std::any_of(a->begin(), a->end(),
                       [&](const PosRange& own) { return IsWellFormed(own) && Meets(sorted, over, own); });
}

bool IsRangeIntersected(const std::vector<PosRange>* ranges, const POLYPOS& pos) {
    return IsWellFormed(pos) && std::ranges::any_of(*ranges, [pos](const PosRange& own) {
               return !LiesBeside(own, pos, pos) && Holds(own, pos);
           });
}

} // namespace qev
