#include <climits>
#include <cmath>
#include <memory>
#include <string>

#include <qev/qev.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;
using math::DPOINT2;
using math::kPi;
using math::POLYPOS;

// A random object of every kind with positions, away from the origin.
std::unique_ptr<CCadObject> RandomObject(test::Random& random, const DPOINT2& shift) {
    const DPOINT2 centre = random.Point() + shift;
    const double a = random.Uniform(1, 100), angle = random.Uniform(-3, 3);
    switch (random.Int(0, 5)) {
    case 0:
        return std::make_unique<CCadLine>(centre, random.Point() + shift);
    case 1:
        return std::make_unique<CCadCircle>(centre, a, random.Coin());
    case 2:
        return std::make_unique<CCadArc>(centre, a, angle, random.Uniform(0.1, 6), random.Coin());
    case 3:
        return std::make_unique<CCadEllipse>(centre, a, a * random.Uniform(0.1, 1), angle, random.Coin());
    case 4:
        return std::make_unique<CCadEllipseArc>(centre, a, a * random.Uniform(0.1, 1), angle, angle,
                                                random.Uniform(0.5, 6), random.Coin());
    default: {
        auto moved = std::make_unique<CCadPolyline>();
        const auto contour = test::RandomPolyline(random, 8);
        moved->SetStartPoint(contour->GetStartPoint() + shift);
        for (const auto& node : contour->GetNodes())
            moved->AddArc(DPOINT2{node.x, node.y} + shift, node.bulge);
        return moved;
    }
    }
}

// Position -> point -> position -> point comes back to the point, near the origin and 1e4 mm away.
TEST(PositionConversion, RoundTrips) {
    test::Random random;
    double worst = 0, worstOnEllipses = 0;
    for (int i = 0; i < 3000; ++i) {
        const double far = i % 2 == 0 ? 0 : 1e4;
        const auto object = RandomObject(random, {far, -far});
        const int count = GetCadSegments(object.get());
        DPOINT2 point, again;
        POLYPOS pos;
        const int index = random.Int(0, count - 1);
        ASSERT_TRUE(PosToCoor(object.get(), index, random.Uniform(0, 1), point));
        ASSERT_TRUE(CoorToPos(object.get(), point, pos)) << object->GetType();
        ASSERT_TRUE(PosToCoor(object.get(), pos.nSegIndex, pos.dRatio, again));
        const bool isEllipse = object->GetType() == kCadEllipse || object->GetType() == kCadEllipseArc;
        const bool isCrossing =
            pos.nSegIndex != index && pos.dRatio != 0; // nearer than the rule of Heron tells
        EXPECT_LE(isCrossing ? math::D2GetDistance(point, again) : 0, 1e-6);
        if (isCrossing) continue;
        double& record = isEllipse ? worstOnEllipses : worst;
        record = std::max(record, math::D2GetDistance(point, again));
    }
    EXPECT_LE(worst, 1e-9);
    EXPECT_LE(worstOnEllipses, 2e-3);
    RecordProperty("worst",
                   std::to_string(worst * 1e12) + "e-12, ellipses " + std::to_string(worstOnEllipses));
}

// A picked point of an ellipse and the point of the position that the pick answers.
TEST(PositionConversion, PicksOnEllipses) {
    test::Random random;
    for (int i = 0; i < 300; ++i) {
        const CCadEllipse ellipse({1e4, 3}, 50, random.Uniform(5, 50), random.Uniform(-3, 3), random.Coin());
        const double parameter = i == 0 ? 0 : random.Uniform(0, 2 * kPi);
        const DPOINT2 point = ellipse.GetPoint_XY(parameter);
        POLYPOS pos;
        DPOINT2 again;
        ASSERT_TRUE(CoorToPos(&ellipse, point, pos) && PosToCoor(&ellipse, pos.nSegIndex, pos.dRatio, again));
        EXPECT_POINT_NEAR(again, point, 2e-3);
    }
}

TEST(PositionConversion, PointsOfEveryKind) {
    const CCadLine line({0, 0}, {10, 0});
    const CCadArc arc({0, 0}, 2, 0, kPi, false);
    const CCadCircle left({0, 0}, 2), right({0, 0}, 2, false);
    const CCadDot dot({0, 0});
    const auto polyline = test::Polyline("0 0 L 10 0 A 10 10 1");
    const struct {
        const CCadObject* object;
        int index;
        double ratio;
        DPOINT2 point; // no point: refused
    } cases[] = {
        {&line, 5, 0.25, {2.5, 0}},
        {&line, INT_MIN, 1.7, {10, 0}},
        {&line, 0, -0.2, {0, 0}},
        {&line, 0, test::kInf, {10, 0}},
        {&line, 0, test::kNaN, math::NoPoint()},
        {&arc, 0, 0.5, {0, -2}},
        {&arc, 1, 0.5, math::NoPoint()},
        {&left, 0, 0.25, {0, 2}},
        {&right, 0, 0.25, {0, -2}},
        {&right, 1, 0.25, math::NoPoint()},
        {polyline.get(), 1, 0.5, {15, 5}},
        {polyline.get(), 2, 0, math::NoPoint()},
        {polyline.get(), -1, 0, math::NoPoint()},
        {&dot, 0, 0, math::NoPoint()},
        {nullptr, 0, 0, math::NoPoint()},
    };
    for (const auto& c : cases) {
        DPOINT2 point = math::NoPoint();
        EXPECT_EQ(PosToCoor(c.object, c.index, c.ratio, point), !math::IsNoPoint(c.point))
            << c.index << " " << c.ratio;
        if (!math::IsNoPoint(c.point)) EXPECT_POINT_NEAR(point, c.point, 1e-12);
    }
}

TEST(PositionConversion, EveryPositionOfAPoint) {
    const struct {
        const char* contour;
        DPOINT2 p;
        std::vector<double> positions; // index + ratio
    } cases[] = {
        {"0 0 L 10 0 L 10 10 L 5 -5", {5, 0}, {0.5}}, {"0 0 L 10 0 L 10 10", {10, 0}, {1}},
        {"0 0 L 10 0 L 10 10", {10, 10}, {2}}, // the end of an open one stays: index 1, ratio 1
        {"0 0 L 10 0 L 10 10 L 0 0", {0, 0}, {0}},    {"0 0 L 10 0 L 0 0 L 10 0", {5, 0}, {0.5, 1.5, 2.5}},
        {"0 0 A 10 0 1 L 0 0", {5, -5}, {0.5}},       {"0 0 L 10 0", {5, 1}, {}},
    };
    for (const auto& c : cases) {
        std::vector<POLYPOS> positions;
        EXPECT_EQ(CoorToPos(test::Polyline(c.contour).get(), c.p, positions), !c.positions.empty());
        ASSERT_EQ(positions.size(), c.positions.size()) << c.contour;
        for (std::size_t i = 0; i < positions.size(); ++i)
            EXPECT_NEAR(PolyPosToDouble(positions[i]), c.positions[i], 1e-12) << c.contour;
    }
}

TEST(PositionConversion, RatiosAndLengths) {
    const auto contour = test::Polyline("0 0 L 10 0 A 10 10 -1 L 10 10");
    double ratio = -1, length = 5;
    EXPECT_TRUE(CoorToRatio(contour.get(), {2.5, 5e-7}, 0, ratio) && std::abs(ratio - 0.25) < 1e-12);
    EXPECT_TRUE(CoorToRatio(contour.get(), {5, 5}, 1, ratio) && std::abs(ratio - 0.5) < 1e-12);
    EXPECT_TRUE(CoorToRatio(contour.get(), {10, 10}, 1, ratio) && ratio == 1);
    for (const int index : {0, 2, 3, -1, INT_MIN, INT_MAX})
        EXPECT_FALSE(CoorToRatio(contour.get(), {10, 10}, index, ratio));
    EXPECT_FALSE(CoorToRatio(test::PolylineEx("0 0 L 10 0").get(), {5, 0}, 0, ratio))
        << "deliberately left out";
    for (const double sum : {15 + 2.5 * kPi, 25 + 5 * kPi}) { // added to what is there
        EXPECT_TRUE(GetLengthStartToPos(contour.get(), {1, 0.5}, length));
        EXPECT_NEAR(length, sum, 1e-12);
    }
    EXPECT_TRUE(GetLengthStartToPos(test::PolylineEx("0 0 L 10 0").get(), {0, 0.5}, ratio) && ratio == 1);
    EXPECT_TRUE(GetLengthStartToPos(contour.get(), {INT_MAX, 0.5}, length = 0) && length > 25);
    const CCadDot dot({0, 0});
    const CCadLine line({0, 0}, {3, 4});
    EXPECT_TRUE(GetLengthStartToPos(&dot, {0, 0}, length) && length == 0);
    EXPECT_TRUE(GetLengthStartToPos(&line, {7, 0.5}, length) && length == 2.5);
    EXPECT_FALSE(GetLengthStartToPos(nullptr, {0, 0}, length));
}

TEST(PositionConversion, PickingAndTheStartPoint) {
    CCadGroup group;
    const CCadObject* object = nullptr;
    POLYPOS pos;
    EXPECT_FALSE(FindCadAndPosByPoint(&group, {0, 0}, object, pos, 1)
                 || FindCadAndPosByPoint(nullptr, {0, 0}, object, pos, 1));
    group.PushBack(new CCadLine({0, 0}, {10, 0}));
    EXPECT_TRUE(FindCadAndPosByPoint(&group, {10, 0}, object, pos, 1) && pos.nSegIndex == 0
                && pos.dRatio == 1);
    EXPECT_FALSE(FindCadAndPosByPoint(&group, {test::kNaN, 0}, object, pos, 1));
    const std::pair<math::PosRange, bool> ranges[] = {
        {{{3, 0.5}, {1, 0.2}}, true}, {{{1, 0.2}, {3, 0.5}}, false}, {{{2, 0.5}, {2, 0.5}}, false},
        {{{2, 0.5}, {2, 0.4}}, true}, {{{2, 0.4}, {2, 0.5}}, false}, {{{3, -1}, {1, 0}}, false}};
    for (const auto& [range, over] : ranges) EXPECT_EQ(IsOverStartPoint(range.start, range.end), over);
}

} // namespace
