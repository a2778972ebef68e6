#include "host/drawing/outline.h"
#include "support/shapes.h"

using namespace test;

namespace {

using math::DPOINT2;

TEST(Outline, MappedArcsRunThroughTheMappedPoints) {
    for (Random random; random.Rounds(200);) {
        const DPOINT2 centre = random.Point(), x = random.Point(2), y = random.Point(2);
        const double start = random.Uniform(-7, 7), sweep = random.Uniform(-6, 6);
        const host::Affine map = random.Coin() ? host::Affine{x, y, centre} : host::Affine::Scale(-1.5, 1.5);
        const auto object = host::MakeArc({centre, {2, 0}, {0, 2}, start, sweep}, map);
        const auto expected = [&](double t) {
            return map.Point(centre
                             + DPOINT2{2 * std::cos(start + t * sweep), 2 * std::sin(start + t * sweep)});
        };
        EXPECT_POINT_NEAR(object->GetStartPoint(), expected(0), 1e-9);
        EXPECT_POINT_NEAR(object->GetEndPoint(), expected(1), 1e-9);
        EXPECT_LT(SampledDistance(Along(*object), expected(0.3), 2000), 0.05);
    }
}

TEST(Outline, ArcsOfContoursUnderMaps) {
    const std::vector<qev::SEGMENT> half{{{1, 0}, {-1, 0}, 1}}; // the upper half of the unit circle
    const auto mirrored = host::MakeContour(half, host::Affine::Scale(2, -2));
    EXPECT_EQ(mirrored->GetSegment(0).dBulge, -1);
    const auto squeezed = host::MakeContour(half, host::Affine::Scale(3, 1));
    for (int i = 0; i < squeezed->GetSegmentCount(); ++i) {
        const DPOINT2 p = squeezed->GetSegment(i).GetPoint(0.25);
        EXPECT_NEAR(std::hypot(p.x / 3, p.y), 1, 6.8e-8);
    }
}

} // namespace
