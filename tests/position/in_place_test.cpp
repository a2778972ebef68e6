#include "support/support.h"

using namespace qev;
using namespace test;

// Every function whose output may be one of its inputs answers as if it were another variable.
TEST(InPlace, OfPositions) {
    for (Random random; random.Rounds(300);) {
        const auto contour = RandomPolyline(random, 8), other = RandomPolyline(random, 8);
        const int count = contour->GetSegmentCount();
        const POLYPOS pos = random.Pos(count);
        const double offset = random.Uniform(-1000, 1000);
        POLYPOS moved = pos, inPlace = pos, mapped = pos, mappedInPlace = pos;
        EXPECT_EQ(GetPosByOffset(contour.get(), inPlace, offset, inPlace),
                  GetPosByOffset(contour.get(), pos, offset, moved));
        EXPECT_TRUE(IsAt(inPlace, moved, 0));
        GetMapPos(contour.get(), other.get(), {}, pos, mapped);
        GetMapPos(contour.get(), other.get(), {}, mappedInPlace, mappedInPlace);
        EXPECT_TRUE(IsAt(mappedInPlace, mapped, 0));
    }
}

TEST(InPlace, OfArcsAndDirections) {
    for (Random random; random.Rounds(300);) {
        const DPOINT2 start = random.Point(), end = random.Point();
        const double bulge = random.Uniform(0.01, 2);
        DPOINT2 s = start, e = end, centre, back, forth;
        double radius = 0, from = 0, to = 0, b = bulge;
        ASSERT_TRUE(CalcArcParam(start, end, bulge, centre, radius, from, to));
        CalcArcParam(s, e, bulge, s, e.x, from, e.y);
        EXPECT_POINT_NEAR(s, centre, 0);
        EXPECT_POINT_NEAR(e, (DPOINT2{radius, to}), 0);
        s = start;
        RetrieveArcInf(s, end, b, &s, nullptr, nullptr, &b);
        EXPECT_POINT_NEAR((DPOINT2{s.x, b}), (DPOINT2{centre.x, radius}), 0);
        const SEGMENT before(start, end, bulge), after(end, random.Point(), -bulge);
        SEGMENT first = before, second = after;
        GetVector(before, after, back, forth);
        GetVector(first, second, second.ptStart, first.ptStart);
        EXPECT_POINT_NEAR(second.ptStart, back, 0);
        EXPECT_POINT_NEAR(first.ptStart, forth, 0);
    }
}
