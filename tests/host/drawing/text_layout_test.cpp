#include "host/drawing/text_layout.h"
#include "support/shapes.h"

using namespace test;
using host::Column;

namespace {

// Words of one letter: so a word's width and its number of letters say the same.
struct Lines {
    std::vector<int> letters;   // of each line
    double left = 0, right = 0; // of all
};

Lines LinesOf(const host::TextLayout& layout) {
    Lines lines;
    double y = 1;
    for (const host::PlacedLetter& letter : layout.letters) {
        if (letter.place.shift.y != y) lines.letters.push_back(0);
        y = letter.place.shift.y;
        ++lines.letters.back();
        lines.left = std::min(lines.left, letter.place.shift.x);
        lines.right = std::max(lines.right, letter.place.shift.x + letter.glyph->advance);
    }
    return lines;
}

TEST(TextLayout, LinesAreAsFullAsTheirBoxAllows) {
    const auto font = host::Font::Open();
    const double letter = font->GlyphOf('n').advance, blank = font->GlyphOf(' ').advance;
    for (Random random; random.Rounds(200);) {
        std::string text;
        std::vector<int> words(static_cast<std::size_t>(random.Int(1, 30)));
        for (int& word : words)
            text += std::string(static_cast<std::size_t>(word = random.Int(1, 6)), 'n') + " ";
        host::TextSetting setting;
        setting.width = random.Uniform(6, 20) * letter;
        setting.column = random.Coin() ? Column::kLeft : Column::kRight;
        const Lines lines = LinesOf(host::LayOut(host::ParseParagraphs(text, {}, 1), setting, *font));
        EXPECT_LE(lines.right - lines.left, setting.width + 1e-9);
        EXPECT_NEAR(setting.column == Column::kLeft ? lines.left : lines.right, 0, 1e-9);
        std::vector<int> expected;
        double width = setting.width; // the first word does not fit behind it
        for (const int word : words) {
            width += blank + word * letter;
            if (width > setting.width) {
                expected.push_back(0);
                width = word * letter;
            }
            expected.back() += word;
        }
        EXPECT_EQ(lines.letters, expected) << text;
    }
}

TEST(TextLayout, LongWordsIdeographsAndStacks) {
    const auto font = host::Font::Open();
    const auto set = [&](const char* text, double width) {
        host::TextSetting setting;
        setting.width = width;
        return host::LayOut(host::ParseParagraphs(text, {}, 1), setting, *font);
    };
    EXPECT_EQ(LinesOf(set("a nnnnnnnnnn b", 3)).letters, (std::vector<int>{1, 10, 1}));
    EXPECT_EQ(LinesOf(set("\\U+4E2D\\U+4E2D\\U+4E2D", 2.5 * font->GlyphOf(0x4E2D).advance)).letters,
              (std::vector<int>{2, 1}));
    EXPECT_EQ(set("\\L\\Oab c", 0).bars.size(), 2u) << "a bar runs on from letter to letter";
    const host::TextLayout level = set("\\S1/2;", 0), sloping = set("\\S1#2;", 0);
    EXPECT_EQ(level.bars[0].from.y, level.bars[0].to.y);
    EXPECT_LT(sloping.bars[0].from.y, sloping.bars[0].to.y);
    EXPECT_GT(level.letters[0].place.shift.y, level.letters[1].place.shift.y) << "1 stands above 2";
    EXPECT_LT(sloping.letters[0].place.shift.x, sloping.letters[1].place.shift.x);
    EXPECT_EQ(set("n\\T3;n", 0).width, 4 * set("n", 0).width);
    EXPECT_LT(set("nnnn \\pqc;nn", 9).letters[0].place.shift.x, 9.0);
    EXPECT_GT(set("\\pqc;nn", 9).letters[0].place.shift.x, 3.0) << "in the middle of the box";
}

} // namespace
