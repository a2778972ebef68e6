#include "support/support.h"

using namespace qev;
using namespace test;

using Cut = std::unique_ptr<CCadMultiSegments>;

const auto RandomPos = [](Random& random, const CCadObject& contour) {
    POLYPOS pos{random.Int(0, contour.GetSegmentCount() - 1), std::max(0.0, random.Uniform(-0.3, 1))};
    NormalizePos(&contour, pos);
    return pos;
};

// The cut is as long as the difference of the positions, runs between their points, and lies on the contour.
TEST(SubContour, CutsTheStretchBetweenTwoPositions) {
    Random random;
    int cuts = 0;
    for (int i = 0; i < 500; ++i) {
        const auto contour = RandomPolyline(random, 8);
        PosRange range{RandomPos(random, *contour), RandomPos(random, *contour)};
        if (!contour->IsClose() && PolyPosToDouble(range.end) < PolyPosToDouble(range.start))
            std::swap(range.start, range.end);
        const Cut cut(GetMultiSementsByRange(contour.get(), range));
        ASSERT_EQ(cut == nullptr, IsInvalidRange(contour.get(), range));
        if (!cut) continue;
        ++cuts;
        double expected = LengthTo(*contour, range.end) - LengthTo(*contour, range.start);
        if (PolyPosToDouble(range.end) < PolyPosToDouble(range.start)) expected += contour->GetLength();
        EXPECT_NEAR(cut->GetLength(), expected, 1e-8 * (1 + contour->GetLength()));
        const SEGMENT first = contour->GetSegment(range.start.nSegIndex),
                      last = contour->GetSegment(range.end.nSegIndex);
        EXPECT_POINT_NEAR(cut->GetStartPoint(), first.GetPoint(range.start.dRatio), 1e-10);
        EXPECT_POINT_NEAR(cut->GetEndPoint(), last.GetPoint(range.end.dRatio), 1e-10);
        for (int k = 0; k < 10; ++k) {
            DPOINT2 nearest;
            EXPECT_LE(GetMinDistance(contour.get(), Along(*cut)(random.Uniform(0, 1)), nearest), 1e-6);
        }
    }
    EXPECT_GT(cuts, 400);
}

TEST(SubContour, BezierPiecesAreTakenWholeOrNotAtAll) {
    const auto contour = PolylineEx("0 0 L 10 0 A 20 0 1 B 22 5 28 5 30 0 L 40 0");
    const Cut whole(GetPolylineByRange(contour.get(), {{0, 0.5}, {3, 0.5}}));
    ASSERT_EQ(whole->GetType(), kCadPolylineEx);
    const int types[] = {1, 2, 3, 1};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(whole->GetSegment(i).nType, types[i]);
    EXPECT_POINT_NEAR(whole->GetSegment(2).ptCtrl2, (DPOINT2{28, 5}), 0);
    const Cut partial(GetMultiSementsByRange(contour.get(), {{2, 0.5}, {3, 0.5}}));
    EXPECT_EQ(partial->GetType(), kCadPolylineEx);
    ASSERT_EQ(partial->GetSegmentCount(), 1);
    EXPECT_POINT_NEAR(partial->GetSegment(0).ptEnd, (DPOINT2{35, 0}), 1e-12);
    const Cut before(GetMultiSementsByRange(contour.get(), {{0, 0.5}, {1, 0.5}}));
    EXPECT_EQ(before->GetType(), kCadPolyline) << "no Bezier piece was met";
}

// The lengths that the modes 0 to 4 leave on a square of side 10. None leaves nothing or more than the
// contour, and on the open one the walk would have to wrap.
TEST(SubContour, RoundingMovesEndsToJoints) {
    const auto square = Polyline("0 0 L 10 0 L 10 10 L 0 10 L 0 0");
    for (const auto& [row, start, end, lengths] : Rows<POLYPOS, POLYPOS, std::vector<double>>(
             "0+0.3 2+0.6 23,30,30,10,23; 0+0.6 2+0.4 18,10,30,10,18; 0+0 2+0 20,20,20,20,20;"
             "0+0.2 0+0.4 2,2,10,2,2; 3+0.6 1+0.6 20,20,30,10,20; 0+0.6 0+0.4 38,30,38,30,38"))
        for (int mode = 0; mode < 5; ++mode) {
            const Cut cut(GetMultiSementsByRangeRound(square.get(), {start, end}, mode));
            ASSERT_TRUE(cut);
            EXPECT_NEAR(cut->GetLength(), lengths[mode], 1e-12) << row << " mode " << mode;
        }
    const auto open = Polyline("0 0 L 10 0 L 10 10");
    const Cut outward(GetMultiSementsByRangeRound(open.get(), {{0, 0.5}, {1, 0.5}}, 2));
    EXPECT_EQ(outward->GetLength(), 20);
    EXPECT_EQ(GetMultiSementsByRangeRound(nullptr, {{0, 0}, {1, 0}}, 1), nullptr);
    EXPECT_EQ(GetMultiSementsByRange(open.get(), {{0, 0}, {5, 0}}), nullptr);
}
