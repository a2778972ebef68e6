#include "support/support.h"

using namespace qev;
using namespace test;

// A share of the length on an object is that share on the polyline that it was converted to.
TEST(ConvertedPosition, KeepsTheShareOfTheLength) {
    for (Random random; random.Rounds(200);) {
        const auto object = RandomSingle(random, -0.5);
        const std::unique_ptr<CCadPolyline> polyline(Convert2Polyline(object.get(), 0.01));
        ASSERT_TRUE(polyline);
        const double ratio = random.Uniform(0, 0.999);
        POLYPOS mapped;
        ASSERT_TRUE(GetMapPos(object.get(), polyline.get(), {}, {0, ratio}, mapped)) << object->GetType();
        EXPECT_NEAR(LengthTo(*polyline, mapped) / polyline->GetLength(), ratio, 1e-12) << object->GetType();
    }
}

TEST(ConvertedPosition, OfContours) {
    for (const auto& [name, source, destination, pos, expected] :
         Table<const char*, const char*, const char*, POLYPOS, POLYPOS>{
             {"as many segments: itself", kOpenSquare, "0 0 L 1 0 L 3 0 L 6 0", {1, 0.25}, {1, 0.25}},
             {"a joint in normal form", kOpenSquare, "0 0 L 1 0 L 3 0 L 6 0", {0, 1}, {1, 0}},
             {"the end", "line 0 0 1 0", "0 0 L 1 0 L 2 0", {0, 1}, {1, 1}}}) {
        POLYPOS mapped;
        EXPECT_TRUE(GetMapPos(Object(source).get(), Object(destination).get(), {}, pos, mapped)) << name;
        EXPECT_TRUE(IsAt(mapped, expected)) << name;
    }
}

TEST(ConvertedPosition, Refusals) {
    POLYPOS mapped;
    const auto square = Object(kSquare), shorter = Object(kOpenSquare), point = Object("0 0 L 0 0");
    EXPECT_FALSE(GetMapPos(square.get(), nullptr, {}, {0, 0}, mapped));
    EXPECT_FALSE(GetMapPos(square.get(), shorter.get(), {}, {4, 0}, mapped)) << "no such segment";
    EXPECT_FALSE(GetMapPos(point.get(), shorter.get(), {}, {0, 0}, mapped)) << "no length";
}
