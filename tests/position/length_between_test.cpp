#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// Segments of 1, 2 and 3 mm.
const char* const kClosed = "0 0 L 1 0 L 3 0 L 0 0";
constexpr double kNone = -77; // what is there before, and stays where there is no answer

// `wrapping` is the variant that takes equal positions on a closed contour for a whole lap.
TEST(LengthBetween, BothVariants) {
    for (const auto& [name, contour, from, to, expectedPlain, expectedWrapping] :
         Table<const char*, const char*, POLYPOS, POLYPOS, double, double>{
             {"back in a segment", kClosed, {1, 0.5}, {1, 0.25}, -0.5, 5.5},
             {"equal", kClosed, {1, 0.5}, {1, 0.5}, 0, 6},
             {"on a circle", kCircleOf10, {0, 0.25}, {0, 0.5}, 2.5, 2.5},
             {"over the start of a circle", kCircleOf10, {0, 0.75}, {0, 0.25}, 5, 5},
             {"back on a line", "line 0 0 0 10", {0, 0.75}, {0, 0.25}, -5, -5},
             {"back to an earlier segment of an open contour", kOpenSquare, {2, 0.5}, {0, 0.25}, 7.5, -22.5},
             {"equal on a circle", kCircleOf10, {0, 0.5}, {0, 0.5}, 10, 10},
             {"up to a merged range's end", kOpenSquare, {1, 0.5}, {3, 0}, 15, 15},
             {"off the contour", kOpenSquare, {0, 0}, {7, 0}, kNone, kNone},
             {"an extended polyline", "0 0 L 1 0 B 1 0 2 0 2 0", {1, 0}, {0, 0}, kNone, kNone}}) {
        SCOPED_TRACE(name);
        const auto object = Object(contour);
        double plain = kNone, wrapping = kNone;
        GetLineLength_Dot2Dot(object.get(), from, to, plain);
        GetLineLength_Dot2Dot2(object.get(), from, to, wrapping);
        EXPECT_NEAR(plain, expectedPlain, 1e-12);
        EXPECT_NEAR(wrapping, expectedWrapping, 1e-12);
    }
}

} // namespace
