// A text stands in a drawing by an affine map: from text heights, in which it is set, through its own height,
// slant and mirrors, to its point and direction, and on by the inserts that show it. So its letters are set
// once and each contour gets one map.
//
// A TEXT is one line. It stands by one of fifteen alignments, from two numbers that count along the line and
// across it. Two of them go by two points: "aligned" makes the whole text as large as fits between them,
// "fit" makes its letters as wide. An MTEXT is wrapped, and hangs by one of nine places of its box.
//
// A style gives what a text leaves open: an MTEXT's width factor and slant, and the height of a text
// that has none. A TEXT has its own width factor and slant, 1 and 0 when it does not say.

#include "dxf_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

#include "host/drawing/glyph_contour.h"
#include "host/drawing/outline.h"
#include "host/drawing/text_layout.h"

namespace host {
namespace {

using math::DPOINT2;

constexpr std::size_t kLongestText = 10'000; // bytes
constexpr int kEmbedded = 101;               // the group before a second form of the same entity
constexpr int kBackwards = 2;                // among the flags of texts and styles
constexpr int kUpsideDown = 4;

std::string InCapitals(std::string_view name) {
    std::string capitals(name);
    for (char& c : capitals) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return capitals;
}

// Factors of nought and below, which some programs write, mean nothing.
double FactorOf(double factor) {
    constexpr double kLargest = 1000;
    return factor > 0 ? std::clamp(factor, 1 / kLargest, kLargest) : 1;
}

Affine MirrorOf(int flags) {
    return Affine::Scale(flags & kBackwards ? -1 : 1, flags & kUpsideDown ? -1 : 1);
}

// How a TEXT stands: along the line and across it.
struct Alignment {
    enum Along { kLeft, kCentre, kRight, kAligned, kMiddle, kFit };
    enum Across { kBaseLine, kBottom, kMiddleOfCapitals, kTop };
    int along;
    int across;

    // an ATTRIB has its length in the group 73
    explicit Alignment(const Fields& f)
        : along(f.Integer(72, kLeft)), across(f.Integer(f.Type() == "ATTRIB" ? 74 : 73, kBaseLine)) {}

    bool IsBetweenPoints() const { return along == kAligned || along == kFit; }
    bool IsByFirstPoint() const { return along == kLeft && across == kBaseLine; }

    // Where its point lies in a text that has a width and reaches below its base line, in text heights.
    DPOINT2 Anchor(double width, double depth) const {
        const double x = along == kCentre || along == kMiddle ? width / 2 : along == kRight ? width : 0;
        if (along == kMiddle) return {x, (1 - depth) / 2};
        return {x, across == kBottom ? -depth : across == kMiddleOfCapitals ? 0.5 : across == kTop ? 1 : 0};
    }
};

// Where a TEXT of a height stands that is so many text heights wide and reaches so many below its base line.
Affine LinePlace(const Fields& f, double width, double depth, double height) {
    const Alignment alignment(f);
    const bool hasSecondPoint = f.Find(11) != nullptr;
    const bool isByFirstPoint = alignment.IsByFirstPoint() || alignment.IsBetweenPoints() || !hasSecondPoint;
    const DPOINT2 point = f.Point(isByFirstPoint ? kPoint : 11);
    double angle = math::AngleToRadian(f.Number(50, 0));
    DPOINT2 scale{height, height};
    if (alignment.IsBetweenPoints() && hasSecondPoint && width > 0) {
        const DPOINT2 way = f.Point(11) - point;
        scale.x = math::Norm(way) / width;
        if (alignment.along == Alignment::kAligned) scale.y = scale.x;
        angle = math::D2GetNormalAngle(way);
    }
    return Affine::Translation(point) * Affine::Rotation(angle) * MirrorOf(f.Integer(71, 0))
           * Affine::Scale(scale.x, scale.y) * Affine::Translation(-alignment.Anchor(width, depth));
}

// The direction of an MTEXT: of an angle and a vector the last counts.
DPOINT2 DirectionOf(const Fields& f, double up) {
    DPOINT2 direction{up, 0};
    for (const DxfGroup& group : f.Groups()) {
        if (group.code == kEmbedded) break;
        if (group.code == 11) direction = f.Point(11);
        if (group.code != 50) continue;
        const DPOINT2 turned = math::Rotated({1, 0}, math::AngleToRadian(group.AsNumber()));
        direction = {up * turned.x, turned.y};
    }
    const double length = math::Norm(direction);
    return length > 0 ? direction / length : DPOINT2{up, 0};
}

// How an MTEXT of a height is set that hangs by a column of its box, 0 for the left one.
TextSetting SettingOf(const Fields& f, double height, int column) {
    constexpr std::array<Column, 3> kColumns{Column::kLeft, Column::kCentre, Column::kRight};
    TextSetting setting;
    setting.width = std::max(0.0, f.Number(41, 0)) / height;
    setting.spacing = FactorOf(f.Number(44, 1));
    setting.isSpacingExact = f.Integer(73, 1) == 2;
    setting.column = kColumns[static_cast<std::size_t>(column)];
    return setting;
}

// Where an MTEXT of a height stands that hangs by a row of its box, 0 for the top one. A normal that points
// down mirrors it.
Affine ParagraphsPlace(const Fields& f, const TextLayout& layout, double height, int row) {
    const double y = layout.top + (layout.bottom - layout.top) * row / 2;
    const double up = f.Number(kNormalZ, 1) < 0 ? -1 : 1;
    const DPOINT2 along = DirectionOf(f, up) * height;
    return Affine{along, math::LeftOf(along) * up, f.Point(kPoint)} * Affine::Translation({0, -y});
}

// A bar as a closed contour, like those of the letters, in text heights.
std::vector<qev::SEGMENT> OutlineOf(const PlacedBar& bar) {
    constexpr double kHalfHeight = 0.03; // half of what the font has for a line under letters
    const DPOINT2 way = bar.to - bar.from;
    const double length = math::Norm(way);
    const DPOINT2 side = length > 0 ? math::LeftOf(way) * (kHalfHeight / length) : DPOINT2{};
    const std::array<DPOINT2, 4> corners{bar.from - side, bar.to - side, bar.to + side, bar.from + side};
    std::vector<qev::SEGMENT> segments;
    for (std::size_t i = 0; i < corners.size(); ++i)
        segments.emplace_back(corners[i], corners[(i + 1) % corners.size()]);
    return segments;
}

} // namespace

// What the file declares, and the font, at the first text.
bool DxfTexts::Open() {
    if (m_bOpen) return m_pFont != nullptr;
    m_bOpen = true;
    m_pFont = Font::Open();
    for (const DxfEntity& record : m_file.TableRecords()) {
        const std::vector<DxfGroup> groups = m_file.GroupsOf(record);
        const Fields fields(groups);
        if (fields.Type() == "STYLE") m_mapStyles[InCapitals(fields.Text(2))] = record;
    }
    return m_pFont != nullptr;
}

DxfTexts::Style DxfTexts::StyleOf(const Fields& fields) const {
    const DxfGroup* name = fields.Find(7);
    const auto found = m_mapStyles.find(name ? InCapitals(name->text) : "STANDARD");
    if (found == m_mapStyles.end()) return {};
    const std::vector<DxfGroup> groups = m_file.GroupsOf(found->second);
    const Fields style(groups);
    return {style.Number(40, 0), FactorOf(style.Number(41, 1)), SlantOf(style.Number(50, 0))};
}

// Long texts are split: the groups 3 come before the group 1. They are put together before they are decoded,
// as the split may lie within a letter.
std::string DxfTexts::TextOf(const Fields& fields) const {
    std::string text;
    for (const DxfGroup& group : fields.Groups()) {
        if (group.code == kEmbedded) break;
        if (group.code == 1 || group.code == 3) text += group.text;
    }
    if (text.size() > kLongestText)
        fields.Fail("has a text of " + std::to_string(text.size()) + " characters");
    return m_encoding.TextOf(text);
}

double DxfTexts::HeightOf(const Fields& fields) const {
    const double own = fields.Number(40, 0);
    const double height = own > 0 ? own : StyleOf(fields).height;
    if (height <= 0) fields.Fail("has no height");
    return height;
}

struct DxfTexts::Text {
    std::vector<TextItem> items;
    TextLayout layout; // in text heights
    Affine place;      // of the layout in the drawing, or in its block
};

DxfTexts::Text DxfTexts::LineOf(const Fields& f) const {
    LetterFormat format;
    format.width = FactorOf(f.Number(41, 1));
    format.slant = SlantOf(f.Number(51, 0));
    Text text{ParseTextLine(TextOf(f), format), {}, {}};
    text.layout = LayOut(text.items, {}, *m_pFont);
    text.place = LinePlace(f, text.layout.width, m_pFont->Depth(), HeightOf(f));
    return text;
}

DxfTexts::Text DxfTexts::ParagraphsOf(const Fields& f) const {
    const Style style = StyleOf(f);
    const double height = HeightOf(f);
    const int attachment = std::clamp(f.Integer(71, 1), 1, 9) - 1; // row by row from the upper left
    LetterFormat format;
    format.width = style.width;
    format.slant = style.slant;
    Text text{ParseParagraphs(TextOf(f), format, height), {}, {}};
    text.layout = LayOut(text.items, SettingOf(f, height, attachment % 3), *m_pFont);
    text.place = ParagraphsPlace(f, text.layout, height, attachment / 3);
    return text;
}

std::unique_ptr<qev::CCadText> DxfTexts::Make(const Fields& fields, const Affine& map) {
    if (!Open()) return nullptr;
    const Text text = fields.Type() == "MTEXT" ? ParagraphsOf(fields) : LineOf(fields);
    const Affine place = map * text.place;
    if (!place.IsUsable()) fields.Fail("is scaled or moved out of range");
    auto object = std::make_unique<qev::CCadText>(PlainText(text.items).c_str());
    Draw(text.layout, place, *object->GetTextGroup());
    return object;
}

// Adds what draws a text to its group, which owns it.
void DxfTexts::Draw(const TextLayout& layout, const Affine& place, qev::CCadGroup& group) {
    for (const PlacedLetter& letter : layout.letters) {
        if (letter.glyph->isLacking) ++m_nLacking;
        for (const auto& contour : letter.glyph->contours)
            group.PushBack(new GlyphContour(contour, place * letter.place));
    }
    for (const PlacedBar& bar : layout.bars) group.PushBack(MakeContour(OutlineOf(bar), place).release());
}

} // namespace host
