#include <set>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

using Point = CConvexHelper::Point;

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
TEST(Hull, AgainstEveryLineThroughTwoPoints) {
    for (Random random; random.Rounds(100);) {
        std::vector<Point> points;
        for (int i = 0, count = random.Int(4, 40); i < count; ++i) {
            const DPOINT2 p = random.Point();
            points.push_back({p.x + 1e4, p.y, i});
        }
        std::set<int> corners;
        for (const Point& a : points)
            for (const Point& b : points) {
                bool isEdge = a.nTag != b.nTag;
                for (const Point& c : points)
                    isEdge = isEdge && (c.nTag == a.nTag || c.nTag == b.nTag || Turn(a, b, c) > 0);
                if (isEdge) corners.insert(a.nTag);
            }
        const std::vector<int> tags = Tags(points);
        EXPECT_EQ(std::set<int>(tags.begin(), tags.end()), corners);
        for (std::size_t i = 0; i < tags.size(); ++i) { // the lowest comes first, and all turn left
            const auto at = [&](std::size_t k) { return points[tags[k % tags.size()]]; };
            EXPECT_TRUE(at(i).y >= at(0).y && Turn(at(i), at(i + 1), at(i + 2)) > 0);
        }
    }
}

// The points and which of them make the hull: up to three come back as they are, of duplicates the first
// counts, as low as the lowest is what is within 1e-9, what is not finite is left out.
TEST(Hull, SmallFlatAndDoubled) {
    for (const auto& [row, x, y, tags] : Rows<std::vector<double>, std::vector<double>, std::vector<int>>(
             "none none none; 2,1,0 2,1,0 0,1,2; 1,0,0,1 1,1,0,0 2,3,0,1; 0,0,1,1,0 0,0,0,0,1 0,2,4;"
             "1,0,0,1,0.5,1,0 1,1,0,0,0,0.5,0.3 2,3,0,1; 0,3,3,0 5e-10,0,3,3 0,1,2,3; 0,1,2,3 0,1,2,3 0,3;"
             "nan,0,1,1,0 0,0,0,inf,1 1,2,4; 1,1,1,1 1,1,1,1 0")) {
        std::vector<Point> points;
        for (std::size_t i = 0; i < x.size(); ++i) points.push_back({x[i], y.at(i), static_cast<int>(i)});
        EXPECT_EQ(Tags(points), tags) << row;
    }
    const std::vector<Point> huge{{1e300, 0, 0}, {0, 1e300, 1}, {-1e300, 0, 2}, {0, -1e300, 3}, {1, 1, 4}};
    EXPECT_LE(Tags(huge).size(), 5u);
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
            EXPECT_TRUE(std::any_of(tags.begin(), tags.end(), [&, c = points[corner]](int tag) {
                return std::hypot(points[tag].x - c.x, points[tag].y - c.y) < 1e-7;
            }));
        EXPECT_LE(tags.size(), 12u);
    }
}

TEST(Stock, PlatesAndTheirOutlines) {
    const std::unique_ptr<Adobe> plate(Make_RectPlane(100, 50, 20)), same(Make_RectPlane(100, 50, 3));
    double width = 0, height = 0, thickness = 0;
    EXPECT_FALSE(GetRectPlaneParam(plate.get(), width, height, thickness)); // deliberately, having read them
    EXPECT_TRUE(width == 100 && height == 50 && thickness == 20);
    const auto* outline = static_cast<const CCadPolyline*>(plate->GetSectionData()->GetFront());
    EXPECT_TRUE(outline->GetStartPoint().x == -50 && outline->GetStartPoint().y == -25 && outline->IsClose());
    const auto isSame = [&](const char* a, const char* b) {
        CCadGroup left, right;
        Fill(left, {Polyline(a).release()});
        Fill(right, {Polyline(b).release()});
        return CAdobeHelper::IsSameProjectContour(&left, &right);
    };
    EXPECT_TRUE(CAdobeHelper::IsSameProjectContour(plate->GetSectionData(), same->GetSectionData()));
    EXPECT_TRUE(isSame("0 0 L 5 0", "0 0 L 5 0.000001") && !isSame("0 0 L 5 0", "0 0 L 5 0.0000011"));
    EXPECT_TRUE(isSame("0 0 A 1 0 1", "0 0 A 1 0 1.0000000001") && !isSame("0 0 A 1 0 1", "0 0 A 1 0 1.01"));
    EXPECT_FALSE(isSame("0 0 L 5 0", "5 0 L 0 0") || isSame("0 0 L 5 0", "0 0 L 5 0 L 6 0"));
    const CCadGroup empty, alike;
    EXPECT_TRUE(CAdobeHelper::IsSameProjectContour(&empty, &alike));
    EXPECT_FALSE(CAdobeHelper::IsSameProjectContour(&empty, plate->GetSectionData())
                 || CAdobeHelper::IsSameProjectContour(nullptr, &empty));
    MakeSectionData_RectPlane(plate->GetSectionData(), 1, 1);
    const Adobe other(1);
    width = -1;
    const Adobe* const none[] = {plate.get(), &other, nullptr};
    for (const Adobe* stock : none) EXPECT_FALSE(GetRectPlaneParam(stock, width, height, thickness));
    EXPECT_EQ(width, -1);
}

} // namespace
