// The font is a table of strokes on a grid of 4 by 6, written as digits, so that a letter can be drawn and
// mended by hand. An outline font would look better and be useless here: an engraver runs along the middle of
// a line, and the outline of a stroke is two lines. The font is the project's own, so that a drawing looks
// alike everywhere.

#include "stroke_font.h"

#include <cctype>

namespace host {
namespace {

// In steps of the grid.
constexpr double kCellHeight = 6;   // of a capital
constexpr double kAdvance = 6;      // from a letter to the next: 4 for the letter, 2 between them
constexpr double kLineAdvance = 10; // from a base line to the next

struct Glyph {
    char letter;
    const char* strokes; // pairs of digits, x from 0 to 4 and y from 0 to 6; a blank lifts the pen
};

constexpr Glyph kGlyphs[] = {
    {'A', "002640 1333"},
    {'B', "000636454433424130 3000 0333"},
    {'C', "4536160501103041"},
    {'D', "00062644422000"},
    {'E', "46060040 0333"},
    {'F', "460600 0333"},
    {'G', "45361605011030414323"},
    {'H', "0006 4046 0343"},
    {'I', "1030 2026 1636"},
    {'J', "4641301001"},
    {'K', "0006 460340"},
    {'L', "060040"},
    {'M', "0006244640"},
    {'N', "00064046"},
    {'O', "160501103041453616"},
    {'P', "00063645443303"},
    {'Q', "160501103041453616 2240"},
    {'R', "00063645443303 2340"},
    {'S', "453616050413334241301001"},
    {'T', "0646 2026"},
    {'U', "060110304146"},
    {'V', "062046"},
    {'W', "0610243046"},
    {'X', "0046 0640"},
    {'Y', "062346 2320"},
    {'Z', "06460040"},
    {'0', "160501103041453616 0145"},
    {'1', "152620 1030"},
    {'2', "05163645440040"},
    {'3', "0516364544334241301001 1333"},
    {'4', "30360242"},
    {'5', "460604344341301001"},
    {'6', "4536160501103041423303"},
    {'7', "064610"},
    {'8', "133342413010010213 133344453616050413"},
    {'9', "0110304145361605041343"},
    {'.', "2021"},
    {',', "2110"},
    {':', "2122 2425"},
    {'-', "1333"},
    {'+', "1333 2224"},
    {'=', "1232 1434"},
    {'_', "0040"},
    {'/', "0046"},
    {'\\', "0640"},
    {'(', "36242230"},
    {')', "16242210"},
    {'<', "460340"},
    {'>', "064300"},
    {'*', "1434 2523"},
    {'#', "1016 3036 0242 0444"},
    {'\'', "2526"},
    {'"', "1516 3536"},
    {' ', ""},
};

const char* StrokesOfLetter(char letter) {
    const char wanted = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    for (const Glyph& glyph : kGlyphs)
        if (glyph.letter == wanted) return glyph.strokes;
    return "0006464000"; // a box
}

} // namespace

std::vector<Stroke> StrokesOf(std::string_view text) {
    std::vector<Stroke> strokes;
    math::DPOINT2 pen;
    for (const char letter : text) {
        if (letter == '\n') {
            pen = {0, pen.y - kLineAdvance};
            continue;
        }
        strokes.emplace_back();
        for (const char* p = StrokesOfLetter(letter); *p; ++p) {
            if (*p == ' ') {
                strokes.emplace_back();
                continue;
            }
            const double x = *p++ - '0';
            strokes.back().push_back((pen + math::DPOINT2{x, static_cast<double>(*p - '0')}) / kCellHeight);
        }
        pen.x += kAdvance;
    }
    std::erase_if(strokes, [](const Stroke& stroke) { return stroke.size() < 2; });
    return strokes;
}

// Codes begin with a backslash or two percent signs. Those with a value ("\H2.5x;") end with a semicolon, the
// others are one letter. A code that breaks off at the end of the text is dropped.
std::string PlainText(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (c == '{' || c == '}') continue;
        if (c == '%' && next == '%') {
            i += 2; // "%%d", "%%c", "%%p", "%%u"
        } else if (c != '\\') {
            plain += c;
        } else if (next == 'P') {
            plain += '\n';
            ++i;
        } else if (next == '\\' || next == '{' || next == '}') {
            plain += next;
            ++i;
        } else if (std::string_view("ACcFfHQTWp").find(next) != std::string_view::npos && next) {
            const std::size_t end = text.find(';', i);
            i = end == std::string_view::npos ? text.size() : end;
        } else {
            ++i; // "\L", "\O", "\~" and other switches of one letter
        }
    }
    return plain;
}

} // namespace host
