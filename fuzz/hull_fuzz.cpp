// The hull of points in a heap, on a line, a needle or the edges of a rectangle at any angle, off by up to
// 1e-8 mm: no point lies outside, its corners are points that were given, and they turn to the left.
#include <vector>

#include "input.h"

namespace {

using namespace fuzz;
using Point = qev::CConvexHelper::Point;

// How far a point lies outside a hull, in mm.
double Outside(const std::vector<Point>& hull, const Point& p) {
    double outside = 0;
    for (std::size_t i = 0; i < hull.size(); ++i) {
        const Point &a = hull[i], &b = hull[(i + 1) % hull.size()];
        const DPOINT2 along{b.x - a.x, b.y - a.y}, to{p.x - a.x, p.y - a.y};
        const double length = math::Norm(along);
        if (length > 0) outside = std::max(outside, -math::Cross(along, to) / length);
    }
    return outside;
}

std::vector<Point> Points(Input& in) {
    const double size = std::pow(10, in.Int(-2, 4)), angle = in.Number(4), noise = in.Coin() ? 0 : 1e-8;
    const double width = in.Int(0, 3) == 0 ? 0 : std::pow(10, -in.Int(0, 12));
    const bool isHeap = in.Coin(), isTapered = in.Coin();
    std::vector<Point> points;
    for (int i = 0, count = in.Int(0, 100); i < count; ++i) {
        const double along = in.Share(), across = in.Int(0, 2) / 2.0 * width * (isTapered ? 1 - along : 1);
        DPOINT2 p = math::Rotated({size * along, size * across}, angle);
        if (isHeap) p = in.Point() * (size / 100);
        points.push_back({p.x + in.Number(noise), p.y + in.Number(noise), i});
    }
    return points;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    const std::vector<Point> points = Points(in);
    std::vector<Point> hull;
    qev::CConvexHelper::ConvexGrahamScan(points, hull);
    Expect(hull.size() <= points.size(), "a hull has no more corners than points");
    Expect(hull.empty() <= (in.IsHostile() || points.empty()), "some points have a hull");
    double extent = 0;
    for (const Point& p : hull) {
        const Point& given = points[p.nTag];
        const bool isGiven = std::abs(p.x - given.x) < 1e-99 && std::abs(p.y - given.y) < 1e-99;
        Expect(isGiven || in.IsHostile(), "corners are points that were given");
        extent = std::max({extent, std::abs(p.x - hull[0].x), std::abs(p.y - hull[0].y)});
    }
    if (points.size() < 4 || hull.size() < 3) return 0;
    for (const Point& p : points) {
        const bool isLeftOut = !(std::abs(p.x) <= 1e100 && std::abs(p.y) <= 1e100);
        Expect(isLeftOut || Outside(hull, p) <= 1.1e-9 + 2e-9 * extent, "no point lies outside");
    }
    return 0;
}
