#include "support/support.h"

using namespace test;

namespace {

// How many nodes stand for a curve from `start` on, behind one that was there before; 0 when it is refused.
// None of their lines and arcs leaves the curve by more than the error.
template <class Curve>
std::size_t CountNodes(const Curve& curve, double to, math::FitSettings settings, double start = 0) {
    std::vector<math::FitNode> nodes{{0, 0}};
    if (!math::FitStretch(curve, 0, to, settings, nodes)) return 0;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const double from = start + nodes[i - 1].u, step = nodes[i].u - nodes[i - 1].u;
        const BulgeArc piece{curve.PointAt(from), curve.PointAt(from + step), nodes[i].bulge};
        for (const double s : {0.2, 0.5, 0.8})
            EXPECT_TRUE(piece.IsWithin(curve.PointAt(from + s * step), settings.error)) << i << ' ' << s;
    }
    return nodes.size();
}

// A list that is as long as it may be is made, and one that would be a node longer is not, whatever the
// estimate of the number says.
template <class Curve>
void ExpectRefusedOnlyBeyondTheLimit(const Curve& curve, double to, double error, double start = 0) {
    for (const bool chords : {true, false}) {
        const std::size_t count = CountNodes(curve, to, {error, chords, 10'000'000}, start);
        EXPECT_GT(count, 1u) << "chords " << chords;
        const std::size_t most = chords || count > 20 ? count : 3 * count; // few arcs may be found after more
        EXPECT_EQ(CountNodes(curve, to, {error, chords, most}, start), count) << "chords " << chords;
        EXPECT_EQ(CountNodes(curve, to, {error, chords, count - 1}, start), 0u) << "chords " << chords;
    }
}

TEST(FitStretch, KeepsTheErrorAndIsRefusedOnlyBeyondTheLimit) {
    for (Random random; random.Rounds(100);) {
        const double error = std::pow(10, random.Uniform(-8, 1)), to = random.Uniform(0.1, 1);
        const DPOINT2 start = random.Point(), ctrl1 = random.Point(), ctrl2 = random.Point();
        ExpectRefusedOnlyBeyondTheLimit(CubicBezier{start, ctrl1, ctrl2, random.Point()}, to, error);
        const double a = std::pow(10, random.Uniform(-1, 2)), b = std::pow(10, random.Uniform(-1, 2));
        const double from = to < 0.5 ? 0 : 0.3, sweep = 1.2 * to; // from an end of an axis, or inside
        ExpectRefusedOnlyBeyondTheLimit(EllipticArc({0, 0}, a, b, 0, from, sweep), sweep, error, from);
    }
}

TEST(FitStretch, TakesNoMoreThanIsNeeded) {
    const CubicBezier line{{0, 0}, {0, 0}, {3, 4}, {3, 4}}, hook{{0, 0}, {3, 1}, {-5, -2}, {1, 0}};
    EXPECT_EQ(CountNodes(line, 1, {1e-3, true, 10}), 2u) << "with the one before it";
    EXPECT_EQ(CountNodes(hook, 1, {0.04, false, 100}), 9u) << "four pairs of arcs";
    EXPECT_EQ(CountNodes(hook, 1, {1, true, 100}), 5u) << "four chords, as it turns back";
    EXPECT_EQ(CountNodes(EllipticArc({0, 0}, 9, 0, 0), 1.5, {1e-3, false, 10}), 2u) << "flat";
    EXPECT_EQ(CountNodes(EllipticArc({0, 0}, 1000, 1, 0), 1.56, {0.17, false, 10}), 5u) << "nearly flat";
    EXPECT_EQ(CountNodes(EllipticArc({0, 0}, 1, 1, 0), kPi / 2, {0.0762, true, 10}), 3u) << "1 - cos(pi/8)";
    std::vector<math::FitNode> none;
    EXPECT_FALSE(math::FitStretch(hook, 0.5, 1, {1e-50, true, 10}, none)) << "below the digits of u";
    EXPECT_TRUE(none.empty()) << "a node that gets nowhere";
}

} // namespace
