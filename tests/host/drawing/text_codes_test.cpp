#include "host/drawing/text_codes.h"
#include "support/shapes.h"

using namespace test;

namespace {

struct Written {
    const char *text, *plain;
};

TEST(TextCodes, LettersOfALine) {
    const Written cases[] = {
        {"%%c12 45%%D %%p1", "\xE2\x8C\x80"
                             "12 45\xC2\xB0 \xC2\xB1"
                             "1"},
        {"\\U+041D\\u \\U+D83D\\U+DE00", "\xD0\x9D\\u \xF0\x9F\x98\x80"},
        {"\\M+193FA\\M+5C4E3\\M+9", "\xE6\x97\xA5\xE4\xBD\xA0\\M+9"},
        {"%%65%%0666 100%% %%q", "AB6 100%% %%q"},
        {"%%uA%%u %%%c\\P{a}", "A %c\\P{a}"},
        {"a^Ib^ c^d", "a\tb^c^d"},
        {"%", "%"},
        {"%%", "%%"},
        {"\\", "\\"},
        {"\\U+04", "\\U+04"},
    };
    for (const auto& [text, plain] : cases)
        EXPECT_EQ(host::PlainText(host::ParseTextLine(text, {})), plain) << text;
}

TEST(TextCodes, LettersOfParagraphs) {
    const Written cases[] = {
        {"a\\Pb\\Nc^Jd", "a\nb\nc\nd"},
        {"{\\fArial|b0|i0|c204|p34;\\C1;a}\\~b", "a\xC2\xA0"
                                                 "b"},
        {"\\\\\\{x\\}", "\\{x}"},
        {"\\A1;\\S1/2;\\S+1^ -1;", "1/2+1^ -1"},
        {"\\Lu\\l\\Oo\\o\\pi1,l2;p\\Zz", "uopz"},
        {"\\H2.5x", ""},
        {"a}}b{", "ab"},
        {"\\", ""},
        {"\\S1", "1^"},
    };
    for (const auto& [text, plain] : cases)
        EXPECT_EQ(host::PlainText(host::ParseParagraphs(text, {}, 1)), plain) << text;
}

TEST(TextCodes, FormatsEndWithTheirBraces) {
    const auto items =
        host::ParseParagraphs("a{\\H5;\\W2;\\Q45;\\T1.5;\\A2;\\Lb\\H0.5x;c}d\\H1e999;e\\Hx;f\\pqr;", {}, 2.5);
    ASSERT_EQ(items.size(), 7u);
    const host::LetterFormat &a = items[0].format, &b = items[1].format, &c = items[2].format;
    EXPECT_EQ(b.height, 2);
    EXPECT_EQ(b.width, 2);
    EXPECT_NEAR(b.slant, 1, 1e-12);
    EXPECT_EQ(b.tracking, 1.5);
    EXPECT_EQ(b.rise, 2);
    EXPECT_TRUE(b.isUnderlined);
    EXPECT_EQ(c.height, 1);
    for (const std::size_t i : {3, 4, 5}) {
        EXPECT_EQ(items[i].format.height, a.height) << i;
        EXPECT_FALSE(items[i].format.isUnderlined) << i;
    }
    EXPECT_EQ(items[6].column, host::Column::kRight);
    std::string doubled;
    for (int i = 0; i < 2000; ++i) doubled += "\\H2x;";
    EXPECT_LT(host::ParseParagraphs(doubled + "a", {}, 1)[0].format.height, 1e6);
}

} // namespace
