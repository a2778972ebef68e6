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

// Finite points from left to right without duplicates.
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

// The hull by monotone chains (Andrew 1979): the order of the points is a plain one, where angles about a
// pivot within a tolerance are no order at all.
std::vector<Point> Hull(const std::vector<Point>& sorted) {
    if (sorted.size() < 2) return sorted;
    std::vector<Point> hull;
    AppendChain(sorted.begin(), sorted.end(), hull);
    AppendChain(sorted.rbegin(), sorted.rend(), hull);
    return hull;
}

// The lowest corner comes first; of those as low as it within kSame the leftmost.
void StartAtLowest(std::vector<Point>& hull) {
    const auto higher = [](const Point& p, const Point& q) { return p.y < q.y; };
    const double lowest = std::min_element(hull.begin(), hull.end(), higher)->y;
    const auto first = std::min_element(hull.begin(), hull.end(), [lowest](const Point& p, const Point& q) {
        return std::tuple(p.y - lowest >= kSame, p.x) < std::tuple(q.y - lowest >= kSame, q.x);
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
    if (lu < kSame || lv < kSame || lw < kSame) return true;
    const double sines[] = {std::abs(math::Cross(u, v)) / (lv * lu), std::abs(math::Cross(u, w)) / (lw * lu),
                            std::abs(math::Cross(v, w)) / (lw * lv)};
    return *std::min_element(std::begin(sines), std::end(sines)) < tolerance;
}

} // namespace qev
