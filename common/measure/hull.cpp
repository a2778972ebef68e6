// The convex hull of tagged points: what is certainly inside is left out, the rest is sorted from left to
// right, and a chain of left turns is laid over each half (A. M. Andrew, "Another efficient algorithm for
// convex hulls in two dimensions", 1979).
//
// Left out. A point with others to its lower left, lower right, upper left and upper right lies inside the
// hull: the four surround it. It cannot be a corner of the lower half as soon as there is one to its lower
// left and one to its lower right, as it lies on or above the line between them. Columns of equal width find
// most such points without any arithmetic on y (Columns, Sieve): a column knows the lowest and the highest of
// its points, so that all columns before it and all behind it say how low a point in it must lie to be a
// candidate for the lower half, and how high for the upper one. Some 10 of 100 points of a disk are left at
// 1,000 points and 3 at a million. Few points are halved by the line from the leftmost to the rightmost one
// instead. (Akl and Toussaint's polygon of extreme points was rejected: its sides need products with an error
// bound for every point, and an octagon leaves 10 of 100.)
//
// Sorted. The same columns hold the candidates in order, and a column with many is divided once more into
// narrow ones (SortColumn). So points spread along a contour are sorted in O(n), and points that crowd in one
// column in O(n log n). The order is a plain one by coordinates. The scan round a pivot (Graham 1972), which
// the interface is named after, was rejected: its order goes by angles, and angles compared within a
// tolerance are no order at all, so that the result depends on the sorting, and a sort may even run out of
// its range.
//
// Chains. Going over the candidates of the lower half once, every point that makes the chain turn right or
// not at all takes the last points off again until it turns left. A point that is taken off lies on or above
// the line between two others, so that it is no corner; a point that stays turns left between its neighbours,
// so that all of them are corners. The upper half, turned by half a turn, is a lower half, and the same code
// takes it: negating both coordinates is exact and keeps every turn.
//
// The hull is exact (exact_turn.h). With rounded turns, nearly collinear points contradict each other, and a
// true corner can be taken off.
//
// The tolerance comes after that, in one round over the corners (WriteSharp): a corner goes when the
// hull turns by less than kOnEdge there, or when it is nearer than kZeroLength to the corner kept before it.
// The turn at the corner itself decides, not the smallest angle of a triangle: at the tip of a needle all
// angles are small, and the tip would go. A dropped corner lies off the line between its neighbours by less
// than kOnEdge of the shorter side, so that no point given lies outside the answer by more than about
// 2e-9 of the hull's size and 1e-9 mm.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <utility>

#include <qev/measure/hull.h>
#include <qevmath/point.h>

#include "../kinds/tolerance.h"
#include "exact_turn.h"

namespace qev {
namespace {

using Point = CConvexHelper::Point;
using math::DPOINT2;

constexpr double kOnEdge = 1e-9; // sine of an angle: a corner flatter than this lies on the hull's edge

// mm. Coordinates beyond this are no places of a drawing but faults of a computation; below it no product of
// two of them overflows, as exact turns need.
constexpr double kFarthest = 1e100;

// mm. Coordinates nearer to 0 than this count as 0: otherwise a product of two differences can be too small
// for a double, and a turn that is taken for none drops a corner that lies far off.
constexpr double kNearest = 1e-100;

// Up to so many points, insertion sorts sooner than any other way, and a line halves sooner than columns.
constexpr std::size_t kFewPoints = 24;

// From so many points on, a half does not fit into the near memory.
constexpr std::size_t kManyPoints = 1 << 14;

// Columns that sieve: enough that those at both ends, where all points stay, are a small part of the whole,
// and few enough that their bounds stay in the fastest memory; with fewer points a column, it has no point
// near the edge.
constexpr std::size_t kMostColumns = 128;
constexpr std::size_t kPointsPerColumn = 4;

DPOINT2 Vector(const Point& from, const Point& to) {
    return {to.x - from.x, to.y - from.y};
}

// A point that may be a corner. One of the upper half is turned by half a turn: both coordinates are negated.
struct Candidate {
    double x;
    double y;
    int nTag;
    std::uint32_t nPlace; // in the input: of duplicates the first given counts
};

using Candidates = std::span<Candidate>;

Candidate Turned(const Candidate& p) {
    return {-p.x, -p.y, p.nTag, p.nPlace};
}

bool ComesBefore(const Candidate& p, const Candidate& q) {
    if (p.x < q.x) return true;
    if (p.x > q.x) return false;
    return p.y != q.y ? p.y < q.y : p.nPlace < q.nPlace;
}

DPOINT2 At(const Candidate& p) {
    return {p.x, p.y};
}

// Columns of equal width from the leftmost to the rightmost of some points, of which there is one. A point in
// an earlier column lies to the left of every point in a later one: all that is computed rises with x.
class Columns {
public:
    template <class Points>
    Columns(const Points& points, std::size_t count) : m_nLast(static_cast<std::int64_t>(count) - 1) {
        double right = m_dLeft = points[0].x;
        for (const auto& p : points) {
            m_dLeft = std::min(m_dLeft, p.x);
            right = std::max(right, p.x);
        }
        const double perLength = static_cast<double>(count) / (right - m_dLeft);
        if (std::isfinite(perLength)) m_dPerLength = perLength;
    }
    std::size_t GetCount() const { return static_cast<std::size_t>(m_nLast) + 1; }
    std::size_t Of(double x) const {
        const auto column = static_cast<std::int64_t>((x - m_dLeft) * m_dPerLength);
        return static_cast<std::size_t>(std::min(column, m_nLast));
    }

private:
    std::int64_t m_nLast;
    double m_dLeft;
    double m_dPerLength = 0; // columns for each mm; 0, which makes one of all, when they would have no width
};

// The lowest and the highest y of some points.
struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    void Add(const Extent& other) {
        low = std::min(low, other.low);
        high = std::max(high, other.high);
    }
};

// Which points may be corners of the lower half, and which of the upper one.
class Sieve {
public:
    explicit Sieve(const std::vector<Point>& points)
        : m_columns(points, std::min(points.size() / kPointsPerColumn + 1, kMostColumns)) {
        std::array<Extent, kMostColumns> own;
        for (const Point& p : points) own[m_columns.Of(p.x)].Add({p.y, p.y});
        Extent left;
        for (std::size_t i = 0; i < m_columns.GetCount(); left.Add(own[i++])) m_candidates[i] = left;
        Extent right;
        for (std::size_t i = m_columns.GetCount(); i-- > 0; right.Add(own[i]))
            m_candidates[i] = {std::max(m_candidates[i].low, right.low),
                               std::min(m_candidates[i].high, right.high)};
    }
    std::size_t GetColumns() const { return m_columns.GetCount(); }
    std::size_t ColumnOf(const DPOINT2& p) const { return m_columns.Of(p.x); }
    bool IsLower(const DPOINT2& p, std::size_t column) const { return p.y <= m_candidates[column].low; }
    bool IsUpper(const DPOINT2& p, std::size_t column) const { return p.y >= m_candidates[column].high; }

private:
    Columns m_columns;
    std::array<Extent, kMostColumns> m_candidates; // up to where they lie in a column, and from where on
};

void InsertionSort(Candidates points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        const Candidate p = points[i];
        std::size_t k = i;
        for (; k > 0 && ComesBefore(p, points[k - 1]); --k) points[k] = points[k - 1];
        points[k] = p;
    }
}

// From the counts of slots to where each begins; answers the sum.
std::size_t ToBegins(std::vector<std::size_t>& counts) {
    std::size_t sum = 0;
    for (std::size_t& count : counts) sum += std::exchange(count, sum);
    return sum;
}

// Sorts points by columns of two points each on average, so that little is left to insertion; a column that
// holds many is sorted by itself. The scratch has room for as many.
void SortColumn(Candidates points, Candidate* scratch, std::vector<std::size_t>& ends) {
    if (points.size() <= kFewPoints) return InsertionSort(points);
    const Columns columns(points, points.size() / 2);
    ends.assign(columns.GetCount(), 0);
    for (const Candidate& p : points) ++ends[columns.Of(p.x)];
    ToBegins(ends);
    const Candidates unsorted(scratch, points.size());
    std::copy(points.begin(), points.end(), unsorted.begin());
    for (const Candidate& p : unsorted) points[ends[columns.Of(p.x)]++] = p;
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        const Candidates column = points.subspan(begin, end - begin);
        if (column.size() > kFewPoints) std::sort(column.begin(), column.end(), ComesBefore);
        begin = end;
    }
    InsertionSort(points);
}

struct Halves {
    Candidates lower; // sorted
    Candidates upper; // turned and sorted; both have the leftmost and the rightmost point
};

Candidate CandidateOf(const std::vector<Point>& points, std::size_t place) {
    const Point& p = points[place];
    return {p.x, p.y, p.nTag, static_cast<std::uint32_t>(place)};
}

// 1 for each half of which a point may be a corner, else 0: numbers, as two bools would share a register.
struct Counts {
    std::size_t lower, upper;
};

// Fills and sorts the halves, in a store with room for the points twice; halvesOf tells of which half a point
// may be a corner. There is no branch on that, as it would be guessed wrong for every other point of a
// contour.
template <class HalvesOf>
Halves Split(const std::vector<Point>& points, Candidates store, Candidate* scratch,
             const HalvesOf& halvesOf) {
    const std::size_t n = points.size();
    std::size_t lower = 0;
    std::size_t upper = n;
    for (std::size_t i = 0; i < n; ++i) {
        const Point& p = points[i];
        const Counts counts = halvesOf(DPOINT2{p.x, p.y});
        const auto place = static_cast<std::uint32_t>(i);
        store[lower] = {p.x, p.y, p.nTag, place};
        store[upper] = {-p.x, -p.y, p.nTag, place};
        lower += counts.lower;
        upper += counts.upper;
    }
    const Halves halves{store.first(lower), store.subspan(n, upper - n)};
    std::vector<std::size_t> columns;
    SortColumn(halves.lower, scratch, columns);
    SortColumn(halves.upper, scratch, columns);
    return halves;
}

Halves SplitByLine(const std::vector<Point>& points, Candidates store) {
    const auto before = [](const Point& p, const Point& q) { return p.x != q.x ? p.x < q.x : p.y < q.y; };
    const auto ends = std::minmax_element(points.begin(), points.end(), before);
    const DPOINT2 left{ends.first->x, ends.first->y};
    const DPOINT2 right{ends.second->x, ends.second->y};
    return Split(points, store, nullptr, [&](const DPOINT2& p) {
        const double turn = CertainTurn(left, right, p);
        return Counts{turn <= 0, turn >= 0};
    });
}

Halves SplitBySieve(const std::vector<Point>& points, std::unique_ptr<Candidate[]>& store) {
    const Sieve sieve(points);
    const std::size_t n = points.size();
    store = std::make_unique_for_overwrite<Candidate[]>(3 * n);
    return Split(points, {store.get(), 2 * n}, &store[2 * n], [&sieve](const DPOINT2& p) {
        const std::size_t column = sieve.ColumnOf(p);
        return Counts{sieve.IsLower(p, column), sieve.IsUpper(p, column)};
    });
}

// The points go straight to their columns, of which each fits into the near memory when it is sorted: a pass
// to count them, and one to move them.
Halves SplitIntoColumns(const std::vector<Point>& points, std::unique_ptr<Candidate[]>& store) {
    const Sieve sieve(points);
    const std::size_t last = 2 * sieve.GetColumns() - 1; // those of the upper half follow, from right to left
    std::vector<std::size_t> ends(last + 1);
    const auto visit = [&](const auto& take) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            const Candidate p = CandidateOf(points, i);
            const std::size_t column = sieve.ColumnOf(At(p));
            take(p, ends[column], sieve.IsLower(At(p), column));
            take(Turned(p), ends[last - column], sieve.IsUpper(At(p), column));
        }
    };
    visit([](const Candidate&, std::size_t& count, bool isCandidate) { count += isCandidate; });
    const std::size_t largest = *std::max_element(ends.begin(), ends.end());
    const std::size_t total = ToBegins(ends);
    store = std::make_unique_for_overwrite<Candidate[]>(total + 1 + largest); // one for what is no candidate
    visit([&](const Candidate& p, std::size_t& end, bool isCandidate) {
        store[isCandidate ? end : total] = p;
        end += isCandidate;
    });
    std::vector<std::size_t> columns;
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        SortColumn({&store[begin], end - begin}, &store[total + 1], columns);
        begin = end;
    }
    const Candidates all(store.get(), total);
    const std::size_t middle = ends[last / 2];
    return {all.first(middle), all.subspan(middle)};
}

// Takes the points of a sorted half that are no corners out of it; answers what is left.
Candidates Chain(Candidates half) {
    std::size_t n = 0;
    for (const Candidate p : half) {
        if (n > 0 && half[n - 1].x == p.x && half[n - 1].y == p.y) continue;
        while (n > 1 && !TurnsLeft(At(half[n - 2]), At(half[n - 1]), At(p))) --n;
        half[n++] = p;
    }
    return half.first(n);
}

// The corners of both halves, counter-clockwise from the leftmost point, in the place of the lower half,
// behind which the upper one lies.
Candidates Join(const Halves& halves) {
    const Candidates lower = Chain(halves.lower);
    const Candidates upper = Chain(halves.upper);
    if (lower.size() < 2) return lower; // all points are one
    const auto end = std::transform(upper.begin(), upper.end() - 1, lower.end() - 1, Turned);
    return {lower.begin(), end};
}

// The lowest corner; of those as low as it within kSameLength the leftmost.
std::size_t FirstOf(Candidates corners) {
    double lowest = corners[0].y;
    for (const Candidate& p : corners) lowest = std::min(lowest, p.y);
    std::size_t first = corners.size();
    for (std::size_t i = 0; i < corners.size(); ++i)
        if (corners[i].y - lowest < kSameLength
            && (first == corners.size() || corners[i].x < corners[first].x))
            first = i;
    return first;
}

// The root is taken only where it can be as short.
bool IsNear(const Point& p, const Point& q) {
    const DPOINT2 way = Vector(p, q);
    return std::abs(way.x) < kZeroLength && std::abs(way.y) < kZeroLength && math::Norm(way) < kZeroLength;
}

// Whether the way from a to c goes nearly straight on at b. A length is at most the sum of both coordinates;
// twice that lies beyond all rounding, and needs no root.
bool IsFlat(const Point& a, const Point& b, const Point& c) {
    const DPOINT2 in = Vector(a, b);
    const DPOINT2 out = Vector(b, c);
    const double turn = std::abs(math::Cross(in, out));
    const double most = (std::abs(in.x) + std::abs(in.y)) * (std::abs(out.x) + std::abs(out.y));
    return turn < 2 * kOnEdge * most && turn < kOnEdge * math::Norm(in) * math::Norm(out)
           && math::Dot(in, out) > 0;
}

// Writes the corners from the first one on without those at which the hull goes on nearly straight, and those
// beside a corner that is kept. The first one stays, and so do the ends of points that all lie on a line,
// where the hull turns back.
void WriteSharp(Candidates corners, std::vector<Point>& hull) {
    std::size_t i = FirstOf(corners);
    const auto next = [&] {
        const Candidate& p = corners[i];
        i = i + 1 < corners.size() ? i + 1 : 0;
        return Point{p.x, p.y, p.nTag};
    };
    hull.resize(corners.size());
    hull[0] = next();
    std::size_t kept = 1;
    Point after = next();
    for (std::size_t left = corners.size() - 1; left > 0; --left) {
        const Point p = std::exchange(after, next());
        const bool drop = IsNear(hull[kept - 1], p) || IsNear(p, hull[0]) || IsFlat(hull[kept - 1], p, after);
        if (!drop) hull[kept++] = p;
    }
    hull.resize(kept);
}

void WriteHull(const std::vector<Point>& points, std::vector<Point>& hull) {
    if (points.empty()) return hull.clear();
    std::array<Candidate, 2 * kFewPoints> few;
    std::unique_ptr<Candidate[]> many;
    const std::size_t n = points.size();
    const Halves halves = n <= kFewPoints    ? SplitByLine(points, few)
                          : n <= kManyPoints ? SplitBySieve(points, many)
                                             : SplitIntoColumns(points, many);
    WriteSharp(Join(halves), hull);
}

// Function objects, which are inlined where functions are called.

// Whether a coordinate is one of a place. Not for NaN.
constexpr auto kIsPlace = [](double coordinate) { return std::abs(coordinate) <= kFarthest; };

// Whether exact turns can do with a coordinate as it is.
constexpr auto kIsPlain = [](double coordinate) {
    return kIsPlace(coordinate) && (std::abs(coordinate) >= kNearest || coordinate == 0);
};

} // namespace

void CConvexHelper::ConvexGrahamScan(const std::vector<Point>& input, std::vector<Point>& output) {
    if (input.size() < 4) {
        output = input;
        return;
    }
    const auto isPlain = [](const Point& p) { return kIsPlain(p.x) && kIsPlain(p.y); };
    if (std::all_of(input.begin(), input.end(), isPlain)) return WriteHull(input, output);
    const auto rounded = [](double coordinate) { return kIsPlain(coordinate) ? coordinate : 0; };
    std::vector<Point> places;
    for (const Point& p : input)
        if (kIsPlace(p.x) && kIsPlace(p.y)) places.push_back({rounded(p.x), rounded(p.y), p.nTag});
    WriteHull(places, output);
}

bool CConvexHelper::IsCollinear(const Point& a, const Point& b, const Point& c, const double& tolerance) {
    const DPOINT2 u = Vector(b, a);
    const DPOINT2 v = Vector(c, b);
    const DPOINT2 w = Vector(a, c);
    const double lu = math::Norm(u);
    const double lv = math::Norm(v);
    const double lw = math::Norm(w);
    if (lu < kZeroLength || lv < kZeroLength || lw < kZeroLength) return true;
    const double sines[] = {std::abs(math::Cross(u, v)) / (lv * lu), std::abs(math::Cross(u, w)) / (lw * lu),
                            std::abs(math::Cross(v, w)) / (lw * lv)};
    return *std::min_element(std::begin(sines), std::end(sines)) < tolerance;
}

} // namespace qev
