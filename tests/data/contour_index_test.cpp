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
std::vector<double> Answers(const CCadMultiSegments& contour, const DPOINT2& p, const POLYPOS& on,
                            double offset) {
    const CadRect box = contour.GetBoundRect();
    DPOINT2 nearest, point;
    POLYPOS pos, end;
    double upTo = 0, between = 0, before = 0;
    const double distance = GetMinDistance(&contour, p, nearest);
    EXPECT_TRUE(CoorToPos(&contour, p, pos, 1e4));
    const double laps = GetPosByOffset(&contour, on, offset, end);
    GetLengthStartToPos(&contour, on, upTo);
    GetLineLength_Dot2Dot2(&contour, on, pos, between);
    const double rate = upTo / contour.GetLength();
    const double found = FindSegmentIndexByRate(&contour, rate, 0, 0, before);
    EXPECT_TRUE(PosToCoor(&contour, on.nSegIndex, on.dRatio, point));
    const double along = CPosCalculator::GetPtInMultiRatio(point, const_cast<CCadMultiSegments*>(&contour));
    return {contour.GetLength(),
            contour.IsClose() ? 1.0 : 0.0,
            box.x,
            box.y,
            box.width,
            box.height,
            distance,
            nearest.x,
            nearest.y,
            PolyPosToDouble(pos),
            laps,
            PolyPosToDouble(end),
            upTo,
            between,
            found,
            before,
            along};
}

void ExpectSameAnswers(const CCadMultiSegments& contour, Random& random) {
    (void)IndexOf(contour);
    ASSERT_TRUE(IndexOf(contour)) << "it is kept from the second question on";
    const DPOINT2 p = random.Coin() ? random.Point() : DPOINT2{-std::pow(10, random.Uniform(-7, -4)), 0};
    const double offset = random.Uniform(-1000, 1000);
    const POLYPOS on = random.Pos(contour.GetSegmentCount());
    EXPECT_EQ(Answers(contour, p, on, offset), Answers(Plain(contour), p, on, offset));
}

TEST(ContourIndex, AnswersAsAllSegmentsDo) {
    for (Random random; random.Rounds(300);) {
        const int size = random.Coin() ? 60 : 600;
        std::unique_ptr<CCadMultiSegments> contour = RandomPolyline(random, size);
        if (size == 60 && random.Coin()) contour = RandomPolylineEx(random, size);
        ExpectSameAnswers(*contour, random);
    }
}

// Arcs of all turns, from flat ones to nearly whole circles, as bumps of a smooth contour and of a jagged
// one.
TEST(ContourIndex, ArcsOfAllTurns) {
    for (Random random; random.Rounds(200);) {
        CCadPolyline contour;
        const int count = random.Coin() ? random.Int(1, 40) : random.Int(40, 2'000);
        const double roughness = std::pow(10, random.Uniform(-6, 0)),
                     turn = std::pow(10, random.Uniform(-8, 2));
        for (int i = 0; i <= count; ++i) {
            const double radius = 100 * (1 + random.Uniform(-0.1, 0.1) * roughness);
            const DPOINT2 p = math::Rotated({radius, 0}, math::kTwoPi * i / count);
            i == 0 ? contour.SetStartPoint(p) : contour.AddArc(p, random.Uniform(-turn, turn));
        }
        ExpectSameAnswers(contour, random);
    }
}

// Seen from near the centre of a polygon of many sides the distances change by less than 1e-9 from
// one to the next: which one is taken depends on all that were met before.
TEST(ContourIndex, SlowlyChangingDistances) {
    for (Random random; random.Rounds(20);) {
        CCadPolyline polygon;
        for (int i = 0, count = random.Int(100, 30'000); i <= count; ++i) {
            const DPOINT2 p = math::Rotated({1, 0}, math::kTwoPi * i / count);
            i == 0 ? polygon.SetStartPoint(p) : polygon.AddLine(p);
        }
        ExpectSameAnswers(polygon, random);
    }
}

// Lengths by which no segment can be guessed: of all magnitudes, and none at all.
TEST(ContourIndex, UnevenLengths) {
    Random random;
    for (int k = 0; k < 20; ++k) {
        CCadPolyline contour(false);
        double x = 0;
        for (int i = 0; i < 200; ++i)
            contour.AddLine({x += random.Coin() ? 0 : std::pow(10, random.Uniform(-7, 3)), 0});
        for (int j = 0; j < 20; ++j) ExpectSameAnswers(contour, random);
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
        expectDropped((contour.AddLine(contour.GetStartPoint()), contour), "AddLine to the start");
    };
    changeEveryWay(*RandomPolyline(random, 40));
    const auto extended = RandomPolylineEx(random, 40);
    changeEveryWay(*extended);
    expectDropped((extended->AddBezier({1, 2}, {500, 600}, {-700, 8}), *extended), "AddBezier");
}

} // namespace
