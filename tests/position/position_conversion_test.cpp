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

TEST(PositionConversion, PointsOfEveryKind) {
    const char *const kLine = "line 0 0 10 0", *const kLowerHalf = "arc 0 0 2 0 3.141592653589793 cw",
                      *const kCircle = "circle 0 0 2 cw", *const kLineAndArc = "0 0 L 10 0 A 10 10 1";
    for (const auto& [name, object, index, ratio, expected] :
         Table<const char*, const char*, int, double, DPOINT2>{
             {"a line does not look at the index", kLine, 5, 0.25, {2.5, 0}},
             {"behind a line: its end", kLine, INT_MIN, 1.7, {10, 0}},
             {"before a line: its start", kLine, 0, -0.2, {0, 0}},
             {"far behind a line", kLine, 0, kInf, {10, 0}},
             {"a clockwise arc", kLowerHalf, 0, 0.5, {0, -2}},
             {"a clockwise circle", kCircle, 0, 0.25, {0, -2}},
             {"a segment", kLineAndArc, 1, 0.5, {15, 5}}}) {
        DPOINT2 point;
        EXPECT_TRUE(PosToCoor(Object(object).get(), index, ratio, point)) << name;
        EXPECT_POINT_NEAR(point, expected, 1e-12) << name;
    }
    DPOINT2 point{-7, -7};
    EXPECT_FALSE(PosToCoor(Object(kLine).get(), 0, kNaN, point));
    for (const char* text : {kLowerHalf, kCircle, "dot 0 0", "null"})
        EXPECT_FALSE(PosToCoor(Object(text).get(), 1, 0, point)) << text;
    for (const int index : {-1, 2})
        EXPECT_FALSE(PosToCoor(Object(kLineAndArc).get(), index, 0, point)) << index;
    EXPECT_POINT_NEAR(point, (DPOINT2{-7, -7}), 0) << "something was written";
}

// The positions of a point are written as segment index + ratio.
TEST(PositionConversion, EveryPositionOfAPoint) {
    for (const auto& [name, contour, p, expected] :
         Table<const char*, const char*, DPOINT2, std::vector<double>>{
             {"on the first segment alone", "0 0 L 10 0 L 10 10 L 5 -5", {5, 0}, {0.5}},
             {"a joint once", "0 0 L 10 0 L 10 10", {10, 0}, {1}},
             {"the end of an open contour keeps the ratio 1", "0 0 L 10 0 L 10 10", {10, 10}, {2}},
             {"the end of a closed contour is its start", kTriangle, {0, 0}, {0}},
             {"on three segments", "0 0 L 10 0 L 0 0 L 10 0", {5, 0}, {0.5, 1.5, 2.5}},
             {"on an arc", "0 0 A 10 0 1 L 0 0", {5, -5}, {0.5}},
             {"nowhere", "0 0 L 10 0", {5, 1}, {}}}) {
        SCOPED_TRACE(name);
        std::vector<POLYPOS> positions;
        EXPECT_EQ(CoorToPos(Polyline(contour).get(), p, positions), !expected.empty());
        ASSERT_EQ(positions.size(), expected.size());
        for (std::size_t i = 0; i < positions.size(); ++i)
            EXPECT_NEAR(PolyPosToDouble(positions[i]), expected[i], 1e-12);
    }
}

TEST(PositionConversion, RatioOfAPointOnASegment) {
    const auto contour = Polyline("0 0 L 10 0 A 10 10 -1 L 10 10"); // the last has no length
    double ratio = -1;
    EXPECT_TRUE(CoorToRatio(contour.get(), {2.5, 5e-7}, 0, ratio));
    EXPECT_NEAR(ratio, 0.25, 1e-12);
    EXPECT_TRUE(CoorToRatio(contour.get(), {5, 5}, 1, ratio));
    EXPECT_NEAR(ratio, 0.5, 1e-12);
    EXPECT_TRUE(CoorToRatio(contour.get(), {10 + 5e-10, 10}, 1, ratio));
    EXPECT_EQ(ratio, 1) << "just behind the end of an arc";
    EXPECT_TRUE(CoorToRatio(contour.get(), {10 + 5e-10, 0}, 1, ratio));
    EXPECT_EQ(ratio, 0) << "just before the start of an arc";
    for (const int index : {0, 2, 3, -1, INT_MIN, INT_MAX})
        EXPECT_FALSE(CoorToRatio(contour.get(), {10, 10}, index, ratio)) << index;
    EXPECT_FALSE(CoorToRatio(PolylineEx("0 0 L 10 0").get(), {5, 0}, 0, ratio)) << "deliberately left out";
}

// The length variable holds 5 mm before each call.
TEST(PositionConversion, LengthsFromTheStart) {
    const auto contour = Polyline("0 0 L 10 0 A 10 10 -1 L 10 10");
    const CCadDot dot({0, 0});
    const CCadLine line({0, 0}, {3, 4});
    const auto extended = PolylineEx("0 0 L 10 0");
    for (const auto& [name, object, pos, expected] : Table<const char*, const CCadObject*, POLYPOS, double>{
             {"a contour's is added", contour.get(), {1, 0.5}, 15 + 2.5 * kPi},
             {"all of a contour", contour.get(), {INT_MAX, 0.5}, 15 + 5 * kPi},
             {"none of a contour", contour.get(), {INT_MIN, 0.5}, 5},
             {"an extended polyline's is left", extended.get(), {0, 0.5}, 5},
             {"a line does not look at the index", &line, {7, 0.5}, 2.5},
             {"a dot has none", &dot, {0, 0}, 0}}) {
        double length = 5;
        EXPECT_TRUE(GetLengthStartToPos(object, pos, length)) << name;
        EXPECT_NEAR(length, expected, 1e-12) << name;
    }
    double length = 5;
    EXPECT_FALSE(GetLengthStartToPos(nullptr, {0, 0}, length));
}

TEST(PositionConversion, PicksAnObjectAndItsPosition) {
    CCadGroup group;
    const CCadObject* object = nullptr;
    POLYPOS pos;
    EXPECT_FALSE(FindCadAndPosByPoint(&group, {0, 0}, object, pos, 1)) << "an empty group";
    EXPECT_FALSE(FindCadAndPosByPoint(nullptr, {0, 0}, object, pos, 1));
    auto* const line = new CCadLine({0, 0}, {10, 0});
    group.PushBack(line);
    EXPECT_TRUE(FindCadAndPosByPoint(&group, {10, 0}, object, pos, 1));
    EXPECT_EQ(object, line);
    EXPECT_TRUE(IsAt(pos, {0, 1}));
    EXPECT_FALSE(FindCadAndPosByPoint(&group, {kNaN, 0}, object, pos, 1));
}
