#include "host/drawing/spline.h"
#include "support/shapes.h"

using namespace test;

TEST(Spline, AParabolaIsOnePiece) {
    const host::Spline parabola{2, {0, 0, 0, 1, 1, 1}, {{0, 0}, {0.5, 0}, {1, 1}}, {}};
    const auto pieces = host::ToBeziers(parabola);
    ASSERT_EQ(pieces.size(), 1u);
    for (double t = 0; t <= 1; t += 0.25)
        EXPECT_POINT_NEAR(pieces[0].PointAt(t), (math::DPOINT2{t, t * t}), 1e-15);
}

TEST(Spline, ARationalQuarterCircleIsRound) {
    const host::Spline quarter{2, {0, 0, 0, 1, 1, 1}, {{1, 0}, {1, 1}, {0, 1}}, {1, std::sqrt(0.5), 1}};
    for (const math::CubicBezier& piece : host::ToBeziers(quarter))
        EXPECT_NEAR(math::Norm(piece.PointAt(0.5)), 1, 6e-8);
}

// Cubic pieces of simple knots join with equal derivatives, as the spline itself does.
TEST(Spline, PiecesJoinSmoothly) {
    const std::vector<math::DPOINT2> points{{0, 0}, {4, 1}, {5, 5}, {1, 3}, {0, 4}};
    const host::Spline cubic{3, {0, 1, 2, 3, 4, 5, 6, 7, 8}, points, {}};
    for (const auto& pieces : {host::ToBeziers(cubic), host::ThroughPoints(points, false)})
        for (std::size_t i = 1; i < pieces.size(); ++i) {
            EXPECT_POINT_NEAR(pieces[i - 1].end, pieces[i].start, 1e-15);
            EXPECT_POINT_NEAR(pieces[i - 1].end - pieces[i - 1].ctrl2, pieces[i].ctrl1 - pieces[i].start,
                              1e-14);
        }
}
