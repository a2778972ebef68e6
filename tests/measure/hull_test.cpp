#include <set>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Point = CConvexHelper::Point;

// The tags of the hull's points, in their order.
std::vector<int> Tags(const std::vector<Point>& points) {
    std::vector<Point> hull;
    CConvexHelper::ConvexGrahamScan(points, hull);
    std::vector<int> tags;
    for (const Point& p : hull) tags.push_back(p.nTag);
    return tags;
}

double Turn(const Point& a, const Point& b, const Point& c) {
    return math::Cross({b.x - a.x, b.y - a.y}, {c.x - a.x, c.y - a.y});
}

// A point is a corner when some line through it and another has all others on its left.
std::set<int> CornersByLines(const std::vector<Point>& points) {
    std::set<int> corners;
    for (const Point& a : points)
        for (const Point& b : points)
            if (a.nTag != b.nTag && std::all_of(points.begin(), points.end(), [&](const Point& c) {
                    return c.nTag == a.nTag || c.nTag == b.nTag || Turn(a, b, c) > 0;
                }))
                corners.insert(a.nTag);
    return corners;
}

TEST(Hull, AgainstEveryLineThroughTwoPoints) {
    for (Random random; random.Rounds(100);) {
        std::vector<Point> points;
        for (int i = 0, count = random.Int(4, 40); i < count; ++i) {
            const DPOINT2 p = random.Point();
            points.push_back({p.x + 1e4, p.y, i});
        }
        const std::vector<int> tags = Tags(points);
        EXPECT_EQ(std::set<int>(tags.begin(), tags.end()), CornersByLines(points));
        for (std::size_t i = 0; i < tags.size(); ++i) {
            const auto at = [&](std::size_t k) { return points[tags[k % tags.size()]]; };
            EXPECT_GE(at(i).y, at(0).y) << "the lowest comes first";
            EXPECT_GT(Turn(at(i), at(i + 1), at(i + 2)), 0) << "counter-clockwise";
        }
    }
}

// The tag of a point is its place in the list.
TEST(Hull, SmallFlatAndDoubled) {
    for (const auto& [name, places, hull] : Table<const char*, std::vector<DPOINT2>, std::vector<int>>{
             {"none", {}, {}},
             {"up to three come back as they are", {{2, 2}, {1, 1}, {0, 0}}, {0, 1, 2}},
             {"a square from its lowest left", {{1, 1}, {0, 1}, {0, 0}, {1, 0}}, {2, 3, 0, 1}},
             {"doubled: the first counts", {{0, 0}, {0, 0}, {1, 0}, {1, 0}, {0, 1}}, {0, 2, 4}},
             {"inside", {{1, 1}, {0, 1}, {0, 0}, {1, 0}, {0.5, 0}, {1, 0.5}, {0, 0.3}}, {2, 3, 0, 1}},
             {"as low within 1e-9: the leftmost", {{0, 5e-10}, {3, 0}, {3, 3}, {0, 3}}, {0, 1, 2, 3}},
             {"on a line: its ends", {{0, 0}, {1, 1}, {2, 2}, {3, 3}}, {0, 3}},
             {"not finite: left out", {{kNaN, 0}, {0, 0}, {1, 0}, {1, kInf}, {0, 1}}, {1, 2, 4}},
             {"all one", {{1, 1}, {1, 1}, {1, 1}, {1, 1}}, {0}}}) {
        std::vector<Point> points;
        for (const DPOINT2& p : places) points.push_back({p.x, p.y, static_cast<int>(points.size())});
        EXPECT_EQ(Tags(points), hull) << name;
    }
    const std::vector<Point> huge{{1e300, 0, 0}, {0, 1e300, 1}, {-1e300, 0, 2}, {0, -1e300, 3}, {1, 1, 4}};
    EXPECT_LE(Tags(huge).size(), 5u) << "it ends";
}

// Points on the edges of a rectangle, off by 1e-8 mm: the corners stay, and little else.
TEST(Hull, NoisyRectanglesKeepTheirCorners) {
    for (Random random; random.Rounds(200);) {
        std::vector<Point> points;
        for (int i = 0; i < 200; ++i) {
            const int side = random.Int(0, 3);
            const double along = random.Uniform(0, 1), noise = random.Uniform(-1e-8, 1e-8);
            const double x = i < 4 ? i % 2 : side == 0 ? 0 : side == 1 ? 1 : along;
            const double y = i < 4 ? i / 2 : side == 2 ? 0 : side == 3 ? 1 : along;
            points.push_back({100 * x + noise, 50 * y - random.Uniform(-1e-8, 1e-8), i});
        }
        const std::vector<int> tags = Tags(points);
        for (int corner = 0; corner < 4; ++corner)
            EXPECT_TRUE(std::any_of(tags.begin(), tags.end(),
                                    [&, c = points[corner]](int tag) {
                                        return std::hypot(points[tag].x - c.x, points[tag].y - c.y) < 1e-7;
                                    }))
                << "corner " << corner;
        EXPECT_LE(tags.size(), 12u);
    }
}

} // namespace
