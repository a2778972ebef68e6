#include "host/drawing/outline.h"
#include "support/shapes.h"

using namespace test;
using host::Affine, math::DPOINT2;

TEST(Outline, MappedArcsRunThroughTheMappedPoints) {
    for (Random random; random.Rounds(200);) {
        const DPOINT2 centre = random.Point(), x = random.Point(2), y = random.Point(2);
        const double start = random.Uniform(-7, 7), sweep = random.Uniform(-6, 6);
        const Affine map = random.Coin() ? Affine{x, y, centre} : Affine::Scale(-1.5, 1.5);
        const auto object = host::MakeArc({centre, {2, 0}, {0, 2}, start, sweep}, map);
        const auto expected = [&](double t) {
            const double angle = start + t * sweep;
            return map.Point(centre + DPOINT2{2 * std::cos(angle), 2 * std::sin(angle)});
        };
        EXPECT_POINT_NEAR(object->GetStartPoint(), expected(0), 1e-9);
        EXPECT_POINT_NEAR(object->GetEndPoint(), expected(1), 1e-9);
        EXPECT_LT(SampledDistance(Along(*object), expected(0.3), 2000), 0.05);
    }
}

TEST(Outline, SqueezedArcsOfContours) {
    const auto half = host::MakeContour({{{1, 0}, {-1, 0}, 1}}, Affine::Scale(3, 1));
    for (int i = 0; i < half->GetSegmentCount(); ++i) {
        const DPOINT2 p = half->GetSegment(i).GetPoint(0.25);
        EXPECT_NEAR(std::hypot(p.x / 3, p.y), 1, 6.8e-8);
    }
}
