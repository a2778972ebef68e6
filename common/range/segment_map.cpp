// Segment maps between a contour and one that was made from it, and positions carried over by them.
//
// GetSegMap goes by length: the middle of each destination segment, as a fraction of the whole length, lies
// in one source segment. The middles come in order, so that each search goes on where the one before ended,
// and all of it takes one pass. Positions are carried by the map in two ways: MapPos asks which of the
// destination segments of a source segment the point lies on, GetMapPos spreads the source segment's length
// over them. The first is right to the point as long as the destination passes through it; the second needs
// no point and serves contours that were moved or deformed.
//
// Error: the map is a decision for each segment, wrong only where a joint of the source lies within rounding
// of the middle of a destination segment. Carried lengths round by about 1e-16 of the length for each
// segment.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include <qev/measure/measures.h>
#include <qev/measure/positions.h>
#include <qev/position/position_conversion.h>
#include <qev/range/segment_map.h>
#include <qevdata/multi_segments.h>
#include <qevmath/point.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/tolerance.h"
#include "data/running_lengths.h"

namespace qev {
namespace {

// What a map can be made between: one piece with one segment, or a contour of many. Kinds that the library
// does not know are served as far as their answers need no segments.
enum class Form { kRefused, kUnknown, kSingle, kMulti };

Form FormOf(const CCadObject* object) {
    // Known kinds without a shape and without segments; those with a shape are refused by the visit.
    constexpr cad_t kShapeless[] = {kCad1300, kCad1B00, kCad1C00};
    if (!object) return Form::kRefused;
    const cad_t code = object->GetType();
    const bool known =
        ShapeOf(code) != Shape::kNone
        || std::find(std::begin(kShapeless), std::end(kShapeless), code) != std::end(kShapeless);
    if (!known) return Form::kUnknown;
    return VisitCad(object, kSegmentContours,
                    Handle{[](const SinglePiece auto&) { return Form::kSingle; },
                           [](const Contour&) { return Form::kMulti; }, Others<CCadDot>(Form::kRefused)});
}

// The search of FindSegmentIndexByRate on any kind: the segment, from `first` on, whose stretch of the whole
// length holds the fraction `rate`. `before` is the length in front of it, `found` gets that of the segment
// found. -1, and a length of 0, when the rate lies before `first` or behind the end. With the contour's own
// length in front of `first` the segment is found by the running sums.
int FindByRate(const CCadObject& contour, double total, double rate, int first, double before,
               double& found) {
    const RunningLengths lengths(contour);
    int i = std::max(first, 0);
    const int count = lengths.GetCount();
    if (i < count && lengths.HasSums() && before == lengths.Before(i) && !(before / total > rate)) {
        const auto place = lengths.FirstWhere(rate * total, [=](double end) { return rate <= end / total; });
        i = std::max(i, place.segment);
        before = lengths.Before(i);
    }
    for (; i < count && !(before / total > rate); ++i) {
        const double length = lengths.Of(i);
        if (rate <= (before + length) / total) {
            found = before;
            return i;
        }
        before += length;
    }
    found = 0;
    return -1;
}

// The greatest share of a contour's length at which one of its segments ends; what lies beyond is in none.
double FurthestShare(const CCadObject& contour, double total) {
    double furthest = -std::numeric_limits<double>::infinity();
    double passed = 0;
    for (int i = 0, count = contour.GetSegmentCount(); i < count; ++i) {
        passed += contour.GetSegment(i).GetLength();
        furthest = std::max(furthest, passed / total); // stays for a share that is not a number
    }
    return furthest;
}

// Fills the first entries, as many as the source has segments and the map has room for. A segment that is not
// found keeps its entry, and the search starts from the first source segment again. A share that no segment
// reaches, or that is not a number, is not searched for, so that all searches together pass the source once.
void FillByLength(const CCadObject& source, const CCadObject& destination, std::vector<int>& map) {
    const double total = destination.GetLength();
    const double sourceTotal = source.GetLength();
    if (IsSameLength(sourceTotal, 0)) return;
    const double furthest = FurthestShare(source, sourceTotal);
    const int entries = std::min(source.GetSegmentCount(), static_cast<int>(map.size()));
    double passed = 0;
    double before = 0;
    int hint = 0;
    for (int i = 0; i < entries; ++i) {
        const double length = destination.GetSegment(i).GetLength();
        const double share = (length / 2 + passed) / total;
        passed += length;
        const int found =
            share <= furthest ? FindByRate(source, sourceTotal, share, hint, before, before) : -1;
        if (found < 0) before = 0;
        hint = std::max(found, 0);
        if (found >= 0) map[i] = found;
    }
}

// The index of the first entry with a value, from an index on to the map's end and then from its start; -1
// for none.
int FindEntry(const std::vector<int>& map, int value, std::int64_t from) {
    const auto size = static_cast<std::int64_t>(map.size());
    const std::int64_t first = (from % size + size) % size;
    for (std::int64_t k = 0; k < size; ++k)
        if (const std::int64_t i = (first + k) % size; map[i] == value) return static_cast<int>(i);
    return -1;
}

// The source segment that a position is passed on to which lies on a segment without entries: the first one
// behind it that has some, and then from the source's start on; when none has any, the one that the search
// ends at after once round. A source that does not tell its segments has one, the first.
int NextWithEntries(const std::vector<int>& map, int from, int count) {
    const std::int64_t segments = std::abs(std::int64_t{count});
    const std::int64_t first = (std::int64_t{from} + 1) % segments;
    std::int64_t least = segments - 1; // segments behind `first`
    for (const int entry : map)
        if (entry >= 0 && entry < segments)
            least = std::min(least, entry - first + (entry < first ? segments : 0));
    return static_cast<int>((first + least) % segments);
}

// Several destination segments come from the source segment of `pos`. Their lengths are laid behind each
// other, and the source segment's length up to `pos` ends on one of them: that place is the answer. Nothing
// is written when together they are shorter than that by kSameLength or more. The sum of the lengths is
// rounded, so that the last of them can end before the end of the source segment, and one shorter than the
// rounding before the place that lies on it: its end is the answer then.
void SpreadOver(const CCadObject* source, const CCadObject* destination, const std::vector<int>& map,
                const math::POLYPOS& pos, math::POLYPOS& out) {
    const double target = GetSegLength(source, pos.nSegIndex) * pos.dRatio;
    const auto answer = [&](int j, double ratio) {
        out = {j, ratio <= 1 ? ratio : 1.0};
        NormalizePos(destination, out);
    };
    double sum = 0;
    int last = 0;
    for (int j = 0, size = static_cast<int>(map.size()); j < size; ++j) {
        if (map[j] != pos.nSegIndex) continue;
        const double length = GetSegLength(destination, j);
        if (sum + length >= target) return answer(j, length > 0 ? (target - sum) / length : 0);
        sum += length;
        last = j;
    }
    if (target - sum < kSameLength) answer(last, 1);
}

} // namespace

int FindSegmentIndexByRate(const CCadMultiSegments* contour, double dRate, int nFirst, double dLengthBefore,
                           double& dFoundBefore) {
    if (!contour) return -1;
    const double total = contour->GetLength();
    if (IsSameLength(total, 0)) return -1;
    return FindByRate(*contour, total, dRate, nFirst, dLengthBefore, dFoundBefore);
}

void GetSegMap(const CCadObject* source, const CCadObject* destination, std::vector<int>& map) {
    const Form from = FormOf(source);
    const Form to = FormOf(destination);
    if (from == Form::kRefused || to == Form::kRefused) return;
    if (to == Form::kSingle) return map.resize(1);
    if (to != Form::kMulti || from == Form::kUnknown) return;
    const bool byLength = from == Form::kMulti;
    map.resize(static_cast<std::size_t>(std::max(GetCadSegments(destination), 0)), byLength ? -1 : 0);
    if (byLength) FillByLength(*source, *destination, map);
}

bool MapPos(const CCadObject* source, const CCadObject* destination, const std::vector<int>* map,
            int nSegIndex, double dRatio, int* pSegIndex, double* pRatio) {
    if (!map || map->empty() || !pSegIndex || !pRatio) return false;
    const int first = FindEntry(*map, nSegIndex, *pSegIndex);
    math::DPOINT2 point;
    if (first < 0 || !PosToCoor(source, nSegIndex, dRatio, point)) return false;
    double ratio = 0;
    int j = first;
    bool tried = false;
    if (!CoorToRatio(destination, point, j, ratio) || (j == *pSegIndex && ratio < *pRatio)) {
        do { // The segments after it, and at last the first one again, now without the least ratio.
            if (j == first && tried) return false;
            tried = true;
            j = FindEntry(*map, nSegIndex, std::int64_t{j} + 1);
        } while (!CoorToRatio(destination, point, j, ratio));
    }
    *pSegIndex = j;
    *pRatio = ratio;
    return true;
}

void GetMapPos(const CCadObject* source, math::POLYPOS pos, const CCadObject* destination, math::POLYPOS& out,
               const std::vector<int>& map) {
    const Form to = FormOf(destination);
    const bool refused = to == Form::kRefused || FormOf(source) == Form::kRefused;
    if (refused || IsInvalidPos(pos) || map.empty()) return;
    out = pos;
    const int size = static_cast<int>(map.size());
    if (std::all_of(map.begin(), map.end(), [](int entry) { return entry == -1; })) {
        out.nSegIndex = std::min(pos.nSegIndex, size - 1);
        return;
    }
    const int count = GetCadSegments(source);
    auto entries = std::count(map.begin(), map.end(), pos.nSegIndex);
    if (entries == 0 && count != 0) {
        pos = {NextWithEntries(map, pos.nSegIndex, count), 0.0};
        out = pos;
        entries = std::count(map.begin(), map.end(), pos.nSegIndex);
    }
    if (to == Form::kSingle)
        out = {0, pos.dRatio};
    else if (to == Form::kMulti && entries == 1)
        out = {FindEntry(map, pos.nSegIndex, 0), pos.dRatio};
    else if (to == Form::kMulti && entries > 1)
        SpreadOver(source, destination, map, pos, out);
}

} // namespace qev
