#include <gtest/gtest.h>

#include "host/drawing/stroke_font.h"

TEST(StrokeFont, FormattingCodesAreDropped) {
    EXPECT_EQ(host::PlainText("{\\fArial|b0;A\\PB} 30%%d \\\\C\\H2.5x;"), "A\nB 30 \\C");
    EXPECT_EQ(host::PlainText("A\\Ctail"), "A") << "a code that breaks off";
}
