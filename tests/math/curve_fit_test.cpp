#include "support/support.h"

namespace {

using namespace qev;
using namespace test;
using math::FitNode, math::FitStretch;

constexpr double kError = 1e-3;
constexpr std::size_t kPlenty = 100'000;

// Between two nodes the curve is sampled: no sample may be farther from the line or arc than the error.
void ExpectWithinError(const CurvePoint& curve, double to, const std::vector<FitNode>& nodes) {
    double from = 0;
    for (const FitNode& node : nodes) {
        ASSERT_GT(node.u, from);
        const BulgeArc arc{curve(from), curve(node.u), node.bulge};
        for (const double share : {0.1, 0.3, 0.5, 0.7, 0.9}) {
            const DPOINT2 p = curve(from + share * (node.u - from));
            EXPECT_POINT_NEAR(p, arc.PointAt(arc.GetFootRatio(p)), kError * (1 + 1e-9));
        }
        from = node.u;
    }
    EXPECT_EQ(from, to) << "the last node ends the stretch";
}

TEST(CurveFit, KeepsTheErrorOnBezierPiecesAndQuadrantsRunEitherWay) {
    for (Random random; random.Rounds(200);) {
        const bool chords = random.Coin();
        const DPOINT2 start = random.Point(), ctrl1 = random.Point(), ctrl2 = random.Point();
        const CubicBezier bezier{start, ctrl1, ctrl2, random.Point()};
        std::vector<FitNode> nodes;
        ASSERT_TRUE(FitStretch(bezier, 0, 1, {kError, chords, kPlenty}, nodes));
        ExpectWithinError([&](double u) { return bezier.PointAt(u); }, 1, nodes);

        const double sign = random.Coin() ? 1 : -1;
        const EllipticArc arc(start, 50, std::pow(10, random.Uniform(-3, 2)), 1, 0, sign * kTwoPi);
        nodes.clear();
        ASSERT_TRUE(FitStretch(arc, 0, math::kHalfPi, {kError, chords, kPlenty}, nodes));
        ExpectWithinError([&](double u) { return arc.PointAt(sign * u); }, math::kHalfPi, nodes);
    }
}

TEST(CurveFit, RefusesTooManyNodes) {
    const CubicBezier bezier{{0, 0}, {0, 50}, {100, 50}, {100, 0}};
    std::vector<FitNode> nodes;
    ASSERT_TRUE(FitStretch(bezier, 0, 1, {kError, true, kPlenty}, nodes));
    EXPECT_FALSE(FitStretch(bezier, 0, 1, {kError, true, 2 * nodes.size() - 1}, nodes))
        << "those there count";
}

} // namespace
