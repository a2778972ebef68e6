// Ranges on contours of up to six segments against samples, and a set of them against its list.
#include <algorithm>
#include <vector>

#include "input.h"

namespace {

using namespace qev;
using namespace fuzz;

using Ranges = std::vector<PosRange>;

// Quarters of the segments, so that ends meet often; unless exact, at times off by about the tolerance.
struct Places {
    Input& in;
    int segments;
    bool isExact;

    POLYPOS Pos() {
        const int segment = in.Int(0, segments - 1), quarter = in.Int(0, 3);
        const double ratio = quarter / 4.0 + (isExact ? 0 : 6e-10 * in.Int(-2, 2));
        if (in.IsHostile() && in.Int(0, 7) == 0) return {in.Int(-1, segments + 1), in.Number(1)};
        return {segment, std::abs(ratio)};
    }
    PosRange Range(int tag) {
        const POLYPOS start = Pos();
        return in.Coin() ? PosRange(start, Pos(), tag)
                         : PosRange(start, {start.nSegIndex, start.dRatio + 0.2}, tag);
    }
    Ranges List(int most) {
        Ranges ranges;
        for (int i = 0, count = in.Int(0, most); i < count; ++i) ranges.push_back(Range(i));
        return ranges;
    }
};

// Whether a place of the contour, as one number, lies in a range, ends included.
bool Covers(const PosRange& range, double at) {
    const double start = PolyPosToDouble(range.start), end = PolyPosToDouble(range.end);
    return start < end ? start <= at && at <= end : start > end && (at >= start || at <= end);
}

// The exchange sort, written out, decides the order of equal starts and of starts that are no number.
void ExpectExchangeSort(Ranges literal) {
    Ranges sorted = literal;
    const auto key = [](const PosRange& r) { return std::pair(r.start.nSegIndex, r.start.dRatio); };
    for (std::size_t i = 0; i + 1 < literal.size(); ++i)
        for (std::size_t j = i + 1; j < literal.size(); ++j)
            if (key(literal[j]) < key(literal[i])) std::swap(literal[i], literal[j]);
    SortRange(&sorted);
    const auto tag = [](auto& a, auto& b) { return a.nTag == b.nTag; };
    Expect(std::equal(sorted.begin(), sorted.end(), literal.begin(), tag), "the order of the exchange sort");
}

// The odd eighths, where no range begins or ends, are covered by the same places before and after.
void ExpectMerged(const Ranges& ranges, int segments) {
    Ranges merged = ranges;
    SortRange(&merged);
    CombineRange(&merged, segments);
    for (double at = 0.125; at < segments; at += 0.25) {
        const auto covers = [&](auto& range) { return Covers(range, at); };
        const auto times = std::count_if(merged.begin(), merged.end(), covers);
        Expect(times == std::any_of(ranges.begin(), ranges.end(), covers),
               "merged, they cover the same once");
    }
}

// In eighths: in the odd ones no range begins or ends.
void ExpectPair(const PosRange& a, const PosRange& b, int segments) {
    bool touch = false, overlap = false;
    for (int eighth = 0; !IsInvalidRange(a) && !IsInvalidRange(b) && eighth <= 8 * segments; ++eighth) {
        const bool both = Covers(a, eighth / 8.0) && Covers(b, eighth / 8.0);
        touch = touch || both;
        overlap = overlap || (both && eighth % 2 == 1);
    }
    Expect(IsRangeIntersected(a, b) == touch, "ranges share a point");
    Expect(IsRangeIntersectedBoundary(a, b) == overlap, "ranges share a stretch");
    const double at = PolyPosToDouble(b.start);
    const bool atEnd = at == PolyPosToDouble(a.start) || at == PolyPosToDouble(a.end), holds = Covers(a, at);
    Expect(IsRangeIntersected(a, b.start) == (!IsInvalidRange(a) && (IsOverStartPoint(a) ? atEnd : holds)),
           "a range holds a position");
    Expect(IsRangeIntersected(b.start, a) == (holds || atEnd), "a position lies in a range");
    Expect(IsRangeIntersectedWithoutEndpoint(a, b.start) == (!IsInvalidRange(a) && holds && !atEnd),
           "a position lies inside a range");
}

// What no zone holds is free, in the odd eighths.
void ExpectFree(const CRangeSet& set, const CCadObject& contour, int segments) {
    Ranges free;
    set.GetFree(free);
    for (double at = 0.125; at < segments; at += 0.25) {
        const POLYPOS pos = DoubleToPolyPos(&contour, at);
        Expect(set.Holds(pos) != IsRangeIntersected(&free, pos), "what no zone holds is free");
    }
    Expect(set.IsWhole() == free.empty(), "a whole set leaves nothing free");
    for (std::size_t i = 0; i < free.size(); ++i) {
        Expect(set.GetRanges().empty() || !IsInvalidRange(&contour, free[i]), "a free stretch is valid");
        Expect(i == 0 || PolyPosToDouble(free[i - 1].end) < PolyPosToDouble(free[i].start),
               "in order, apart");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    CCadPolyline contour;
    contour.SetStartPoint({0, 0});
    const int segments = in.Int(2, 6);
    for (int i = 1; i < segments; ++i) contour.AddArc({i * 1.0, 0}, 1);
    contour.AddLine(in.Coin() ? DPOINT2{0, 0} : DPOINT2{0, 7});
    Places places{in, segments, !in.IsHostile() && in.Coin()};
    const Ranges all = places.List(40), more = places.List(10);
    Ranges list;
    const auto isOn = [&](const POLYPOS& pos) { return PolyPosToDouble(pos) <= segments; };
    std::copy_if(all.begin(), all.end(), std::back_inserter(list), [&](const PosRange& range) {
        return !IsInvalidRange(range) && isOn(range.start) && isOn(range.end);
    });
    const CRangeSet set(&contour, all);
    for (const PosRange& range : more) {
        Expect(set.Holds(range.start) == IsRangeIntersected(&list, range.start),
               "a set holds what its list does");
        Expect(set.Meets(range) == IsRangeIntersected(&list, range), "a set meets what its list does");
        if (places.isExact && !all.empty()) ExpectPair(all.front(), range, segments);
    }
    const auto meets = [&](const PosRange& range) { return IsRangeIntersected(&list, range); };
    Expect(IsRangeIntersected(&more, &list) == std::any_of(more.begin(), more.end(), meets),
           "list against list");
    ExpectExchangeSort(all);
    if (!in.IsHostile()) {
        ExpectMerged(list, segments);
        ExpectFree(set, contour, segments);
    }
    return 0;
}
