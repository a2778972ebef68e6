#include "support/support.h"

using namespace test;

namespace {

// How many nodes stand for a curve, behind one that was there before; 0 when it is refused. None of their
// lines and arcs leaves the curve by more than the error.
template <class Curve>
std::size_t CountNodes(const Curve& curve, double to, math::FitSettings settings) {
    std::vector<math::FitNode> nodes{{0, 0}};
    if (!math::FitStretch(curve, 0, to, settings, nodes)) return 0;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        const double from = nodes[i - 1].u, step = nodes[i].u - from;
        const BulgeArc piece{curve.PointAt(from), curve.PointAt(nodes[i].u), nodes[i].bulge};
        for (const double s : {0.2, 0.5, 0.8})
            EXPECT_TRUE(piece.IsWithin(curve.PointAt(from + s * step), settings.error)) << i << ' ' << s;
    }
    return nodes.size();
}

// A list that is as long as it may be is made, and one that would be a node longer is not, whatever the
// estimate of the number says.
template <class Curve>
void ExpectRefusedOnlyBeyondTheLimit(const Curve& curve, double to, double error) {
    for (const bool chords : {true, false}) {
        const std::size_t count = CountNodes(curve, to, {error, chords, 10'000'000});
        EXPECT_GT(count, 1u) << "chords " << chords;
        const std::size_t most = chords || count > 20 ? count : 2 * count; // few arcs may be found after more
        EXPECT_EQ(CountNodes(curve, to, {error, chords, most}), count) << "chords " << chords;
        EXPECT_EQ(CountNodes(curve, to, {error, chords, count - 1}), 0u) << "chords " << chords;
    }
}

TEST(FitStretch, KeepsTheErrorAndIsRefusedOnlyBeyondTheLimit) {
    for (Random random; random.Rounds(100);) {
        const double error = std::pow(10, random.Uniform(-8, 1)), to = random.Uniform(0.1, 1);
        const DPOINT2 start = random.Point(), ctrl1 = random.Point(), ctrl2 = random.Point();
        ExpectRefusedOnlyBeyondTheLimit(CubicBezier{start, ctrl1, ctrl2, random.Point()}, to, error);
        const double a = std::pow(10, random.Uniform(-1, 2)), b = std::pow(10, random.Uniform(-1, 2));
        ExpectRefusedOnlyBeyondTheLimit(EllipticArc({0, 0}, a, b, 0), to * math::kHalfPi, error);
    }
}

TEST(FitStretch, TakesNoMoreThanIsNeeded) {
    const CubicBezier line{{0, 0}, {0, 0}, {3, 4}, {3, 4}}, parabola{{0, 0}, {1, 2}, {2, 2}, {3, 0}};
    EXPECT_EQ(CountNodes(line, 1, {1e-3, true, 10}), 2u) << "with the one before it";
    EXPECT_EQ(CountNodes(parabola, 1, {1e-2, false, 100}), 7u) << "three pairs of arcs";
    std::vector<math::FitNode> none;
    EXPECT_FALSE(math::FitStretch(line, 0, 1, {1e-3, true}, none)) << "no number of nodes is given";
}

} // namespace
