// Lines are broken first: letters are added until the line is too long, and then it ends at the last place
// where it may: before blanks, or before an ideograph, as those are written without blanks. Blanks at the end
// of a line do not count. Then each line is set by itself: its height, which is that of its largest letter,
// says how far it lies below the one before, and its length where it begins.
//
// Whoever draws these files puts a base line 5/3 text heights below the one before, and a factor on it.
//
// A stack is drawn at seven tenths of the letters' height, its texts one above the other, or, with a sloping
// bar, to the left and right of it.

#include "text_layout.h"

#include <algorithm>
#include <span>

namespace host {
namespace {

using math::DPOINT2;
using Kind = TextItem::Kind;

// In text heights.
constexpr double kLineStep = 5.0 / 3; // from a base line to the next
constexpr double kBlanksOfTab = 4;    // blanks that a tab is as wide as
constexpr double kUnder = -0.2;       // where lines under, over and through letters run
constexpr double kOver = 1.2;
constexpr double kThrough = 0.45;
constexpr double kStackHeight = 0.7; // of the texts of a stack
constexpr double kStackGap = 0.4;    // between them

// The letters from which on no blanks stand between words.
constexpr char32_t kFirstIdeograph = 0x2E80;

// The part of a box, and of a line, at which they meet.
double PartOf(Column column) {
    return column == Column::kLeft ? 0 : column == Column::kCentre ? 0.5 : 1;
}

class Setter {
public:
    Setter(const TextSetting& setting, Font& font) : m_setting(setting), m_font(font) {}

    TextLayout Set(std::span<const TextItem> items) {
        while (!items.empty()) {
            const auto end = std::find_if(items.begin(), items.end(),
                                          [](const TextItem& item) { return item.kind == Kind::kLineEnd; });
            const auto size = static_cast<std::size_t>(end - items.begin());
            SetParagraph(items.first(size), *end);
            items = items.subspan(size + 1);
        }
        m_layout.bottom = m_dBaseLine;
        return std::move(m_layout);
    }

private:
    double AdvanceOf(std::u32string_view text, double height, double width) {
        double advance = 0;
        for (const char32_t letter : text) advance += m_font.GlyphOf(letter).advance;
        return advance * height * width;
    }

    double StackWidth(const TextItem& item) {
        const double height = kStackHeight * item.format.height;
        const double above = AdvanceOf(item.above, height, item.format.width);
        const double below = AdvanceOf(item.below, height, item.format.width);
        return item.bar == '#' ? above + height / 2 + below : std::max(above, below);
    }

    double WidthOf(const TextItem& item) {
        if (item.kind == Kind::kStack) return StackWidth(item);
        const double blanks = item.letter == '\t' ? kBlanksOfTab : 1;
        const char32_t letter = item.letter == '\t' ? U' ' : item.letter;
        return blanks * m_font.GlyphOf(letter).advance * item.format.height * item.format.width
               * item.format.tracking;
    }

    // How many items from the first on make a line. What follows the last blanks goes to the next line when
    // it is too long.
    std::size_t Fitting(std::span<const TextItem> items) {
        if (m_setting.width <= 0) return items.size();
        double width = 0;
        std::size_t breakable = 0;
        for (std::size_t i = 0; i < items.size(); ++i) {
            const bool isBlank = items[i].kind == Kind::kBlank;
            const bool mayBreak =
                i > 0 && (items[i - 1].kind == Kind::kBlank || items[i].letter >= kFirstIdeograph);
            if (mayBreak && !isBlank) breakable = i;
            width += WidthOf(items[i]);
            if (!isBlank && width > m_setting.width && breakable > 0) return breakable;
        }
        return items.size();
    }

    void SetParagraph(std::span<const TextItem> items, const TextItem& end) {
        const bool hasBox = m_setting.width > 0;
        const Column column = hasBox ? end.column.value_or(m_setting.column) : m_setting.column;
        do {
            const std::size_t size = Fitting(items);
            SetLine(items.first(size), end.format.height, column);
            items = items.subspan(size);
        } while (!items.empty());
    }

    // A line without letters is as high as its end.
    void SetLine(std::span<const TextItem> items, double emptyHeight, Column column) {
        double height = items.empty() ? emptyHeight : 0;
        for (const TextItem& item : items) height = std::max(height, item.format.height);
        if (m_bIsFirst)
            m_layout.top = height;
        else
            m_dBaseLine -= kLineStep * m_setting.spacing * (m_setting.isSpacingExact ? 1 : height);
        m_bIsFirst = false;
        const auto isBlank = [](const TextItem& item) { return item.kind == Kind::kBlank; };
        while (!items.empty() && isBlank(items.back())) items = items.first(items.size() - 1);
        double width = 0;
        for (const TextItem& item : items) width += WidthOf(item);
        m_layout.width = std::max(m_layout.width, width);
        m_dPen = m_setting.width * (PartOf(column) - PartOf(m_setting.column)) - width * PartOf(column);
        m_dLineHeight = height;
        for (const TextItem& item : items) Place(item);
    }

    void Place(const TextItem& item) {
        const double start = m_dPen;
        const LetterFormat& format = item.format;
        if (item.kind == Kind::kStack)
            PlaceStack(item);
        else if (item.kind == Kind::kLetter)
            PlaceLetter(item.letter, format, format.height,
                        {m_dPen, m_dBaseLine + Rise(format, format.height)});
        m_dPen = start + WidthOf(item);
        const double base = m_dBaseLine + Rise(format, format.height);
        if (format.isUnderlined) PlaceBar(start, base + kUnder * format.height);
        if (format.isOverlined) PlaceBar(start, base + kOver * format.height);
        if (format.isStruck) PlaceBar(start, base + kThrough * format.height);
    }

    // How far what has a height is moved up in its line.
    double Rise(const LetterFormat& format, double height) const {
        return format.rise * (m_dLineHeight - height) / 2;
    }

    void PlaceLetter(char32_t letter, const LetterFormat& format, double height, const DPOINT2& at) {
        m_layout.letters.push_back(
            {&m_font.GlyphOf(letter), {{height * format.width, 0}, {height * format.slant, height}, at}});
    }

    // A bar from a place to the pen; it goes on with the last one where that ends here.
    void PlaceBar(double from, double y) {
        constexpr std::size_t kSides = 3; // a letter has as many bars at most
        const std::span<PlacedBar> bars(m_layout.bars);
        for (PlacedBar& bar : bars.last(std::min(bars.size(), kSides))) {
            if (bar.to.x != from || bar.to.y != y || bar.from.y != y) continue;
            bar.to.x = m_dPen;
            return;
        }
        m_layout.bars.push_back({{from, y}, {m_dPen, y}});
    }

    void PlaceText(std::u32string_view text, const LetterFormat& format, double height, DPOINT2 at) {
        for (const char32_t letter : text) {
            PlaceLetter(letter, format, height, at);
            at.x += m_font.GlyphOf(letter).advance * height * format.width;
        }
    }

    void PlaceStack(const TextItem& item) {
        const double height = kStackHeight * item.format.height;
        const double gap = kStackGap * height;
        const double base = m_dBaseLine + Rise(item.format, 2 * height + gap);
        const double above = AdvanceOf(item.above, height, item.format.width);
        const double below = AdvanceOf(item.below, height, item.format.width);
        const double width = StackWidth(item);
        const bool isSloping = item.bar == '#';
        const double slack = isSloping || item.bar == '^' ? 0 : 0.5; // of the room beside the shorter text
        PlaceText(item.above, item.format, height, {m_dPen + slack * (width - above), base + height + gap});
        PlaceText(item.below, item.format, height,
                  {m_dPen + (isSloping ? width - below : slack * (width - below)), base});
        const double middle = base + height + gap / 2;
        if (item.bar == '/') m_layout.bars.push_back({{m_dPen, middle}, {m_dPen + width, middle}});
        if (isSloping)
            m_layout.bars.push_back(
                {{m_dPen + above, base}, {m_dPen + above + height / 2, base + 2 * height + gap}});
    }

    const TextSetting& m_setting;
    Font& m_font;
    TextLayout m_layout;
    bool m_bIsFirst = true;
    double m_dBaseLine = 0;
    double m_dPen = 0;
    double m_dLineHeight = 0;
};

} // namespace

TextLayout LayOut(const std::vector<TextItem>& items, const TextSetting& setting, Font& font) {
    return Setter(setting, font).Set(items);
}

} // namespace host
