#include "host/drawing/stroke_font.h"
#include "support/shapes.h"

using namespace test;

TEST(StrokeFont, FormattingCodesAreDropped) {
    EXPECT_EQ(host::PlainText("{\\fArial|b0;A\\PB} 30%%d \\\\C\\H2.5x;"), "A\nB 30 \\C");
    EXPECT_EQ(host::PlainText("A\\Ctail"), "A") << "a code that breaks off";
}

TEST(StrokeFont, LettersStandOnTheirLines) {
    const auto strokes = host::StrokesOf("I\nl");
    ASSERT_EQ(strokes.size(), 4u); // three of I, one of L on the next line
    EXPECT_POINT_NEAR(strokes[3].back(), (math::DPOINT2{4 / 6.0, -10 / 6.0}), 1e-15);
    EXPECT_EQ(host::StrokesOf("\xe4").at(0).size(), 5u) << "a box";
}
