#include "support/support.h"

using namespace test;

namespace {

template <class Curve>
std::size_t CountNodes(const Curve& curve, double to, math::FitSettings settings) {
    std::vector<math::FitNode> nodes;
    return math::FitStretch(curve, 0, to, settings, nodes) ? nodes.size() : 0;
}

// A list that is as long as it may be is made, and one that would be a node longer is not, whatever the
// estimate of the number says.
template <class Curve>
void ExpectRefusedOnlyBeyondTheLimit(const Curve& curve, double to, double error) {
    for (const bool chords : {true, false}) {
        const std::size_t count = CountNodes(curve, to, {error, chords, 10'000'000});
        EXPECT_GT(count, chords ? 1000u : 0u) << "fewer are not estimated";
        EXPECT_EQ(CountNodes(curve, to, {error, chords, count}), count) << "chords " << chords;
        EXPECT_EQ(CountNodes(curve, to, {error, chords, count - 1}), 0u) << "chords " << chords;
    }
}

TEST(FitStretch, IsRefusedOnlyBeyondTheLimit) {
    for (Random random; random.Rounds(10);) {
        const double error = std::pow(10, random.Uniform(-10, -8));
        const DPOINT2 start = random.Point(), ctrl1 = random.Point(), ctrl2 = random.Point();
        ExpectRefusedOnlyBeyondTheLimit(CubicBezier{start, ctrl1, ctrl2, random.Point()}, 1, error);
        const EllipticArc ellipse({0, 0}, 100, std::pow(10, random.Uniform(-1, 2)), 0);
        ExpectRefusedOnlyBeyondTheLimit(ellipse, math::kHalfPi, error);
    }
}

} // namespace
