#include <qev/qev.h>

#include "host/actions/pick.h"
#include "host/fixture.h"

using namespace test;
using math::DPOINT2;

namespace {

// One object of every kind, those without length too; each by itself, as its words.
const std::vector<std::string> kObjects{
    "0 LINE 10 -90 20 3 11 70 21 40",
    "0 ARC 10 0 20 0 40 50 50 100 51 20",
    "0 CIRCLE 10 10 20 -20 40 60 230 -1",
    "0 ELLIPSE 10 0 20 0 11 50 21 30 40 0.4",
    "0 ELLIPSE 10 9 20 0 11 0 21 30 40 0.7 41 1 42 5",
    "0 LWPOLYLINE 70 1 10 0 20 0 10 50 20 0 42 0.7 10 50 20 50 10 0 20 50 42 -2 10 -30 20 20",
    "0 SPLINE 71 3 40 0 40 0 40 0 40 0 40 1 40 2 40 2 40 2 40 2 10 -90 20 0 10 90 20 80 10 -90 20 81 10 90 "
    "20 -90 10 0 20 -91",
    "0 TEXT 10 0 20 0 40 30 1 Sp",
    "0 POINT 10 3 20 4",
};

// The least distance from a point to many points of an object.
double SampledDistance(const qev::CCadObject& object, const DPOINT2& p) {
    constexpr int kSamples = 400; // of a segment
    double least = math::D2GetDistance(p, object.GetStartPoint());
    for (int i = 0; i < std::max(1, object.GetSegmentCount()); ++i)
        for (int k = 0; k <= kSamples; ++k)
            if (DPOINT2 at; qev::PosToCoor(&object, i, k / double{kSamples}, at))
                least = std::min(least, math::D2GetDistance(p, at));
    return least;
}

TEST(Pick, ThePositionIsThatOfThePointAndNoneIsNearer) {
    for (const std::string& entity : kObjects) {
        SCOPED_TRACE(entity);
        const DrawingOf read(DxfFile(entity));
        const auto reports = host::ReportOf(read.drawing);
        const qev::CCadObject& object = *read.objects.at(0);
        for (Random random; random.Rounds(40);) {
            const DPOINT2 p = random.Point(120);
            const host::Pick pick = host::PickAt(read.drawing, reports, p);
            EXPECT_EQ(pick.object, 0);
            EXPECT_NEAR(pick.distance, math::D2GetDistance(p, pick.point), 1e-12);
            EXPECT_EQ(pick.pos.has_value(),
                      object.GetType() != qev::kCadText && object.GetType() != qev::kCadDot);
            if (!pick.pos) continue;
            DPOINT2 at;
            ASSERT_TRUE(qev::PosToCoor(&object, pick.pos->nSegIndex, pick.pos->dRatio, at));
            EXPECT_POINT_NEAR(at, pick.point, 1e-9);
            EXPECT_LE(pick.distance, SampledDistance(object, p) + 1e-6);
            DPOINT2 exact;
            const bool isEllipse =
                object.GetType() == qev::kCadEllipse || object.GetType() == qev::kCadEllipseArc;
            EXPECT_NEAR(pick.distance, qev::GetMinDistance(&object, p, exact), isEllipse ? 0.01 : 1e-9);
        }
    }
}

} // namespace
