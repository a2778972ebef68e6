#include "support/support.h"

using namespace qev;
using namespace test;

TEST(CadArc, IsHalvedWhenItsChordIsTooShortForABulge) {
    CCadArc arc({0, 0}, 5, 1, 2 * kPi - 0.5, true);
    EXPECT_EQ(arc.GetPieceCount(), 1);
    arc.SetEndAngle(1 - 1e-3);
    EXPECT_EQ(arc.GetPieceCount(), 2);
}
