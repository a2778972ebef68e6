// Contours of many levels of boxes; the fuzz program of contours asks smaller ones after every change.
#include "../../data/contour_index.h"
#include "support/support.h"
#include "support/unindexed.h"

namespace {

using namespace qev;
using namespace test;

void ExpectSameAnswers(CCadMultiSegments& contour, Random& random) {
    (void)IndexOf(contour);
    ASSERT_TRUE(IndexOf(contour)) << "it is kept from the second question on";
    const DPOINT2 p =
        random.Coin() ? random.Point() : random.origin - DPOINT2{std::pow(10, random.Uniform(-7, -4)), 0};
    const double offset = random.Uniform(-1000, 1000);
    const POLYPOS on = random.Pos(contour.GetSegmentCount());
    Unindexed plain(contour);
    EXPECT_EQ(Answers(contour, {p, on, offset}), Answers(plain, {p, on, offset}));
    EXPECT_TRUE(ContourIndex::BoxKeptBy(contour)) << "and its box";
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

// Seen from near the centre of a polygon of many sides, or of a stretch of one, the distances change by less
// than 1e-9 from one to the next: which one is taken depends on all that were met before. Far out many are
// equal.
TEST(ContourIndex, SlowlyChangingDistances) {
    for (Random random; random.Rounds(20);) {
        CCadPolyline polygon;
        random.origin.x = random.Coin() ? 0 : 1e9;
        const double turn = random.Coin() ? math::kTwoPi : random.Uniform(1e-3, 1e-1);
        for (int i = 0, count = random.Int(100, 30'000); i <= count; ++i) {
            const DPOINT2 p = random.origin + math::Rotated({-1, 0}, turn * i / count);
            i == 0 ? polygon.SetStartPoint(p) : polygon.AddLine(p);
        }
        ExpectSameAnswers(polygon, random);
    }
}

// The zeros that interpolation leaves, with an index and without one.
TEST(ContourIndex, SignsOfZeros) {
    const auto contour = Polyline("-0 -0 L -6 -60 L 6 -60 L -0 -2");
    for (int question = 0; question < 2; ++question) {
        const char* const how = IndexOf(*contour) ? "with the index" : "without";
        DPOINT2 end, nearest;
        PosToCoor(contour.get(), 2, 1, end);
        EXPECT_FALSE(std::signbit(end.x)) << how;
        GetMinDistance(contour.get(), {0, 0}, nearest);
        EXPECT_TRUE(std::signbit(nearest.x)) << how;
    }
}

} // namespace
