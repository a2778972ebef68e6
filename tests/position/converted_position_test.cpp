#include "support/support.h"

using namespace qev;
using namespace test;

// Segment -8 is where nothing is written.
TEST(ConvertedPosition, OfContours) {
    for (const auto& [name, source, destination, pos, expected] :
         Table<const char*, const char*, const char*, POLYPOS, POLYPOS>{
             {"as many segments: itself", kOpenSquare, "0 0 L 1 0 L 3 0 L 6 0", {1, 0.25}, {1, 0.25}},
             {"a joint in normal form", kOpenSquare, "0 0 L 1 0 L 3 0 L 6 0", {0, 1}, {1, 0}},
             {"the end", "line 0 0 1 0", "0 0 L 1 0 L 2 0", {0, 1}, {1, 1}},
             {"no such segment", kSquare, kOpenSquare, {4, 0}, {-8, 0}},
             {"from no length", "0 0 L 0 0", kOpenSquare, {0, 0}, {-8, 0}},
             {"to no length", kOpenSquare, "0 0 L 0 0", {0, 0}, {-8, 0}}}) {
        POLYPOS mapped{-8, 0};
        const bool isMapped = GetMapPos(Object(source).get(), Object(destination).get(), {}, pos, mapped);
        EXPECT_EQ(isMapped, expected.nSegIndex >= 0) << name;
        EXPECT_TRUE(IsAt(mapped, expected)) << name;
    }
}
