#include "support/support.h"

using namespace qev;
using namespace test;

TEST(PointTests, Rectangle) {
    const CCadRectangle rectangle({1, 1}, 4, 2, 0);
    for (const DPOINT2& p : {DPOINT2{3, 2}, {1, 1}, {5, 3}, {3, 3}, {3, 3 + 5e-10}})
        EXPECT_TRUE(IsPointInRectangle(p, &rectangle)) << testing::PrintToString(p);
    for (const DPOINT2& p : {DPOINT2{3, 3.000001}, {0.999999, 2}, {5.000001, 2}, {3, 0.999999}})
        EXPECT_FALSE(IsPointInRectangle(p, &rectangle)) << testing::PrintToString(p);
    for (const DPOINT2& p : {math::NoPoint(), DPOINT2{HUGE_VAL, 2}, DPOINT2{-HUGE_VAL, HUGE_VAL}})
        EXPECT_FALSE(IsPointInRectangle(p, &rectangle)) << testing::PrintToString(p);
}

TEST(PointTests, ArcAndLine) {
    const CCadArc arc = GetCadArcFromSeg({{1, 0}, {-1, 0}, 1}); // the upper half of the unit circle
    EXPECT_POINT_NEAR(arc.GetEndPoint(), (DPOINT2{-1, 0}), 1e-12);
    EXPECT_NE(arc.GetID(), 0u);
    const CCadLine line({1, 0}, {-1, 0});
    for (const auto& [p, onArc, onLine] : Table<DPOINT2, bool, bool>{
             {{0, 1}, true, false}, {{0, -1}, false, false}, {{0, 0}, false, true}, {{-1, 0}, true, true}}) {
        EXPECT_EQ(IsPointInArc(p, &arc), onArc) << testing::PrintToString(p);
        EXPECT_EQ(IsPointInLine(p, &line), onLine) << testing::PrintToString(p);
    }
    EXPECT_FALSE(IsPointInArc({0, 1}, nullptr));
    EXPECT_FALSE(IsPointInLine({0, 0}, nullptr));
    EXPECT_EQ(GetCadArcFromSeg({{1, 0}, {1, 0}, -1}).GetRadius(), 0);
}
