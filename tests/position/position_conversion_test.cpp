#include "support/support.h"

using namespace qev;
using namespace test;

// Position -> point -> position -> point comes back to the point, near the origin and 1e4 mm away.
TEST(PositionConversion, RoundTrips) {
    for (Random random; random.Rounds(3000);) {
        random.origin = random.Coin() ? DPOINT2{0, 0} : DPOINT2{1e4, -1e4};
        auto object = RandomSingle(random, -1);
        if (random.Int(0, 5) == 0) object = RandomPolyline(random, 8);
        DPOINT2 point, again;
        POLYPOS pos;
        const int index = random.Int(0, GetCadSegments(object.get()) - 1);
        ASSERT_TRUE(PosToCoor(object.get(), index, std::max(0.0, random.Uniform(-0.05, 1)), point));
        ASSERT_TRUE(CoorToPos(object.get(), point, pos)) << object->GetType();
        ASSERT_TRUE(PosToCoor(object.get(), pos.nSegIndex, pos.dRatio, again));
        const bool isEllipse = object->GetType() == kCadEllipse || object->GetType() == kCadEllipseArc;
        // near a crossing the other segment is nearer than the rule of Heron tells
        const bool isCrossing = pos.nSegIndex != index && pos.dRatio != 0;
        EXPECT_POINT_NEAR(again, point, isCrossing ? 1e-6 : isEllipse ? 2e-3 : 1e-9);
    }
}

// Index, ratio and the point, or none where the position is refused.
TEST(PositionConversion, PointsOfEveryKind) {
    const std::pair<const char*, const char*> tables[] = {
        {"line 0 0 10 0", "5 0.25 2.5,0; -1e99 1.7 10,0; 0 -0.2 0,0; 0 inf 10,0; 0 nan none"},
        {"arc 0 0 2 0 3.141592653589793 cw", "0 0.5 0,-2; 1 0.5 none"},
        {"circle 0 0 2 cw", "0 0.25 0,-2; 1 0.25 none"},
        {"0 0 L 10 0 A 10 10 1", "1 0.5 15,5; 2 0 none; -1 0 none"},
        {"dot 0 0", "0 0 none"},
        {"null", "0 0 none"}};
    for (const auto& [object, rows] : tables)
        for (const auto& [row, index, ratio, expected] : Rows<int, double, DPOINT2>(rows)) {
            SCOPED_TRACE(object + (":" + row));
            DPOINT2 point = math::NoPoint();
            EXPECT_EQ(PosToCoor(Object(object).get(), index, ratio, point), !math::IsNoPoint(expected));
            if (!math::IsNoPoint(expected)) EXPECT_POINT_NEAR(point, expected, 1e-12);
        }
}

// A point and its positions as index + ratio. The end of an open contour keeps the ratio 1.
TEST(PositionConversion, EveryPositionOfAPoint) {
    for (const auto& [row, contour, p, expected] : Rows<std::string, DPOINT2, std::vector<double>>(
             "'0 0 L 10 0 L 10 10 L 5 -5' 5,0 0.5; '0 0 L 10 0 L 10 10' 10,0 1; '0 0 L 10 0 L 10 10' 10,10 2;"
             "'0 0 L 10 0 L 10 10 L 0 0' 0,0 0; '0 0 L 10 0 L 0 0 L 10 0' 5,0 0.5,1.5,2.5;"
             "'0 0 A 10 0 1 L 0 0' 5,-5 0.5; '0 0 L 10 0' 5,1 none")) {
        std::vector<POLYPOS> positions;
        EXPECT_EQ(CoorToPos(Polyline(contour).get(), p, positions), !expected.empty());
        ASSERT_EQ(positions.size(), expected.size()) << row;
        for (std::size_t i = 0; i < positions.size(); ++i)
            EXPECT_NEAR(PolyPosToDouble(positions[i]), expected[i], 1e-12) << row;
    }
}

TEST(PositionConversion, RatiosAndLengths) {
    const auto contour = Polyline("0 0 L 10 0 A 10 10 -1 L 10 10");
    double ratio = -1, length = 5;
    for (const auto& [row, p, index, expected] :
         Rows<DPOINT2, int, double>("2.5,5e-7 0 0.25; 5,5 1 0.5; 10,10 1 1"))
        EXPECT_TRUE(CoorToRatio(contour.get(), p, index, ratio) && std::abs(ratio - expected) < 1e-12) << row;
    for (const int index : {0, 2, 3, -1, INT_MIN, INT_MAX})
        EXPECT_FALSE(CoorToRatio(contour.get(), {10, 10}, index, ratio));
    EXPECT_FALSE(CoorToRatio(PolylineEx("0 0 L 10 0").get(), {5, 0}, 0, ratio)) << "deliberately left out";
    for (const double sum : {15 + 2.5 * kPi, 25 + 5 * kPi}) { // added to what is there
        EXPECT_TRUE(GetLengthStartToPos(contour.get(), {1, 0.5}, length));
        EXPECT_NEAR(length, sum, 1e-12);
    }
    EXPECT_TRUE(GetLengthStartToPos(PolylineEx("0 0 L 10 0").get(), {0, 0.5}, ratio) && ratio == 1);
    EXPECT_TRUE(GetLengthStartToPos(contour.get(), {INT_MAX, 0.5}, length = 0) && length > 25);
    EXPECT_TRUE(GetLengthStartToPos(Object("dot 0 0").get(), {0, 0}, length) && length == 0);
    EXPECT_TRUE(GetLengthStartToPos(Object("line 0 0 3 4").get(), {7, 0.5}, length) && length == 2.5);
    EXPECT_FALSE(GetLengthStartToPos(nullptr, {0, 0}, length));
}

TEST(PositionConversion, PickingAndTheStartPoint) {
    CCadGroup group;
    const CCadObject* object = nullptr;
    POLYPOS pos;
    EXPECT_FALSE(FindCadAndPosByPoint(&group, {0, 0}, object, pos, 1)
                 || FindCadAndPosByPoint(nullptr, {0, 0}, object, pos, 1));
    group.PushBack(new CCadLine({0, 0}, {10, 0}));
    EXPECT_TRUE(FindCadAndPosByPoint(&group, {10, 0}, object, pos, 1) && IsAt(pos, {0, 1}));
    EXPECT_FALSE(FindCadAndPosByPoint(&group, {kNaN, 0}, object, pos, 1));
    for (const auto& [row, start, end, over] : Rows<POLYPOS, POLYPOS, bool>(
             "3+0.5 1+0.2 1; 1+0.2 3+0.5 0; 2+0.5 2+0.5 0; 2+0.5 2+0.4 1; 2+0.4 2+0.5 0; 3+-1 1+0 0"))
        EXPECT_EQ(IsOverStartPoint(start, end), over) << row;
}
