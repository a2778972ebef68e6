#include <chrono>

#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// What PosToCoor makes of an arc lies on it again, however straight the arc is.
TEST(PositionConversion, ArcsKnowTheirOwnPoints) {
    for (Random random; random.Rounds(2000);) {
        CCadPolyline contour;
        contour.SetStartPoint(random.Point());
        contour.AddArc(random.Point(1000), random.Bulge());
        const double ratio = random.Uniform(0, 0.999), beside = 5e-7 / contour.GetLength();
        DPOINT2 point;
        ASSERT_TRUE(PosToCoor(&contour, 0, ratio, point));
        double found = -1;
        EXPECT_TRUE(CoorToRatio(&contour, point, 0, found)) << contour.GetAt(0).bulge;
        EXPECT_NEAR(found, ratio, 1e-9);
        EXPECT_NEAR(CPosCalculator::GetPtInMultiRatio(point, &contour), ratio, 1e-9);
        std::vector<POLYPOS> all;
        EXPECT_TRUE(CoorToPos(&contour, point, all)) << contour.GetAt(0).bulge;
        const std::vector<int> map{0};
        int segment = 0;
        EXPECT_TRUE(MapPos(&contour, &contour, &map, 0, ratio, &segment, &(found = 0))) << "with a map";
        EXPECT_NEAR(found, ratio, 1e-9) << "with a map";
        const math::BulgeArc arc = contour.GetSegment(0).GetArc();
        const CCadLine before(arc.PointAt(-beside), {0, 0});
        EXPECT_TRUE(CoorToRatio(&contour, before.GetStartPoint(), 0, found));
        EXPECT_NEAR(found, 0, 1e-12) << "just before the start";
        EXPECT_TRUE(MapPos(&before, &contour, &map, 0, 0, &segment, &(found = 0)));
        EXPECT_NEAR(found, 0, 1e-12) << "just before the start, with a map";
        EXPECT_TRUE(CoorToRatio(&contour, arc.PointAt(1 + beside), 0, found));
        EXPECT_NEAR(found, 1, 1e-12) << "just behind the end";
    }
}

TEST(PositionConversion, NoPoint) {
    const char *const half = "arc 0 0 2 0 3 cw", *const path = "0 0 L 10 0 A 10 10 1";
    DPOINT2 point{-7, -7};
    for (const auto& [object, index, ratio] :
         Table<const char*, int, double>{{"line 0 0 10 0", 0, kNaN},
                                         {half, 1, 0},
                                         {"null", 0, 0},
                                         {"ellipse 0 0 nan 1 0", 0, 0.5}, // it is not converted
                                         {path, 2, 0}})
        EXPECT_FALSE(PosToCoor(Object(object).get(), index, ratio, point)) << object << " at " << index;
    EXPECT_POINT_NEAR(point, (DPOINT2{-7, -7}), 0) << "something was written";
}

// The positions of a point are written as segment index + ratio.
TEST(PositionConversion, EveryPositionOfAPoint) {
    for (const auto& [name, contour, p, expected] :
         Table<const char*, const char*, DPOINT2, std::vector<double>>{
             {"a joint once", "0 0 L 10 0 L 10 10", {10, 0}, {1}},
             {"the end of an open contour keeps the ratio 1", "0 0 L 10 0 L 10 10", {10, 10}, {2}},
             {"the end of a closed contour is its start", kTriangle, {0, 0}, {0}},
             {"on three segments", "0 0 L 10 0 L 0 0 L 10 0", {5, 0}, {0.5, 1.5, 2.5}},
             {"nowhere", "0 0 L 10 0", {5, 1}, {}}}) {
        std::vector<POLYPOS> positions;
        EXPECT_EQ(CoorToPos(Polyline(contour).get(), p, positions), !expected.empty()) << name;
        std::vector<double> numbers;
        for (const POLYPOS& pos : positions) numbers.push_back(PolyPosToDouble(pos));
        EXPECT_EQ(numbers, expected) << name;
    }
}

TEST(PositionConversion, RatioOfAPointOnASegment) {
    const auto contour = Polyline("0 0 L 10 0 A 10 10 -1 L 10 10"); // the last has no length
    double ratio = -1;
    EXPECT_TRUE(CoorToRatio(contour.get(), {2.5, 5e-7}, 0, ratio));
    EXPECT_NEAR(ratio, 0.25, 1e-12);
    for (const int index : {0, 2, INT_MIN, INT_MAX})
        EXPECT_FALSE(CoorToRatio(contour.get(), {10, 10}, index, ratio)) << index;
    EXPECT_FALSE(CoorToRatio(PolylineEx("0 0 L 10 0").get(), {5, 0}, 0, ratio)) << "deliberately left out";
}

// Seen from beside, the start is the place.
TEST(PositionConversion, OnWhatHasNoLength) {
    for (const char* text : {"line 1 1 1 1", "circle 1 1 0", "arc 1 1 0 0 1", "ellipse 1 1 0 0 0",
                             "ellipsearc 1 1 2 1 0 0 0", "1 1 L 1 1", "1 1 A 1 1 1 L 1 1"}) {
        const auto object = Object(text);
        POLYPOS pos{-7, 0};
        EXPECT_TRUE(CoorToPos(object.get(), object->GetStartPoint() + DPOINT2{1, 0}, pos, 9)) << text;
        EXPECT_TRUE(IsAt(pos, {0, 0})) << text;
    }
}

TEST(PositionConversion, OnBezierPiecesOfAnySizeInBoundedTime) {
    const auto start = std::chrono::steady_clock::now();
    for (const double size : {1e-162, 1e-159, 1e-154, 1e-3, 1e4}) {
        CCadPolylineEx contour;
        contour.AddBezier({size, 2 * size}, {-size, 2 * size}, {size, 0});
        POLYPOS pos;
        EXPECT_TRUE(CoorToPos(&contour, {0.3 * size, size}, pos, 1e4)) << size;
        EXPECT_FALSE(IsInvalidPos(&contour, pos)) << size;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(PositionConversion, LengthsFromTheStartAreAdded) {
    const auto contour = Polyline("0 0 L 10 0 A 10 10 -1 L 10 10");
    double length = 5;
    GetLengthStartToPos(contour.get(), {1, 0.5}, length);
    EXPECT_NEAR(length, 15 + 2.5 * kPi, 1e-12);
    GetLengthStartToPos(PolylineEx("0 0 L 10 0").get(), {0, 0.5}, length);
    EXPECT_NEAR(length, 15 + 2.5 * kPi, 1e-12) << "left out";
    GetLengthStartToPos(contour.get(), {INT_MAX, 0.5}, length);
    EXPECT_NEAR(length, 25 + 7.5 * kPi, 1e-12) << "all of it";
}

} // namespace
