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
// Error: the turn is the sign of a cross product, which is right unless a point lies nearer to the line than
// about 1e-16 of its distance from the others. Such a point may stay as a corner or go; DropFlatCorners takes
// off what is flat by kOnEdge, so that no caller sees the difference.

#include <algorithm>
#include <cmath>
#include <tuple>

#include <qev/measure/hull.h>
#include <qevmath/point.h>

#include "../kinds/tolerance.h"

namespace qev {
namespace {

using Point = CConvexHelper::Point;
using math::DPOINT2;

constexpr double kOnEdge = 1e-9; // sine of an angle: a corner flatter than this lies on the hull's edge

DPOINT2 Vector(const Point& from, const Point& to) {
    return {to.x - from.x, to.y - from.y};
}

bool TurnsLeft(const Point& a, const Point& b, const Point& c) {
    return math::Cross(Vector(a, b), Vector(a, c)) > 0;
}

// Finite points from left to right without duplicates; of points with equal coordinates the first given
// stays.
std::vector<Point> Sorted(const std::vector<Point>& input) {
    std::vector<Point> points = input;
    std::erase_if(points, [](const Point& p) { return !std::isfinite(p.x) || !std::isfinite(p.y); });
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

// Drops corners that are nearly on the line of the corners beside them; the first one stays, and so do the
// ends of points that all lie on a line.
void DropFlatCorners(std::vector<Point>& hull) {
    if (hull.size() < 3) return;
    std::size_t kept = 1;
    for (std::size_t i = 1; i < hull.size(); ++i) {
        const Point& next = i + 1 < hull.size() ? hull[i + 1] : hull[0];
        if (!CConvexHelper::IsCollinear(hull[kept - 1], hull[i], next, kOnEdge)) hull[kept++] = hull[i];
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
