// The convex hull of tagged points, by monotone chains (A. M. Andrew, "Another efficient algorithm for convex
// hulls in two dimensions", 1979).
//
// The points are sorted from left to right. Going over them once, every point that makes the chain turn right
// or not at all takes the last points off again until it turns left: what is left is the lower half of the
// hull, and going back over them gives the upper half. A point that is taken off lies on or above the line
// between two others, so that it is no corner; a point that stays turns left between its neighbours, so that
// all of them are corners. It takes O(n log n) for the sorting and O(n) for the chains, since every point is
// added and taken off once at most.
//
// The order of the points is a plain one by coordinates. The scan round a pivot (Graham 1972), which the
// interface is named after, was rejected: its order goes by angles, and angles compared within a tolerance
// are no order at all, so that the result depends on the sorting, and a sort may even run out of its range.
//
// The hull is exact: the turn of three points is the sign of a cross product of the coordinates as they are
// given. The rounded cross product decides when it lies beyond its own error (J. R. Shewchuk, "Adaptive
// precision floating-point arithmetic and fast robust geometric predicates", 1997); else the products are
// added without rounding. With rounded turns alone, nearly collinear points contradict each other, and a true
// corner can be taken off.
//
// The tolerance comes after that, in one round over the corners (DropFlatCorners): a corner goes when the
// hull turns by less than kOnEdge there, or when it is nearer than kZeroLength to the corner kept before it.
// The turn at the corner itself decides, not the smallest angle of a triangle: at the tip of a needle all
// angles are small, and the tip would go. A dropped corner lies off the line between its neighbours by less
// than kOnEdge of the shorter side, so that no point given lies outside the answer by more than about
// 2e-9 of the hull's size and 1e-9 mm.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include <qev/measure/hull.h>
#include <qevmath/point.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

using Point = CConvexHelper::Point;
using math::DPOINT2;

constexpr double kOnEdge = 1e-9; // sine of an angle: a corner flatter than this lies on the hull's edge

// mm. Coordinates beyond this are no places of a drawing but faults of a computation; below it no product of
// two of them overflows. (Parts of products below 1e-290 may be lost, which moves nothing by a tolerance.)
constexpr double kFarthest = 1e100;

DPOINT2 Vector(const Point& from, const Point& to) {
    return {to.x - from.x, to.y - from.y};
}

// A sum of numbers that is kept without rounding: as parts that do not overlap, the smallest first
// (Shewchuk's expansions, which need rounding to nearest and no overflow).
class ExactSum {
public:
    void AddProduct(double a, double b) {
        const double product = a * b;
        const auto [aHigh, aLow] = Split(a);
        const auto [bHigh, bLow] = Split(b);
        Add(aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow));
        Add(product);
    }
    // Has the sign of the sum: the last part that is not 0 outweighs all before it.
    double Sign() const {
        const auto last =
            std::find_if(m_parts.rbegin(), m_parts.rend(), [](double part) { return part != 0; });
        return last == m_parts.rend() ? 0 : *last;
    }

private:
    // The upper and the lower half of a number's 53 bits (T. J. Dekker, 1971): products of halves are exact.
    static std::pair<double, double> Split(double a) {
        constexpr double kSplitter = (1 << 27) + 1;
        const double c = kSplitter * a;
        const double high = c - (c - a);
        return {high, a - high};
    }
    void Add(double x) {
        for (std::size_t i = 0; i < m_nParts; ++i) {
            const double sum = x + m_parts[i];
            const double ofPart = sum - x; // what arrived of the part; the rest of both is the rounding
            m_parts[i] = (x - (sum - ofPart)) + (m_parts[i] - ofPart);
            x = sum;
        }
        m_parts[m_nParts++] = x;
    }

    std::array<double, 12> m_parts{}; // six products of two parts each
    std::size_t m_nParts = 0;
};

// Exact for coordinates up to kFarthest. The bound is Shewchuk's: three rounded operations on each product.
bool TurnsLeft(const Point& a, const Point& b, const Point& c) {
    constexpr double kUnit = std::numeric_limits<double>::epsilon() / 2;
    constexpr double kBound = (3 + 16 * kUnit) * kUnit;
    const double left = (b.x - a.x) * (c.y - a.y);
    const double right = (b.y - a.y) * (c.x - a.x);
    const double turn = left - right;
    if (std::abs(turn) > kBound * (std::abs(left) + std::abs(right))) return turn > 0;
    ExactSum sum;
    sum.AddProduct(a.x, b.y);
    sum.AddProduct(-a.y, b.x);
    sum.AddProduct(b.x, c.y);
    sum.AddProduct(-b.y, c.x);
    sum.AddProduct(c.x, a.y);
    sum.AddProduct(-c.y, a.x);
    return sum.Sign() > 0;
}

bool IsPlace(const Point& p) {
    return std::abs(p.x) <= kFarthest && std::abs(p.y) <= kFarthest; // not for NaN
}

// The points of a drawing from left to right without duplicates; of points with equal coordinates the first
// given stays.
std::vector<Point> Sorted(const std::vector<Point>& input) {
    std::vector<Point> points = input;
    std::erase_if(points, [](const Point& p) { return !IsPlace(p); });
    std::stable_sort(points.begin(), points.end(),
                     [](const Point& p, const Point& q) { return std::tie(p.x, p.y) < std::tie(q.x, q.y); });
    const auto same = [](const Point& p, const Point& q) { return p.x == q.x && p.y == q.y; };
    points.erase(std::unique(points.begin(), points.end(), same), points.end());
    return points;
}

// Appends the chain of left turns over a run of sorted points; its last point begins the other chain.
template <class Iterator>
void AppendChain(Iterator first, Iterator last, std::vector<Point>& hull) {
    const std::size_t start = hull.size();
    for (; first != last; ++first) {
        while (hull.size() > start + 1 && !TurnsLeft(hull[hull.size() - 2], hull.back(), *first))
            hull.pop_back();
        hull.push_back(*first);
    }
    hull.pop_back();
}

// Both chains, counter-clockwise from the leftmost point.
std::vector<Point> Hull(const std::vector<Point>& sorted) {
    if (sorted.size() < 2) return sorted;
    std::vector<Point> hull;
    AppendChain(sorted.begin(), sorted.end(), hull);
    AppendChain(sorted.rbegin(), sorted.rend(), hull);
    return hull;
}

// The lowest corner comes first; of those as low as it within kSameLength the leftmost.
void StartAtLowest(std::vector<Point>& hull) {
    const auto higher = [](const Point& p, const Point& q) { return p.y < q.y; };
    const double lowest = std::min_element(hull.begin(), hull.end(), higher)->y;
    const auto first = std::min_element(hull.begin(), hull.end(), [lowest](const Point& p, const Point& q) {
        return std::tuple(p.y - lowest >= kSameLength, p.x) < std::tuple(q.y - lowest >= kSameLength, q.x);
    });
    std::rotate(hull.begin(), first, hull.end());
}

bool IsNear(const Point& p, const Point& q) {
    return math::Norm(Vector(p, q)) < kZeroLength;
}

// Whether the way from a to c goes nearly straight on at b.
bool IsFlat(const Point& a, const Point& b, const Point& c) {
    const DPOINT2 in = Vector(a, b);
    const DPOINT2 out = Vector(b, c);
    return std::abs(math::Cross(in, out)) < kOnEdge * math::Norm(in) * math::Norm(out)
           && math::Dot(in, out) > 0;
}

// Drops corners at which the hull goes on nearly straight, and those beside a corner that is kept. The first
// one stays, and so do the ends of points that all lie on a line, where the hull turns back.
void DropFlatCorners(std::vector<Point>& hull) {
    std::size_t kept = 1;
    for (std::size_t i = 1; i < hull.size(); ++i) {
        const Point& next = i + 1 < hull.size() ? hull[i + 1] : hull[0];
        const bool drop = IsNear(hull[kept - 1], hull[i]) || IsNear(hull[i], hull[0])
                          || IsFlat(hull[kept - 1], hull[i], next);
        if (!drop) hull[kept++] = hull[i];
    }
    hull.resize(kept);
}

} // namespace

void CConvexHelper::ConvexGrahamScan(const std::vector<Point>& input, std::vector<Point>& output) {
    if (input.size() < 4) {
        output = input;
        return;
    }
    std::vector<Point> hull = Hull(Sorted(input));
    if (!hull.empty()) {
        StartAtLowest(hull);
        DropFlatCorners(hull);
    }
    output = std::move(hull);
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
