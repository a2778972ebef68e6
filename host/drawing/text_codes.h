/// \file
/// The letters of a drawing's text, with what the codes in it say of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The slant of letters that lean to the right by an angle in degrees, to the left by a negative one: the
/// tangent of the angle. Beyond 85 degrees letters lean no more.
double SlantOf(double degrees);

/// How a letter is drawn.
struct LetterFormat {
    double height = 1;   ///< of a capital, in text heights
    double width = 1;    ///< factor along the line
    double slant = 0;    ///< tangent of the angle by which it leans to the right
    double tracking = 1; ///< factor of the way to the next letter
    int rise =
        0; ///< where a small letter stands in its line: 0 at the base line, 1 in the middle, 2 at the top
    bool isUnderlined = false;
    bool isOverlined = false;
    bool isStruck = false;
};

/// How the lines of a paragraph stand.
enum class Column {
    kLeft,   ///< they begin at one x
    kCentre, ///< their middles have one x
    kRight   ///< they end at one x
};

/// A letter, a blank between words, a stack of two texts, or the end of a line, which every line has.
struct TextItem {
    enum class Kind { kLetter, kBlank, kStack, kLineEnd };
    Kind kind = Kind::kLetter;
    char32_t letter = 0; ///< of a letter or blank
    LetterFormat format;
    char32_t bar = 0;             ///< of a stack: '/' level, '#' sloping, '^' none
    std::u32string above;         ///< of a stack
    std::u32string below;         ///< of a stack
    std::optional<Column> column; ///< of a line's end: how the line stands, when the text says so
};

/// The letters of a text of one line. "%%d", "%%p" and "%%c" are the signs for degrees, plus or minus, and
/// diameter, "%%65" is the letter of a number, "%%u", "%%o" and "%%k" draw a line under, over and through
/// what follows; "\U+0041" is a letter by its Unicode number and "\M+1C0E0" one of an Asian code page.
std::vector<TextItem> ParseTextLine(std::string_view utf8, const LetterFormat& format);

/// The letters of a text of paragraphs: what ParseTextLine knows, and the codes that begin with a backslash,
/// for line ends, heights, widths, slants, stacks and so on; colours and fonts are passed over. Heights are
/// given in text heights or in mm, of which `textHeight` is one. Codes that make no sense are left out.
std::vector<TextItem> ParseParagraphs(std::string_view utf8, const LetterFormat& format, double textHeight);

/// The letters without their formats; a stack as its texts with its bar between, a line's end as '\n'.
std::string PlainText(const std::vector<TextItem>& items);

} // namespace host
