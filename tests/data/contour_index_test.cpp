#include <gp_Trsf2d.hxx>

#include "../../data/contour_index.h"
#include "support/support.h"

namespace {

using namespace qev;
using namespace test;

// A host's kind with the segments of another contour: it keeps no index, so it is searched in full.
class Plain : public CCadMultiSegments {
public:
    explicit Plain(const CCadObject& contour) : CCadMultiSegments(false), m_contour(contour) {}
    cad_t GetType() const override { return m_contour.GetType(); }
    int GetSegmentCount() const override { return m_contour.GetSegmentCount(); }
    SEGMENT GetSegment(int index) const override { return m_contour.GetSegment(index); }

private:
    const CCadObject& m_contour;
};

// What an index has a part in.
std::vector<double> Answers(const CCadObject& contour, const DPOINT2& p, double offset) {
    const CadRect box = contour.GetBoundRect();
    DPOINT2 nearest;
    POLYPOS pos, end;
    const double distance = GetMinDistance(&contour, p, nearest);
    EXPECT_TRUE(CoorToPos(&contour, p, pos, 1e4));
    const double laps = GetPosByOffset(&contour, {0, 0.5}, offset, end);
    return {contour.GetLength(),
            box.x,
            box.y,
            box.width,
            box.height,
            distance,
            nearest.x,
            nearest.y,
            PolyPosToDouble(pos),
            laps,
            PolyPosToDouble(end)};
}

void ExpectSameAnswers(const CCadObject& contour, Random& random) {
    (void)IndexOf(contour);
    ASSERT_TRUE(IndexOf(contour)) << "it is kept from the second question on";
    const DPOINT2 p = random.Coin() ? random.Point() : DPOINT2{-std::pow(10, random.Uniform(-7, -4)), 0};
    const double offset = random.Uniform(-1000, 1000);
    EXPECT_EQ(Answers(contour, p, offset), Answers(Plain(contour), p, offset));
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
        SCOPED_TRACE(hostile);
        const auto contour = RandomPolyline(random, 60);
        contour->AddLine({hostile, 1});
        contour->AddArc({1, 1}, hostile);
        const Plain plain(*contour);
        for (int k = 0; k < 50; ++k) {
            const DPOINT2 p = random.Point();
            POLYPOS pos{-1, 0}, plainPos{-1, 0};
            EXPECT_EQ(CoorToPos(contour.get(), p, pos, 1e4), CoorToPos(&plain, p, plainPos, 1e4));
            EXPECT_TRUE(IsAt(pos, plainPos));
        }
    }
}

// After each of the ways to change it the contour answers as one that was never asked before.
TEST(ContourIndex, EveryChangeDropsIt) {
    gp_Trsf2d mirror;
    mirror.SetMirror(gp_Ax2d({1, 2}, {3, 1}));
    Random random;
    const auto expectDropped = [&](auto& contour, const char* change) {
        SCOPED_TRACE(change);
        ExpectSameAnswers(contour, random);
    };
    const auto changeEveryWay = [&](auto& contour) {
        expectDropped(contour, "none yet");
        expectDropped((contour.SetStartPoint({500, 500}), contour), "SetStartPoint");
        expectDropped((contour.AddLine({-500, 70}), contour), "AddLine");
        expectDropped((contour.AddArc({-500, 80}, 0.5), contour), "AddArc");
        expectDropped((contour.ReverseDir(false), contour), "ReverseDir");
        expectDropped((contour.ApplyTransform(mirror), contour), "ApplyTransform");
    };
    changeEveryWay(*RandomPolyline(random, 40));
    const auto extended = RandomPolylineEx(random, 40);
    changeEveryWay(*extended);
    expectDropped((extended->AddBezier({1, 2}, {500, 600}, {-700, 8}), *extended), "AddBezier");
}

} // namespace
