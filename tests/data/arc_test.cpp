#include "support/support.h"

using namespace qev;
using namespace test;

TEST(CadArc, EndAngleSetsTheTurnInItsDirection) {
    for (const bool ccw : {true, false}) {
        SCOPED_TRACE(ccw ? "counter-clockwise" : "clockwise");
        CCadArc arc({0, 0}, 5, 1, 2, ccw);
        arc.SetEndAngle(ccw ? 0.5 : 1.5);
        EXPECT_NEAR(arc.GetCentralAngle(), 2 * kPi - 0.5, 1e-15);
        EXPECT_NEAR(arc.GetBulge(), (ccw ? 1 : -1) * std::tan((2 * kPi - 0.5) / 4), 1e-14);
    }
}

TEST(CadArc, IsHalvedWhenItsChordIsTooShortForABulge) {
    CCadArc arc({0, 0}, 5, 1, 2 * kPi - 0.5, true);
    EXPECT_EQ(arc.GetPieceCount(), 1);
    arc.SetEndAngle(1 - 1e-3);
    EXPECT_EQ(arc.GetPieceCount(), 2);
}
