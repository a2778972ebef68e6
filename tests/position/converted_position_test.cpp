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
        POLYPOS mapped{0, ratio}; // both the input and the output
        ASSERT_TRUE(GetMapPos(object.get(), polyline.get(), {}, mapped, mapped)) << object->GetType();
        EXPECT_NEAR(LengthTo(*polyline, mapped) / polyline->GetLength(), ratio, 1e-12) << object->GetType();
    }
}

// Segment -8 is where nothing is written.
TEST(ConvertedPosition, OfContours) {
    for (const auto& [name, source, destination, pos, expected] :
         Table<const char*, const char*, const char*, POLYPOS, POLYPOS>{
             {"as many segments: itself", kOpenSquare, "0 0 L 1 0 L 3 0 L 6 0", {1, 0.25}, {1, 0.25}},
             {"a joint in normal form", kOpenSquare, "0 0 L 1 0 L 3 0 L 6 0", {0, 1}, {1, 0}},
             {"the end", "line 0 0 1 0", "0 0 L 1 0 L 2 0", {0, 1}, {1, 1}},
             {"no such segment", kSquare, kOpenSquare, {4, 0}, {-8, 0}},
             {"no length", "0 0 L 0 0", kOpenSquare, {0, 0}, {-8, 0}}}) {
        POLYPOS mapped{-8, 0};
        const bool isMapped = GetMapPos(Object(source).get(), Object(destination).get(), {}, pos, mapped);
        EXPECT_EQ(isMapped, expected.nSegIndex >= 0) << name;
        EXPECT_TRUE(IsAt(mapped, expected)) << name;
    }
}
