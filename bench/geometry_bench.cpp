// Nearest positions, picks, walks and hulls beside the same work over bare arrays.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include <qev/qev.h>

#include "support/pair.h"

namespace {

using benchmark::State;
using math::DPOINT2;
using qev::bench::Pair;

struct Node {
    DPOINT2 start, end;
};

std::mt19937_64& Engine() {
    static std::mt19937_64 engine(1);
    return engine;
}

double Uniform(double low, double high) {
    return low + (high - low) * static_cast<double>(Engine()() >> 11) * 0x1p-53;
}

// A star of lines round a centre, as the library's contour and as an array.
struct Star {
    Star(int count, const DPOINT2& centre, double radius) {
        for (int i = 0; i <= count; ++i) {
            const double angle = math::kTwoPi * i / count, r = radius * Uniform(0.9, 1.1);
            const DPOINT2 p{centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)};
            if (i == 0)
                contour.SetStartPoint(p);
            else
                contour.AddLine(p), nodes.push_back({last, p});
            last = p;
        }
    }
    qev::CCadPolyline contour{false};
    std::vector<Node> nodes;
    DPOINT2 last;
};

// Squared distance to a line.
double Square(const DPOINT2& p, const Node& n) {
    const DPOINT2 along = n.end - n.start;
    const double ratio = std::clamp(math::Dot(p - n.start, along) / math::Dot(along, along), 0.0, 1.0);
    const DPOINT2 gap = p - (n.start + along * ratio);
    return math::Dot(gap, gap);
}

double NearestSquare(const std::vector<Node>& nodes, const DPOINT2& p) {
    double best = std::numeric_limits<double>::infinity();
    for (const Node& n : nodes) best = std::min(best, Square(p, n));
    return best;
}

template <int kCount>
bool NearestPair(double bound) {
    return Pair(
        "nearest of " + std::to_string(kCount), bound,
        [](State& state) {
            const Star star(kCount, {0, 0}, 100);
            for (auto _ : state) benchmark::DoNotOptimize(NearestSquare(star.nodes, {50, 60}));
        },
        [](State& state) {
            const Star star(kCount, {0, 0}, 100);
            math::POLYPOS pos;
            for (auto _ : state) benchmark::DoNotOptimize(qev::CoorToPos(&star.contour, {50, 60}, pos, 1e3));
        });
}

// Stars on a grid, picked near the outline of one.
struct Field {
    explicit Field(int side) {
        for (int i = 0; i < side * side; ++i) {
            auto star = std::make_unique<Star>(12, DPOINT2{i % side * 30.0, i / side * 30.0}, 10);
            const qev::CadRect box = star->contour.GetBoundRect();
            boxes.push_back({{box.x, box.y}, {box.x + box.width, box.y + box.height}});
            group.PushBack(&star->contour);
            stars.push_back(std::move(star));
        }
    }
    ~Field() { group.PickOffAll(); }
    Field(const Field&) = delete;
    qev::CCadGroup group{false};
    std::vector<std::unique_ptr<Star>> stars;
    std::vector<math::Bounds> boxes;
};

template <int kSide>
bool PickPair(double bound) {
    return Pair(
        "pick among " + std::to_string(kSide * kSide), bound,
        [](State& state) {
            const Field field(kSide);
            const DPOINT2 p{kSide / 2 * 30.0 + 10, kSide / 2 * 30.0};
            for (auto _ : state) {
                double best = 4;
                for (std::size_t i = 0; i < field.boxes.size(); ++i) {
                    const math::Bounds& box = field.boxes[i];
                    const bool near = p.x > box.lower.x - 2 && p.x < box.upper.x + 2 && p.y > box.lower.y - 2
                                      && p.y < box.upper.y + 2;
                    if (near) best = std::min(best, NearestSquare(field.stars[i]->nodes, p));
                }
                benchmark::DoNotOptimize(best);
            }
        },
        [](State& state) {
            const Field field(kSide);
            const DPOINT2 p{kSide / 2 * 30.0 + 10, kSide / 2 * 30.0};
            const qev::CCadObject* object = nullptr;
            math::POLYPOS pos;
            for (auto _ : state)
                benchmark::DoNotOptimize(qev::FindCadAndPosByPoint(&field.group, p, object, pos, 2));
        });
}

// Beside one pass over bare lines, which is all that the limit does: a few segments are searched twice, for
// the object and for the position, by the exact rules for lines, arcs and ties; many are searched by their
// boxes. A pick asks each object for its box through its virtual functions.
const bool nearest10 = NearestPair<10>(50);
const bool nearest1000 = NearestPair<1000>(2);
const bool nearest100000 = NearestPair<100'000>(0.5);
const bool pick100 = PickPair<10>(40);
const bool pick10000 = PickPair<100>(40);

const bool walk = Pair(
    "walk over 500 of 1000 segments", 1.5,
    [](State& state) {
        const Star star(1000, {0, 0}, 100);
        const double half = star.contour.GetLength() / 2;
        for (auto _ : state) {
            double left = half;
            std::size_t i = 0;
            for (double length = 0;
                 (length = math::D2GetDistance(star.nodes[i].start, star.nodes[i].end)) < left;) {
                left -= length;
                i = i + 1 < star.nodes.size() ? i + 1 : 0;
            }
            benchmark::DoNotOptimize(left + static_cast<double>(i));
        }
    },
    [](State& state) {
        const Star star(1000, {0, 0}, 100);
        const double half = star.contour.GetLength() / 2;
        math::POLYPOS pos;
        for (auto _ : state) benchmark::DoNotOptimize(qev::GetPosByOffset(&star.contour, {0, 0}, half, pos));
    });

std::vector<qev::CConvexHelper::Point> Cloud() {
    std::vector<qev::CConvexHelper::Point> points;
    for (int i = 0; i < 10'000; ++i) points.push_back({Uniform(0, 100), Uniform(0, 100), i});
    return points;
}

const bool hull = Pair(
    "hull of 10000 points", 2,
    [](State& state) {
        const auto cloud = Cloud();
        for (auto _ : state) {
            auto points = cloud;
            std::sort(points.begin(), points.end(),
                      [](const auto& p, const auto& q) { return std::tie(p.x, p.y) < std::tie(q.x, q.y); });
            std::vector<qev::CConvexHelper::Point> chain;
            for (int pass = 0; pass < 2; ++pass, std::reverse(points.begin(), points.end()))
                for (const auto& p : points) {
                    while (chain.size() > 1) {
                        const auto &a = chain[chain.size() - 2], &b = chain.back();
                        if ((b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x) > 0) break;
                        chain.pop_back();
                    }
                    chain.push_back(p);
                }
            benchmark::DoNotOptimize(chain.data());
        }
    },
    [](State& state) {
        const auto cloud = Cloud();
        std::vector<qev::CConvexHelper::Point> corners;
        for (auto _ : state) {
            qev::CConvexHelper::ConvexGrahamScan(cloud, corners);
            benchmark::DoNotOptimize(corners.data());
        }
    });

} // namespace
