#include <gp_Trsf2d.hxx>

#include "support/support.h"

namespace {

using namespace test;

// A host's kind with the segments of another contour: it keeps no index.
class Plain : public CCadMultiSegments {
public:
    explicit Plain(const CCadObject& contour) : CCadMultiSegments(false), m_contour(contour) {}
    cad_t GetType() const override { return m_contour.GetType(); }
    int GetSegmentCount() const override { return m_contour.GetSegmentCount(); }
    SEGMENT GetSegment(int index) const override { return m_contour.GetSegment(index); }

private:
    const CCadObject& m_contour;
};

void ExpectSameAnswers(CCadObject& contour, Random& random) {
    Plain plain(contour);
    ASSERT_TRUE((contour.GetIndex(), contour.GetIndex())) << "kept from the second time on";
    const CadRect box = contour.GetBoundRect(), plainBox = plain.GetBoundRect();
    EXPECT_TRUE(box.x == plainBox.x && box.y == plainBox.y && box.height == plainBox.height);
    EXPECT_EQ(contour.GetLength(), plain.GetLength());
    const DPOINT2 p = random.Coin() ? random.Point() : DPOINT2{-std::pow(10, random.Uniform(-7, -4)), 0};
    DPOINT2 nearest, plainNearest;
    EXPECT_EQ(GetMinDistance(&contour, p, nearest), GetMinDistance(&plain, p, plainNearest));
    EXPECT_EQ(nearest.x, plainNearest.x);
    POLYPOS pos, plainPos;
    const double offset = random.Uniform(-1000, 1000);
    EXPECT_EQ(GetPosByOffset(&contour, {0, 0.5}, offset, pos),
              GetPosByOffset(&plain, {0, 0.5}, offset, plainPos));
    EXPECT_EQ(PolyPosToDouble(pos), PolyPosToDouble(plainPos));
    ASSERT_TRUE(CoorToPos(&contour, p, pos, 1e4) && CoorToPos(&plain, p, plainPos, 1e4));
    EXPECT_EQ(PolyPosToDouble(pos), PolyPosToDouble(plainPos));
}

TEST(ContourIndex, AnswersAsAllSegmentsDo) {
    for (Random random; random.Rounds(300);) {
        std::unique_ptr<CCadMultiSegments> contour = RandomPolyline(random, 60);
        if (random.Coin()) contour = RandomPolylineEx(random, 60);
        ExpectSameAnswers(*contour, random);
    }
}

// Seen from near the centre of a polygon of many sides the distances change by less than 1e-9 from
// one to the next: which one is taken depends on all that were met before.
TEST(ContourIndex, SlowlyChangingDistances) {
    for (Random random; random.Rounds(20);) {
        CCadPolyline polygon;
        for (int i = 0, count = random.Int(100, 200'000); i <= count; ++i) {
            const DPOINT2 p = math::Rotated({1, 0}, math::kTwoPi * i / count);
            i == 0 ? polygon.SetStartPoint(p) : polygon.AddLine(p);
        }
        ExpectSameAnswers(polygon, random);
    }
}

TEST(ContourIndex, HostileNumbers) {
    Random random;
    for (const double hostile : {kNaN, kInf, -kInf, 1e300, 1e9}) {
        CCadPolyline contour;
        for (double i = 0; i < 100; ++i)
            contour.AddArc({i == 50 ? hostile : i, std::fmod(i, 7)}, i == 70 ? hostile : 0);
        const Plain plain(contour);
        ASSERT_TRUE((contour.GetIndex(), contour.GetIndex()));
        for (int k = 0; k < 50; ++k) {
            const DPOINT2 p = random.Point();
            POLYPOS pos{-1, 0}, plainPos{-1, 0};
            EXPECT_EQ(CoorToPos(&contour, p, pos, 1e4), CoorToPos(&plain, p, plainPos, 1e4));
            EXPECT_TRUE(IsAt(pos, plainPos)) << hostile;
        }
    }
}

TEST(ContourIndex, EveryChangeDropsIt) {
    gp_Trsf2d mirror;
    mirror.SetMirror(gp_Ax2d({1, 2}, {3, 1}));
    const auto change = [&mirror](auto& contour, int way) {
        if (way == 0) contour.SetStartPoint({500, 500});
        if (way == 1) contour.AddLine({-500, 70});
        if (way == 2) contour.AddArc({-500, 80}, 0.5);
        if (way == 3) contour.ReverseDir(false);
        if (way == 4) contour.ApplyTransform(mirror);
        if (way == 5) contour.ApplyTransform2D(mirror);
    };
    Random random;
    const auto polyline = RandomPolyline(random, 40);
    const auto extended = RandomPolylineEx(random, 40);
    for (int way = 0; way < 6; ++way) {
        change(*polyline, way);
        ExpectSameAnswers(*polyline, random);
        change(*extended, way);
        ExpectSameAnswers(*extended, random);
    }
    extended->AddBezier({1, 2}, {500, 600}, {-700, 8});
    ExpectSameAnswers(*extended, random);
    const std::unique_ptr<CCadObject> copy(extended->Clone(true));
    ExpectSameAnswers(*copy, random);
    const CCadEllipse ellipse({0, 0}, 2, 1, 0);
    EXPECT_TRUE(ellipse.GetPolyline() && ellipse.GetPolyline() == ellipse.GetPolyline());
}

} // namespace
