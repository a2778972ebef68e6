#include <gp_Ax2d.hxx>
#include <gp_Trsf2d.hxx>

#include "support/support.h"

namespace {

gp_Trsf2d RandomSimilarity(Random& random) {
    gp_Trsf2d turn, mirror, move;
    turn.SetRotation(gp_Pnt2d(random.Uniform(-9, 9), 3), random.Uniform(-4, 4));
    if (random.Coin()) mirror.SetMirror(gp_Ax2d(gp_Pnt2d(1, 2), gp_Dir2d(random.Uniform(-1, 1), 1)));
    move.SetScale(gp_Pnt2d(3, 4), random.Uniform(0.5, 2));
    return turn * mirror * move;
}

// Every point of every segment goes where the kernel puts it; reversing twice changes nothing.
template <class Contour>
void CheckTransformAndReverse(Random& random, Contour& contour) {
    const std::unique_ptr<Contour> before(static_cast<Contour*>(contour.Clone(false)));
    const gp_Trsf2d transform = RandomSimilarity(random);
    contour.ApplyTransform(transform);
    contour.ReverseDir(false);
    ASSERT_EQ(contour.GetSegmentCount(), before->GetSegmentCount());
    for (int i = 0, n = contour.GetSegmentCount(); i < n; ++i) {
        const double ratio = random.Uniform(0, 1);
        DPOINT2 expected = before->GetSegment(n - 1 - i).GetPoint(1 - ratio);
        transform.Transforms(expected.x, expected.y);
        EXPECT_POINT_NEAR(contour.GetSegment(i).GetPoint(ratio), expected, 1e-8);
    }
    EXPECT_TRUE(contour.IsNormalDir());
    contour.ReverseDir(true);
    EXPECT_FALSE(contour.IsNormalDir());
    contour.ApplyTransform2D(transform.Inverted());
    for (int i = 0; i < contour.GetSegmentCount(); ++i) {
        const SEGMENT now = contour.GetSegment(i), then = before->GetSegment(i);
        EXPECT_TRUE(now.nType == then.nType && std::abs(now.dBulge - then.dBulge) < 1e-12);
        EXPECT_POINT_NEAR(now.ptEnd, then.ptEnd, 1e-10);
    }
    EXPECT_POINT_NEAR(contour.GetStartPoint(), before->GetStartPoint(), 1e-10);
}

TEST(Polyline, TransformsAndReverses) {
    for (Random random; random.Rounds(100);) {
        CheckTransformAndReverse(random, *RandomPolyline(random, 8));
        CheckTransformAndReverse(random, *RandomPolylineEx(random, 8));
    }
}

TEST(Polyline, EmptyAndOutOfRange) {
    CCadPolyline plain;
    CCadPolylineEx extended;
    EXPECT_TRUE(math::IsNoPoint(plain.GetStartPoint()) && math::IsNoPoint(extended.GetEndPoint()));
    plain.ReverseDir(true);
    extended.ReverseDir(true);
    plain.SetStartPoint({1, 2});
    EXPECT_POINT_NEAR(plain.GetEndPoint(), (DPOINT2{1, 2}), 0);
    plain.AddArc({3, 2}, 0.9e-9);
    extended.SetStartPoint({1, 2});
    extended.AddArc({3, 2}, 0.9e-9);
    EXPECT_TRUE(plain.GetSegment(0).nType == 1 && extended.GetAt(0).nType == 1) << "no bulge, no arc";
    for (const int index : {-1, 1, INT_MAX, INT_MIN}) {
        EXPECT_TRUE(std::isnan(plain.GetAt(index).x));
        EXPECT_EQ(plain.GetSegment(index).GetLength() + extended.GetAt(index).GetLength(), 0);
    }
    extended.SetStartPoint({2, 2});
    EXPECT_EQ(extended.GetLength(), 1) << "the first segment follows the start point";
}

TEST(Rectangle, VerticesRunCounterClockwise) {
    const CCadRectangle turned({1, 1}, 4, 2, math::kHalfPi);
    const DPOINT2 vertices[] = {{1, 1}, {1, 5}, {-1, 5}, {-1, 1}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_POINT_NEAR(turned.GetVertex(i), vertices[i], 1e-15);
        EXPECT_POINT_NEAR(turned.GetSegment(i).ptEnd, vertices[(i + 1) % 4], 1e-15);
    }
    EXPECT_TRUE(math::IsNoPoint(turned.GetVertex(4)) && math::IsNoPoint(turned.GetVertex(-1)));
    const CCadRectangle negative({0, 0}, -4, -2);
    EXPECT_POINT_NEAR(negative.GetVertex(0), (DPOINT2{-4, -2}), 0);
}

} // namespace
