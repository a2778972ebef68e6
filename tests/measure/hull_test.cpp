#include "../../common/measure/exact_turn.h"
#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Point = CConvexHelper::Point;

std::vector<Point> Hull(const std::vector<Point>& points) {
    std::vector<Point> hull;
    CConvexHelper::ConvexGrahamScan(points, hull);
    return hull;
}

// The tag of a point is its place in the list.
TEST(Hull, SmallFlatAndDoubled) {
    for (const auto& [name, places, hull] : Table<const char*, std::vector<DPOINT2>, std::vector<int>>{
             {"none", {}, {}},
             {"up to three come back as they are", {{2, 2}, {1, 1}, {0, 0}}, {0, 1, 2}},
             {"doubled: the first counts", {{0, 0}, {0, 0}, {1, 0}, {1, 0}, {0, 1}}, {0, 2, 4}},
             {"on an edge", {{1, 1}, {0, 1}, {0, 0}, {1, 0}, {0.5, 0}, {1, 0.5}, {0, 0.3}}, {2, 3, 0, 1}},
             {"behind one as near", {{-3, -1}, {0, 0}, {5e-10, 5e-10}, {5e-10, 2e-9}, {5e-10, 3}}, {0, 1, 4}},
             {"as low within 1e-9: the leftmost", {{0, 5e-10}, {3, 0}, {3, 3}, {-1, 3}}, {0, 1, 2, 3}},
             {"a thin rectangle", {{0, 0}, {2000, 0}, {2000, 1e-6}, {0, 1e-6}}, {0, 1, 2, 3}},
             {"no places: left out", {{kNaN, 0}, {0, 0}, {1, 0}, {1e300, 2}, {1, kInf}, {0, 1}}, {1, 2, 5}},
             {"nearer than 1e-9: one", {{1, 1}, {1, 1 + 2e-10}, {1 + 2e-10, 1 + 4e-10}, {1, 1}}, {0}}}) {
        std::vector<Point> points;
        for (const DPOINT2& p : places) points.push_back({p.x, p.y, static_cast<int>(points.size())});
        std::vector<int> tags;
        for (const Point& p : Hull(points)) tags.push_back(p.nTag);
        EXPECT_EQ(tags, hull) << name;
    }
}

// A plain chain over all points, which are whole numbers: every turn is exact, and nothing is nearly flat.
std::set<int> PlainCorners(const std::vector<Point>& points) {
    std::map<std::pair<double, double>, Point> sorted; // of doubled points the first given
    for (const Point& p : points) sorted.emplace(std::pair(p.x, p.y), p);
    std::set<int> corners;
    for (const double side : {1, -1}) {
        std::vector<Point> chain;
        for (const auto& [place, p] : sorted) {
            for (std::size_t n = chain.size(); n > 1; n = chain.size()) {
                const Point &a = chain[n - 2], &b = chain[n - 1];
                if (side * math::Cross({b.x - a.x, b.y - a.y}, {p.x - b.x, p.y - b.y}) > 0) break;
                chain.pop_back();
            }
            chain.push_back(p);
        }
        for (const Point& p : chain) corners.insert(p.nTag);
    }
    return corners;
}

// Sizes on both sides of those at which points are halved and sorted in another way; all over a disk, along
// its edge, or crowded beside a far one.
TEST(Hull, CornersAgainstAPlainChain) {
    for (const int count : {7, 24, 25, 300, 3000, 16384, 16385, 40000})
        for (Random random; random.Rounds(12);) {
            const double size = std::pow(10, random.Uniform(0.5, 3.5)), unit = std::exp2(random.Int(0, 36));
            const bool edge = random.Coin(), crowd = random.Coin();
            std::vector<Point> points;
            for (int i = 0; i < count; ++i) {
                const double r = edge ? size : random.Uniform(0, size), angle = random.Uniform(0, kTwoPi);
                const double x = crowd && i == 0 ? 20000 : r * std::cos(angle);
                points.push_back({unit * std::round(x), unit * std::round(r * std::sin(angle)), i});
            }
            std::set<int> corners;
            for (const Point& p : Hull(points)) corners.insert(p.nTag);
            ASSERT_EQ(corners, PlainCorners(points)) << count << " points, " << size << " mm";
        }
}

// Whole numbers of up to 53 bits, whose differences are rounded: a lies in the direction -d from the origin,
// b and c in the direction d nearly as far, both beside it by e.
TEST(Hull, TurnsThatRoundingWouldDecide) {
    for (Random random; random.Rounds(2000);) {
        const auto whole = [&random](double most) {
            return DPOINT2{std::round(random.Uniform(-most, most)), std::round(random.Uniform(-most, most))};
        };
        const DPOINT2 d = whole(1000), e = whole(1);
        const double toB = std::floor(random.Uniform(1e9, 9e12)), toC = toB + random.Int(-9, 9);
        const double turn = ExactTurn(d * -toB, d * toB + e, d * toC + e);
        const double expected = math::Cross(d, e) * (toB - toC);
        EXPECT_EQ((turn > 0) - (turn < 0), (expected > 0) - (expected < 0)) << testing::PrintToString(d);
    }
}

TEST(Hull, Collinear) { // the smallest angle, whose sine is 0.6, at each of the three in turn
    for (const auto& [a, b, c] : Table<Point, Point, Point>{{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}},
                                                            {{4, 3, 0}, {4, 0, 0}, {0, 0, 0}},
                                                            {{4, 0, 0}, {0, 0, 0}, {4, 3, 0}}})
        for (const double tolerance : {0.6, 0.61})
            EXPECT_EQ(CConvexHelper::IsCollinear(a, b, c, tolerance), tolerance > 0.6) << a.x;
    EXPECT_TRUE(CConvexHelper::IsCollinear({0, 0, 0}, {1, 0, 0}, {1, 5e-10, 0}, 0)) << "two are one";
}

} // namespace
