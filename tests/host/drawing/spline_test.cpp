#include "host/drawing/spline.h"
#include "support/shapes.h"

TEST(Spline, ARationalQuarterCircleIsRound) {
    const host::Spline quarter{2, {0, 0, 0, 1, 1, 1}, {{1, 0}, {1, 1}, {0, 1}}, {1, std::sqrt(0.5), 1}};
    for (const math::CubicBezier& piece : host::ToBeziers(quarter))
        EXPECT_NEAR(math::Norm(piece.PointAt(0.5)), 1, 6e-8);
}
