// Sides that lie over each other lie on one straight line. So the sides are sorted by the direction of their
// line, and those of one direction by its distance from the middle of the drawing; in a run of sides of one
// line each is an interval, and going along it tells what overlaps.
//
// Directions are the same up to kSameDirection, and distances up to what that makes of them at the end of the
// drawing. Sides that were drawn over each other differ by less, unless they are short and their file has few
// digits; such ones are not found. What has come into one run
// though it lies a little beside (runs are made from neighbour to neighbour) is measured once more by its own
// ends, so that nothing is taken for covered that is not.
//
// Of the sides that begin before another one, only the two that reach farthest are kept: if any of them
// covers the other then one of these does, and two are needed since the farthest may be the side itself.
//
// To delete every covered line was rejected. Two parts that stand side by side share a stretch of their
// outlines; where the outlines are single lines, the side of the smaller part is covered by that of the
// larger one, and without it the smaller part is open and not cut at all. Such a side has ends from which one
// other line goes on. A line that was drawn twice ends free, or where two others meet that go on into each
// other.

#include "overlaps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "leaves.h"
#include "outline.h"

namespace host {
namespace {

using math::DPOINT2;
using qev::CCadObject;
using qev::SEGMENT;

// mm: what lies this near cannot be cut beside each other by any machine, and is above the rounding of files
// that have few digits.
constexpr double kSamePlace = 1e-3;

// Radians: kSamePlace over a side of 100 mm.
constexpr double kSameDirection = 1e-5;

// Directions are counted from this one (radians): hardly a line has it, so that rounding hardly ever parts
// two that are the same.
constexpr double kFirstDirection = -0.3;

// A straight side, by its interval on the line that it lies on.
struct Side {
    DPOINT2 start, end;
    int object = 0;      // place among the objects gone over
    int layer = 0;       // places of layers, 0 when all are one
    bool isLine = false; // the object has no other side and is open
    double direction = 0;
    double offset = 0; // mm, of its middle from the middle of the drawing, across the direction
    double from = 0;   // mm along the direction
    double to = 0;

    double Length() const { return to - from; }
};

// Radians, from kFirstDirection on, less than half a turn.
double DirectionOf(const DPOINT2& way) {
    double direction = std::atan2(way.y, way.x);
    if (direction < kFirstDirection) direction += math::kPi;
    if (direction >= kFirstDirection + math::kPi) direction -= math::kPi;
    return direction;
}

class Sides {
public:
    explicit Sides(bool acrossLayers) : m_bAcrossLayers(acrossLayers) {}

    void Add(const CCadObject& object, int number) {
        const int count = object.GetPieceCount();
        if (count == 0) return;
        const CString layer = m_bAcrossLayers ? CString() : object.GetKey("Layer");
        const int place = m_mapLayers.try_emplace(layer, static_cast<int>(m_mapLayers.size())).first->second;
        for (int i = 0; i < count; ++i) {
            const qev::OutlinePiece piece = object.GetPiece(i);
            const auto* s = std::get_if<SEGMENT>(&piece);
            const bool isStraight = s && s->nType != SEGMENT::kBezier && s->dBulge == 0;
            if (!isStraight || math::D2GetDistance(s->ptStart, s->ptEnd) <= kSamePlace) continue;
            Side side{s->ptStart, s->ptEnd, number, place, count == 1};
            side.direction = DirectionOf(side.end - side.start);
            m_vecSides.push_back(side);
            m_box.Add(s->ptStart);
            m_box.Add(s->ptEnd);
        }
    }

    // Calls a function with each run of sides on one line, in the order in which they begin on it.
    template <class Visit>
    void ForEachRun(const Visit& visit) {
        const DPOINT2 middle = math::Interpolate(m_box.lower, m_box.upper, 0.5);
        const auto byDirection = [](const Side& a, const Side& b) {
            return std::pair(a.layer, a.direction) < std::pair(b.layer, b.direction);
        };
        const auto isOneDirection = [](const Side& a, const Side& b) {
            return a.layer == b.layer && b.direction - a.direction <= kSameDirection;
        };
        const auto byOffset = [](const Side& a, const Side& b) { return a.offset < b.offset; };
        const double gap = kSamePlace + kSameDirection * math::D2GetDistance(middle, m_box.upper);
        const auto isOneLine = [gap](const Side& a, const Side& b) { return b.offset - a.offset <= gap; };
        const auto byBegin = [](const Side& a, const Side& b) {
            return std::pair(a.from, a.object) < std::pair(b.from, b.object);
        };
        Split(m_vecSides.begin(), m_vecSides.end(), byDirection, isOneDirection, [&](auto begin, auto end) {
            const DPOINT2 along = math::Rotated({1, 0}, begin->direction);
            for (auto side = begin; side != end; ++side) Measure(*side, along, middle);
            Split(begin, end, byOffset, isOneLine, [&](auto first, auto last) {
                if (last - first < 2) return;
                std::sort(first, last, byBegin);
                visit(first, last);
            });
        });
    }

private:
    using Iterator = std::vector<Side>::iterator;

    // Sorts sides and hands over the runs in which each is one with the next.
    template <class Less, class IsOne, class Take>
    static void Split(Iterator begin, Iterator end, Less less, IsOne isOne, const Take& take) {
        std::sort(begin, end, less);
        while (begin != end) {
            auto last = begin + 1;
            while (last != end && isOne(*(last - 1), *last)) ++last;
            take(begin, last);
            begin = last;
        }
    }

    static void Measure(Side& side, const DPOINT2& along, const DPOINT2& middle) {
        const DPOINT2 start = side.start - middle, end = side.end - middle;
        std::tie(side.from, side.to) = std::minmax({math::Dot(along, start), math::Dot(along, end)});
        side.offset = math::Cross(along, math::Interpolate(start, end, 0.5));
    }

    bool m_bAcrossLayers;
    std::map<CString, int> m_mapLayers;
    std::vector<Side> m_vecSides;
    math::Bounds m_box;
};

double DistanceFromLine(const DPOINT2& p, const Side& side) {
    const DPOINT2 way = side.end - side.start;
    return std::abs(math::Cross(way, p - side.start)) / math::Norm(way);
}

// Whether the shorter one of two sides of one run lies on the line of the other.
bool IsOnOneLine(const Side& a, const Side& b) {
    const Side& longer = a.Length() < b.Length() ? b : a;
    const Side& shorter = a.Length() < b.Length() ? a : b;
    return DistanceFromLine(shorter.start, longer) <= kSamePlace
           && DistanceFromLine(shorter.end, longer) <= kSamePlace;
}

bool Covers(const Side& longer, const Side& line) {
    // of equally long ones a side of a contour covers a line, and the line that comes first the other
    const auto rank = [](const Side& s) { return std::tuple(!s.isLine, -s.object); };
    const bool isOver = std::abs(longer.Length() - line.Length()) <= kSamePlace
                            ? rank(longer) > rank(line)
                            : longer.Length() > line.Length();
    return isOver && longer.object != line.object && longer.from <= line.from + kSamePlace
           && longer.to >= line.to - kSamePlace && IsOnOneLine(longer, line);
}

struct CoveredLine {
    Side line;
    Side over; // the longer one that it lies on
};

// The lines of a run that a side of another object covers.
template <class Iterator>
void CollectCovered(Iterator first, Iterator last, std::vector<CoveredLine>& covered) {
    std::array<Iterator, 2> farthest{last, last}; // of those that begin no later, the farthest first
    Iterator next = first;
    for (Iterator line = first; line != last; ++line) {
        for (; next != last && next->from <= line->from + kSamePlace; ++next) {
            if (farthest[1] == last || next->to > farthest[1]->to) farthest[1] = next;
            if (farthest[0] == last || farthest[1]->to > farthest[0]->to) std::swap(farthest[0], farthest[1]);
        }
        const auto covers = [&](Iterator each) { return each != last && Covers(*each, *line); };
        if (!line->isLine) continue;
        const auto* const over = std::find_if(farthest.begin(), farthest.end(), covers);
        if (over != farthest.end()) covered.push_back({*line, **over});
    }
}

// How many open objects end at a place.
class EndCounts {
public:
    void Add(const CCadObject& object) {
        if (object.GetPieceCount() == 0 || object.GetType() == qev::kCadDot || object.IsClose()) return;
        ++m_counts[CellOf(object.GetStartPoint())];
        ++m_counts[CellOf(object.GetEndPoint())];
    }

    // Whether one object and no more goes on from an end of a line, apart from the one that the line lies on.
    bool IsLink(const DPOINT2& end, const Side& over) const {
        const bool isEndOfOver = over.isLine
                                 && (math::D2GetDistance(end, over.start) <= kSamePlace
                                     || math::D2GetDistance(end, over.end) <= kSamePlace);
        if (isEndOfOver) return false;
        int count = 0;
        const auto [x, y] = CellOf(end);
        for (const double dx : {-1, 0, 1})
            for (const double dy : {-1, 0, 1})
                if (const auto found = m_counts.find({x + dx, y + dy}); found != m_counts.end())
                    count += found->second;
        return count == 2; // with the line itself
    }

    void Remove(const Side& line) {
        --m_counts[CellOf(line.start)];
        --m_counts[CellOf(line.end)];
    }

private:
    using Cell = std::pair<double, double>;
    struct CellHash {
        std::size_t operator()(const Cell& cell) const {
            constexpr std::size_t kOdd = 0x9e3779b97f4a7c15; // spreads the bits of neighbours
            return std::hash<double>()(cell.first) * kOdd ^ std::hash<double>()(cell.second);
        }
    };

    // As wide as gaps that are joined; ends within a cell or of neighbours count as one place.
    static Cell CellOf(const DPOINT2& p) {
        constexpr double kWidth = 0.01; // mm
        return {std::floor(p.x / kWidth) + 0.0, std::floor(p.y / kWidth) + 0.0};
    }

    std::unordered_map<Cell, int, CellHash> m_counts;
};

} // namespace

void DropCovered(Drawing& drawing, bool acrossLayers) {
    std::vector<LeafPlace> places;
    Sides sides(acrossLayers);
    ForEachLeaf(drawing.root, [&](const LeafPlace& place) {
        sides.Add(place.Object(), static_cast<int>(places.size()));
        places.push_back(place);
    });
    std::vector<CoveredLine> covered;
    sides.ForEachRun([&](auto first, auto last) { CollectCovered(first, last, covered); });
    if (covered.empty()) return;
    EndCounts ends;
    for (const LeafPlace& place : places) ends.Add(place.Object());
    std::sort(covered.begin(), covered.end(), [](const CoveredLine& a, const CoveredLine& b) {
        return std::pair(a.line.Length(), a.line.object) < std::pair(b.line.Length(), b.line.object);
    });
    std::vector<bool> isDropped(places.size()); // lines as long to rounding may cover each other in a ring
    for (const auto& [line, over] : covered) {
        if (isDropped[over.object]) continue;
        if (ends.IsLink(line.start, over) || ends.IsLink(line.end, over)) continue;
        ends.Remove(line);
        isDropped[line.object] = true;
        places[line.object].Delete();
        ++drawing.counts.covered;
    }
}

std::vector<Overlap> FindOverlaps(const Drawing& drawing, bool acrossLayers) {
    Sides sides(acrossLayers);
    int number = 0;
    for (const CCadObject* object : drawing.Objects()) sides.Add(*object, number++);
    std::map<std::pair<int, int>, double> shared;
    sides.ForEachRun([&](auto first, auto last) {
        auto farthest = first;
        for (auto side = first + 1; side != last; ++side) {
            const double length = std::min(side->to, farthest->to) - side->from;
            if (length > kSamePlace && IsOnOneLine(*side, *farthest))
                shared[std::minmax(side->object, farthest->object)] += length;
            if (side->to > farthest->to) farthest = side;
        }
    });
    std::vector<Overlap> overlaps;
    overlaps.reserve(shared.size());
    for (const auto& [pair, length] : shared) overlaps.push_back({pair.first, pair.second, length});
    return overlaps;
}

} // namespace host
