// The convex hull of points in a disk, where most are inside, and on a circle, where all are corners.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "by_hand/hull.h"
#include "peers/peers.h"
#include "support/contours.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using Points = std::vector<HullPoint>;

constexpr double kRadius = 100; // mm

struct Disk {
    explicit Disk(int n) {
        Random random(9);
        while (static_cast<int>(points.size()) < n) {
            const math::DPOINT2 p = random.Point(kRadius);
            if (math::Dot(p, p) <= kRadius * kRadius)
                points.push_back({p.x, p.y, static_cast<int>(points.size())});
        }
    }
    Points points;
};
// Points nearly evenly round a circle in no order: no two are as near as the hull takes for one corner.
struct Circle {
    explicit Circle(int n) {
        Random random(10);
        for (int i = 0; i < n; ++i) {
            const double angle = math::kTwoPi * (i + random.Uniform(-0.3, 0.3)) / n;
            points.push_back({kRadius * std::cos(angle), kRadius * std::sin(angle), i});
        }
        random.Shuffle(points);
    }
    Points points;
};

template <class Shape>
bool AddHull(const std::string& shape, int n, double ofPeer) {
    const auto ours = [n] {
        return [&points = Kept<Shape>(n).points, corners = Points()](int) mutable {
            qev::CConvexHelper::ConvexGrahamScan(points, corners);
            return corners.size();
        };
    };
    const auto cgal = [n] {
        return [cloud = std::make_shared<CgalCloud>(Kept<Shape>(n).points)](int) {
            return cloud->CountCorners();
        };
    };
    const auto byHand = [n] {
        return [&points = Kept<Shape>(n).points, hull = HullByHand()](int) mutable {
            return hull.CountCorners(points);
        };
    };
    return Add({"hull of " + std::to_string(n) + " on a " + shape,
                Ask(ours),
                {{"CGAL", Ask(cgal)}},
                Ask(byHand),
                {ofPeer, 0},
                0,
                1});
}

const bool added = [] {
    for (const int n : {10, 1000, 1'000'000}) {
        AddHull<Disk>("disk", n, 0.65);
        AddHull<Circle>("circle", n, 0.75);
    }
    return true;
}();

} // namespace
