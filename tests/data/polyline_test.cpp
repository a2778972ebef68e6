#include <gp_Ax2d.hxx>
#include <gp_Trsf2d.hxx>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

gp_Trsf2d RandomSimilarity(Random& random) {
    gp_Trsf2d turn, mirror, move;
    turn.SetRotation(gp_Pnt2d(random.Uniform(-9, 9), 3), random.Uniform(-4, 4));
    if (random.Coin()) mirror.SetMirror(gp_Ax2d(gp_Pnt2d(1, 2), gp_Dir2d(random.Uniform(-1, 1), 1)));
    move.SetScale(gp_Pnt2d(3, 4), random.Uniform(0.5, 2));
    return turn * mirror * move;
}

template <class Contour>
class BothPolylines : public testing::Test {};
using Contours = testing::Types<CCadPolyline, CCadPolylineEx>;
TYPED_TEST_SUITE(BothPolylines, Contours);

TYPED_TEST(BothPolylines, EveryPointGoesWhereTheKernelPutsIt) {
    for (Random random; random.Rounds(100);) {
        const auto contour = RandomPolyline<TypeParam>(random, 8);
        const std::unique_ptr<CCadObject> before(contour->Clone(false));
        const gp_Trsf2d transform = RandomSimilarity(random);
        random.Coin() ? contour->ApplyTransform(transform) : contour->ApplyTransform2D(transform);
        ASSERT_EQ(contour->GetSegmentCount(), before->GetSegmentCount());
        for (int i = 0; i < contour->GetSegmentCount(); ++i) {
            const double ratio = random.Uniform(0, 1);
            DPOINT2 expected = before->GetSegment(i).GetPoint(ratio);
            transform.Transforms(expected.x, expected.y);
            EXPECT_POINT_NEAR(contour->GetSegment(i).GetPoint(ratio), expected, 1e-8);
        }
        EXPECT_POINT_NEAR(contour->GetStartPoint(), contour->GetSegment(0).ptStart, 0);
    }
}

TYPED_TEST(BothPolylines, ReversedItRunsBackward) {
    for (Random random; random.Rounds(100);) {
        const auto contour = RandomPolyline<TypeParam>(random, 8);
        const std::unique_ptr<CCadObject> before(contour->Clone(false));
        const bool toggles = random.Coin();
        contour->ReverseDir(toggles);
        EXPECT_EQ(contour->IsNormalDir(), !toggles);
        const int count = contour->GetSegmentCount();
        ASSERT_EQ(count, before->GetSegmentCount());
        for (int i = 0; i < count; ++i) {
            const SEGMENT now = contour->GetSegment(i), then = before->GetSegment(count - 1 - i);
            EXPECT_EQ(now.nType, then.nType);
            EXPECT_EQ(now.dBulge, -then.dBulge);
            EXPECT_POINT_NEAR(now.GetPoint(0.3), then.GetPoint(0.7), 1e-8);
        }
        EXPECT_POINT_NEAR(contour->GetStartPoint(), before->GetEndPoint(), 0);
        EXPECT_POINT_NEAR(contour->GetEndPoint(), before->GetStartPoint(), 0);
    }
}

} // namespace
