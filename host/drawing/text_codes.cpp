// A text is read letter by letter. Two percent signs begin the codes that every text has, a backslash those
// of texts of paragraphs. A backslash code is one letter ("\P"), or it has a value up to a semicolon
// ("\H2.5x;"). Braces keep a format to themselves: what changes within them ends with them.
//
// What changes the format is a row of a table, from the code's letter to what is done with its value. A value
// that is no number changes nothing. Factors are bounded, since codes multiply: some hundred "\H2x;" would
// leave the range of numbers.

#include "text_codes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include <qevmath/qevmath.h>

#include "platform/encoding.h"
#include "unicode.h"

namespace host {
namespace {

using Kind = TextItem::Kind;

constexpr double kLargestFactor = 1000; // of heights and widths: beyond it a letter is a dot or a wall

double Bounded(double factor) {
    return std::clamp(std::abs(factor), 1 / kLargestFactor, kLargestFactor);
}

// The number at the start of a value; none when there is none.
std::optional<double> NumberOf(const std::u32string& value) {
    const std::string text = Utf8Of(value);
    const char* first = text.data() + (text.starts_with('+') ? 1 : 0);
    double number = 0;
    const auto [end, error] = std::from_chars(first, text.data() + text.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
    return number;
}

// Reads the letters of one text.
class Parser {
public:
    Parser(std::string_view utf8, const LetterFormat& format, double textHeight, bool hasParagraphs)
        : m_strText(LettersOf(utf8)), m_format(format), m_dTextHeight(textHeight),
          m_bHasParagraphs(hasParagraphs) {}

    std::vector<TextItem> Items() {
        while (m_nAt < m_strText.size()) {
            const char32_t letter = m_strText[m_nAt++];
            if (letter == '\\')
                ReadBackslash();
            else if (letter == '%' && Peek() == '%')
                ReadPercent();
            else if (letter == '^' && ReadCaret())
                continue;
            else if (m_bHasParagraphs && (letter == '{' || letter == '}'))
                ReadBrace(letter);
            else
                Put(letter);
        }
        EndLine();
        return std::move(m_vecItems);
    }

private:
    char32_t Peek(std::size_t ahead = 0) const {
        return m_nAt + ahead < m_strText.size() ? m_strText[m_nAt + ahead] : U'\0';
    }

    void Put(char32_t letter) {
        if (letter == '\n' && m_bHasParagraphs) return EndLine();
        if (letter == '\r' || letter == '\n') return;
        const bool isBlank = letter == ' ' || letter == '\t';
        TextItem item;
        item.kind = isBlank ? Kind::kBlank : Kind::kLetter;
        item.letter = letter;
        item.format = m_format;
        const bool isControl = letter < ' ' && !isBlank;
        if (!isControl) m_vecItems.push_back(std::move(item));
    }

    void EndLine() {
        TextItem item;
        item.kind = Kind::kLineEnd;
        item.format = m_format;
        item.column = m_column;
        m_vecItems.push_back(std::move(item));
    }

    // The hexadecimal number that so many digits from here on make; none when they are none.
    std::optional<char32_t> Hex(std::size_t from, std::size_t count) const {
        char32_t number = 0;
        for (std::size_t i = from; i < from + count; ++i) {
            const char32_t c = Peek(i);
            const bool isDigit = c >= '0' && c <= '9';
            const char32_t upper = c & ~U'\x20';
            if (!isDigit && !(upper >= 'A' && upper <= 'F')) return std::nullopt;
            number = number * 16 + (isDigit ? c - '0' : upper - 'A' + 10);
        }
        return number;
    }

    // "U+XXXX" behind the backslash. Letters beyond the first 65536 are written as two halves.
    bool ReadUnicode() {
        const auto code = Peek() == 'U' && Peek(1) == '+' ? Hex(2, 4) : std::nullopt;
        if (!code) return false;
        m_nAt += 6;
        const bool isFirstHalf = *code >= 0xD800 && *code < 0xDC00;
        const bool hasSecond = isFirstHalf && Peek() == '\\' && Peek(1) == 'U' && Peek(2) == '+';
        const auto second = hasSecond ? Hex(3, 4) : std::nullopt;
        if (second && *second >= 0xDC00 && *second < 0xE000) {
            m_nAt += 7;
            Put(0x10000 + ((*code - 0xD800) << 10) + (*second - 0xDC00));
        } else {
            Put(*code);
        }
        return true;
    }

    // "M+nXXXX" behind the backslash: the two bytes of a letter in one of five code pages.
    bool ReadMultibyte() {
        constexpr std::array<int, 5> kCodePages{932, 950, 949, 1361, 936};
        const auto page = Peek() == 'M' && Peek(1) == '+' ? Hex(2, 1) : std::nullopt;
        const auto code = page && *page >= 1 && *page <= kCodePages.size() ? Hex(3, 4) : std::nullopt;
        if (!code) return false;
        m_nAt += 7;
        const std::string bytes{static_cast<char>(*code >> 8), static_cast<char>(*code & 0xFF)};
        for (const char32_t letter : LettersOf(qev::platform::ToUtf8(bytes, kCodePages[*page - 1])))
            Put(letter);
        return true;
    }

    // Two percent signs, of which the first has been read. What is no code is drawn as it is written.
    void ReadPercent() {
        const char32_t code = Peek(1) >= 'A' && Peek(1) <= 'Z' ? Peek(1) + ('a' - 'A') : Peek(1);
        const auto isDigit = [](char32_t c) { return c >= '0' && c <= '9'; };
        if (isDigit(code)) {
            char32_t number = 0;
            ++m_nAt;
            for (int i = 0; i < 3 && isDigit(Peek()); ++i) number = number * 10 + (m_strText[m_nAt++] - '0');
            return Put(number);
        }
        m_nAt += 2;
        switch (code) {
        case 'd':
            return Put(0xB0);
        case 'p':
            return Put(0xB1);
        case 'c':
            return Put(0x2300);
        case '%':
            return Put('%');
        case 'u':
            m_format.isUnderlined = !m_format.isUnderlined;
            break;
        case 'o':
            m_format.isOverlined = !m_format.isOverlined;
            break;
        case 'k':
            m_format.isStruck = !m_format.isStruck;
            break;
        default:
            m_nAt -= 2;
            Put('%');
        }
    }

    // Control letters are written as a caret and a letter: "^I" is a tab, "^J" a line's end, "^ " a caret.
    bool ReadCaret() {
        switch (Peek()) {
        case 'I':
            Put('\t');
            break;
        case 'J':
            Put('\n');
            break;
        case 'M':
            break;
        case ' ':
            Put('^');
            break;
        default:
            return false;
        }
        ++m_nAt;
        return true;
    }

    void ReadBrace(char32_t brace) {
        if (brace == '{') return m_vecOuter.push_back(m_format);
        if (m_vecOuter.empty()) return;
        m_format = m_vecOuter.back();
        m_vecOuter.pop_back();
    }

    void ReadBackslash() {
        if (ReadUnicode() || ReadMultibyte()) return;
        if (!m_bHasParagraphs) return Put('\\');
        const char32_t code = m_nAt < m_strText.size() ? m_strText[m_nAt++] : U'\0';
        switch (code) {
        case '\\':
        case '{':
        case '}':
            return Put(code);
        case '~':
            return Put(0xA0);
        case 'P':
        case 'N':
        case 'X':
            return EndLine();
        case 'S':
            return ReadStack();
        default:
            if (!Switch(code)) Change(code);
        }
    }

    // Codes of one letter that draw lines along the letters that follow; a small letter ends them.
    bool Switch(char32_t code) {
        const struct {
            char32_t letter;
            bool LetterFormat::*flag;
        } switches[] = {{'L', &LetterFormat::isUnderlined},
                        {'O', &LetterFormat::isOverlined},
                        {'K', &LetterFormat::isStruck}};
        const auto* found = std::find_if(std::begin(switches), std::end(switches), [code](const auto& each) {
            return code == each.letter || code == each.letter + ('a' - 'A');
        });
        if (found == std::end(switches)) return false;
        m_format.*(found->flag) = code == found->letter;
        return true;
    }

    // The value of a code, up to its semicolon; the rest of the text when there is none.
    std::u32string Value() {
        const std::size_t end = std::min(m_strText.find(U';', m_nAt), m_strText.size());
        std::u32string value = m_strText.substr(m_nAt, end - m_nAt);
        m_nAt = std::min(end + 1, m_strText.size());
        return value;
    }

    // Codes with a value that change the format.
    void Change(char32_t code) {
        if (std::u32string_view(U"ACcFfHpQTW").find(code) == std::u32string_view::npos) return; // one letter
        const std::u32string value = Value();
        if (code == 'p') return SetColumn(value);
        const auto number = NumberOf(value);
        if (!number) return;
        const bool isFactor = value.ends_with(U'x');
        if (code == 'A') m_format.rise = static_cast<int>(std::clamp(*number, 0.0, 2.0));
        if (code == 'H')
            m_format.height = Bounded(isFactor ? m_format.height * *number : *number / m_dTextHeight);
        if (code == 'W') m_format.width = Bounded(isFactor ? m_format.width * *number : *number);
        if (code == 'T') m_format.tracking = Bounded(isFactor ? m_format.tracking * *number : *number);
        if (code == 'Q') m_format.slant = SlantOf(*number);
    }

    // "\pi1,qc;": the letter behind the q is the column's.
    void SetColumn(const std::u32string& value) {
        const std::size_t at = value.find(U'q');
        const char32_t code = at + 1 < value.size() ? value[at + 1] : U'\0';
        if (at == std::u32string::npos) return;
        m_column.reset();
        if (code == 'l') m_column = Column::kLeft;
        if (code == 'c') m_column = Column::kCentre;
        if (code == 'r') m_column = Column::kRight;
    }

    // "\S1/2;": two texts with '/', '#' or '^' between them.
    void ReadStack() {
        TextItem item;
        item.kind = Kind::kStack;
        item.format = m_format;
        const std::u32string value = Value();
        const std::size_t bar = std::min(value.find_first_of(U"/#^"), value.size());
        item.bar = bar < value.size() ? value[bar] : U'^';
        item.above = value.substr(0, bar);
        item.below = bar < value.size() ? value.substr(bar + 1) : U"";
        m_vecItems.push_back(std::move(item));
    }

    std::u32string m_strText;
    std::size_t m_nAt = 0;
    LetterFormat m_format;
    std::vector<LetterFormat> m_vecOuter; // formats outside the open braces
    std::optional<Column> m_column;
    double m_dTextHeight; // mm
    bool m_bHasParagraphs;
    std::vector<TextItem> m_vecItems;
};

} // namespace

double SlantOf(double degrees) {
    constexpr double kSteepest = 85;
    return std::tan(math::AngleToRadian(std::clamp(degrees, -kSteepest, kSteepest)));
}

std::vector<TextItem> ParseTextLine(std::string_view utf8, const LetterFormat& format) {
    return Parser(utf8, format, 1, false).Items();
}

std::vector<TextItem> ParseParagraphs(std::string_view utf8, const LetterFormat& format, double textHeight) {
    return Parser(utf8, format, textHeight, true).Items();
}

std::string PlainText(const std::vector<TextItem>& items) {
    std::u32string text;
    for (const TextItem& item : items) {
        if (item.kind == Kind::kLineEnd)
            text += U'\n';
        else if (item.kind == Kind::kStack)
            text += item.above + item.bar + item.below;
        else
            text += item.letter;
    }
    if (!text.empty()) text.pop_back(); // the end of the last line
    return Utf8Of(text);
}

} // namespace host
