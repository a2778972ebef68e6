// The document's own coordinates are pixels. The drawing is a document within it, whose box is the drawing's:
// the legend and the scale bar beside it so keep a size that can be read, whatever is drawn. Lines are as
// wide on the screen at any zoom (vector-effect), since a width in mm is right for one zoom only; marks grow
// with the drawing. Programs that know no vector-effect (librsvg is one) would take the pixels for mm and
// paint a small part over; so the widths in mm that are right at first come first, and the others stand under
// a condition (@supports) that such programs pass over.
//
// The drawing's y axis points up and SVG's down. One group turns the whole drawing over, rather than every
// coordinate: so the numbers in the file are the drawing's.
//
// A letter's outline is written once and referred to wherever it stands: a drawing of 100,000 texts is 70 MB
// so, and not a gigabyte. The old name of the attribute that refers is the one that every program knows.
//
// Colours are given twice, for a light and for a dark ground, and a media query chooses. Variables of style
// sheets would say it once, but many programs that show SVG do not know them.

#include "svg.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <ostream>
#include <set>
#include <sstream>

#include "host/drawing/glyph_contour.h"
#include "host/report/print.h"
#include "path_text.h"
#include "styles.h"

namespace host {
namespace {

using math::DPOINT2;

constexpr double kLongSide = 1600;   // pixels, of the drawing
constexpr double kLeastWidth = 640;  // pixels, of the legend's widest entry and the scale bar
constexpr double kLegendEntry = 310; // pixels from one entry to the next
constexpr double kLegendLine = 32;   // pixels
constexpr double kSampleWidth = 44;  // pixels, of the line that shows a style

// The characters that end a text of XML, by their names.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    return escaped;
}

// An element's class: its style, and its colour if it has one of its own. The colour's digits name it.
std::string ClassOf(int style, const std::string& colour = "") {
    return TextOf("class='", Styles()[style].name, colour.empty() ? "" : " c" + colour.substr(1), "'");
}

std::string CurveText(int style, const std::string& path, const std::string& colour = "") {
    return TextOf("<path ", ClassOf(style, colour), " d='", path, "'/>\n");
}

std::string SpotText(const Picture::Spot& spot, const std::string& colour = "") {
    const Style& style = Styles()[spot.style];
    const DPOINT2& p = spot.at;
    const double r = spot.radius;
    const DPOINT2 right{r, 0};
    const DPOINT2 up{0, r};
    switch (style.form) {
    case MarkForm::kSquare:
        return TextOf("<rect class='", style.name, "' x='", p.x - r, "' y='", p.y - r, "' width='", 2 * r,
                      "' height='", 2 * r, "'/>\n");
    case MarkForm::kArrow: {
        const DPOINT2 back = p - spot.along * r;
        const DPOINT2 side = math::LeftOf(spot.along) * (r / 3);
        return CurveText(spot.style, TextOf("M", p, "L", back + side, "L", back - side, "Z"));
    }
    case MarkForm::kCross:
        return CurveText(spot.style, TextOf("M", p - right, "L", p + right, "M", p - up, "L", p + up));
    case MarkForm::kDiamond:
        return CurveText(spot.style, TextOf("M", p - right, "L", p + up, "L", p + right, "L", p - up, "Z"));
    default:
        return TextOf("<circle ", ClassOf(spot.style, colour), " cx='", p.x, "' cy='", p.y, "' r='", r,
                      "'/>\n");
    }
}

// The styles that occur, in their order.
std::vector<int> UsedStyles(const Picture& picture) {
    std::vector<bool> isUsed(Styles().size());
    for (const auto& outline : picture.Outlines()) isUsed[outline.style] = true;
    for (const auto& curve : picture.Curves()) isUsed[curve.style] = true;
    for (const auto& spot : picture.Spots()) isUsed[spot.style] = true;
    std::vector<int> used;
    for (std::size_t i = 0; i < isUsed.size(); ++i)
        if (isUsed[i]) used.push_back(static_cast<int>(i));
    return used;
}

// Of the elements with a colour of their own those are filled that are letters.
std::string ColourRules(const std::vector<int>& styles, const std::set<std::string>& own,
                        const char* Style::*colour, const char* ground, const char* ink) {
    std::string rules = TextOf(":root{background:", ground, "}.ground{fill:", ground, "}.ink{stroke:", ink,
                               "}text{fill:", ink, "}");
    for (const int i : styles) {
        const Style& style = Styles()[i];
        const char* const property = IsFilled(style.form) ? "{fill:" : "{stroke:";
        rules += TextOf(".", style.name, property, style.*colour, "}");
    }
    for (const std::string& each : own) {
        const std::string name = each.substr(1), seen = SeenOn(each, ground, ink);
        rules += TextOf("\n.c", name, "{stroke:", seen, "}.text.c", name, "{stroke:none;fill:", seen, "}");
    }
    return rules;
}

// The widths and the dashes of lines within a part of the document, times a factor.
std::string StrokeRules(const std::vector<int>& styles, const char* within, double factor) {
    std::string rules;
    for (const int i : styles) {
        const Style& style = Styles()[i];
        rules += TextOf(within, ".", style.name, "{stroke-width:", style.width * factor, "px");
        std::istringstream dashes(style.dash);
        const char* before = ";stroke-dasharray:";
        double dash = 0;
        while (dashes >> dash) {
            rules += TextOf(before, dash * factor);
            before = " ";
        }
        rules += "}";
    }
    return rules + "\n";
}

std::string StyleSheet(const std::vector<int>& styles, const std::set<std::string>& own, double mmPerPixel) {
    return "<style>\nsvg{max-width:100%;max-height:100vh}text{font:20px "
           "sans-serif}.step{text-anchor:middle}\n"
           "path,circle,rect{fill:none;fill-rule:evenodd;stroke-linejoin:round}\n.glyph{fill:inherit}\n"
           + StrokeRules(styles, "", 1) + StrokeRules(styles, ".drawing ", mmPerPixel)
           + "@supports(vector-effect:non-scaling-stroke){.drawing "
             "*,.glyph{vector-effect:non-scaling-stroke}\n"
           + StrokeRules(styles, ".drawing ", 1) + "}\n"
           + ColourRules(styles, own, &Style::light, kLightGround, Styles()[0].light)
           + "\n@media(prefers-color-scheme:dark){\n"
           + ColourRules(styles, own, &Style::dark, kDarkGround, Styles()[0].dark) + "}\n</style>\n";
}

// The letters of a picture, each of which is written once. A letter is known by the font's outlines of it.
class Glyphs {
public:
    using Outlines = std::vector<const GlyphOutline*>;

    // A letter is one path, so that its holes stay open.
    int NumberOf(const Outlines& outlines) {
        const auto [place, isNew] = m_mapNumbers.try_emplace(outlines, static_cast<int>(m_mapNumbers.size()));
        if (isNew) {
            m_strPaths += TextOf("<path id='g", place->second, "' class='glyph' d='");
            for (const GlyphOutline* outline : outlines) m_strPaths += PathText(outline->segments);
            m_strPaths += "'/>\n";
        }
        return place->second;
    }

    std::string Definitions() const {
        return m_strPaths.empty() ? "" : "<defs>\n" + m_strPaths + "</defs>\n";
    }

private:
    std::map<Outlines, int> m_mapNumbers;
    std::string m_strPaths; // in the order of their numbers, which is that of the drawing
};

// The letters of a text, from contours that follow each other letter by letter: a group for each run of one
// height and direction, with the map of its first letter, in which the others are moved by letter heights.
std::string LettersText(const std::vector<const GlyphContour*>& contours, const std::string& classOf,
                        Glyphs& glyphs) {
    std::string text;
    Affine run;
    for (auto first = contours.begin(); first != contours.end();) {
        const Affine& place = (*first)->Place();
        Glyphs::Outlines outlines;
        for (; first != contours.end() && (*first)->Place() == place; ++first)
            outlines.push_back(&(*first)->Outline());
        const double size = math::Cross(run.x, run.y);
        if (text.empty() || !place.HasSameVectors(run) || size == 0) {
            run = place;
            text += TextOf(text.empty() ? "" : "</g>\n", "<g ", classOf, " transform='matrix(", run.x, " ",
                           run.y, " ", run.shift, ")'>");
        }
        const DPOINT2 way = place.shift - run.shift;
        text += TextOf("<use xlink:href='#g", glyphs.NumberOf(outlines), "'");
        if (math::Norm(way) > 0)
            text +=
                TextOf(" x='", math::Cross(way, run.y) / size, "' y='", math::Cross(run.x, way) / size, "'");
        text += "/>";
    }
    return text.empty() ? text : text + "</g>\n";
}

// An object is a path; the dots in it are marks, and the letters references.
std::string ObjectText(const Picture::Outline& outline, double dotRadius, Glyphs& glyphs) {
    std::string path;
    std::string dots;
    std::vector<const GlyphContour*> letters;
    for (const qev::CCadObject* leaf : LeavesOf(*outline.object))
        if (leaf->GetType() == qev::kCadDot)
            dots += SpotText({outline.style, leaf->GetStartPoint(), dotRadius, {}}, outline.colour);
        else if (const auto* contour = dynamic_cast<const GlyphContour*>(leaf))
            letters.push_back(contour);
        else
            path += PathText(*leaf);
    return (path.empty() ? "" : CurveText(outline.style, path, outline.colour)) + dots
           + LettersText(letters, ClassOf(outline.style, outline.colour), glyphs);
}

void WriteOutlines(const Picture& picture, std::ostream& out) {
    std::vector<std::vector<const Picture::Outline*>> byLayer(picture.Layers().size());
    for (const auto& outline : picture.Outlines()) byLayer[outline.layer].push_back(&outline);
    Glyphs glyphs;
    for (std::size_t layer = 0; layer < byLayer.size(); ++layer) {
        out << "<g><title>layer " << Escaped(picture.Layers()[layer]) << "</title>\n";
        for (const auto* outline : byLayer[layer]) out << ObjectText(*outline, picture.Unit(), glyphs);
        out << "</g>\n";
    }
    out << glyphs.Definitions();
}

void WriteOverlays(const Picture& picture, const std::vector<int>& styles, std::ostream& out) {
    for (const int style : styles) {
        std::string things;
        for (const auto& curve : picture.Curves())
            if (curve.style == style) things += CurveText(style, curve.path);
        for (const auto& spot : picture.Spots())
            if (spot.style == style) things += SpotText(spot);
        if (!things.empty())
            out << "<g><title>" << Styles()[style].title << "</title>\n" << things << "</g>\n";
    }
}

// The numbers of the order of cutting, where the tool comes down.
void WriteSteps(const Picture& picture, std::ostream& out) {
    int number = 0;
    for (const Picture::Step& step : picture.Steps())
        out << TextOf("<text class='step' transform='translate(", step.start,
                      ")scale(1 -1)' style='font-size:", 14 * picture.Unit(), "px'>", ++number, "</text>\n");
}

// The longest of 1, 2 and 5 times a power of ten that is no longer than a length.
double RoundLength(double most) {
    const double power = std::pow(10, std::floor(std::log10(most)));
    return power * (most < 2 * power ? 1 : most < 5 * power ? 2 : 5);
}

// A bar of up to a fifth of the picture's width, with its length.
std::string ScaleBar(double x, double y, double width, double pixelsPerMm) {
    const double pixelsPerUnit = pixelsPerMm / ShownLength(1);
    const double length = RoundLength(width / 5 / pixelsPerUnit);
    return TextOf("<path class='ink' d='M", DPOINT2{x, y - 6}, "v12m0 -6h", length * pixelsPerUnit,
                  "m0 -6v12'/>\n<text x='", x + length * pixelsPerUnit + 8, "' y='", y + 7, "'>", length, " ",
                  UnitName(), "</text>\n");
}

std::string LegendEntry(int index, double x, double y) {
    const Style& style = Styles()[index];
    std::string sample;
    if (style.form == MarkForm::kLine)
        sample = CurveText(index, TextOf("M", DPOINT2{x, y}, "h", kSampleWidth));
    else if (style.form == MarkForm::kArea)
        sample =
            CurveText(index, TextOf("M", DPOINT2{x, y - 7}, "h", kSampleWidth, "v14h", -kSampleWidth, "z"));
    else
        sample =
            SpotText({index, {x + kSampleWidth * 0.7, y}, style.form == MarkForm::kArrow ? 24. : 8., {1, 0}});
    return TextOf(sample, "<text x='", x + kSampleWidth + 8, "' y='", y + 7, "'>", style.title, "</text>\n");
}

} // namespace

void WriteSvg(const Picture& picture, std::ostream& out) {
    const qev::CadRect& box = picture.Box();
    const double scale = kLongSide / std::max(box.width, box.height);
    const double width = std::max(box.width * scale, kLeastWidth);
    const double height = box.height * scale;
    const std::vector<int> styles = UsedStyles(picture);
    const int columns = static_cast<int>(width / kLegendEntry);
    const int rows = (static_cast<int>(styles.size()) + columns - 1) / columns;
    const double whole = height + (rows + 2) * kLegendLine;
    out << TextOf(
        "<svg xmlns='http://www.w3.org/2000/svg' "
        "xmlns:xlink='http://www.w3.org/1999/xlink' role='img' aria-labelledby='title desc' width='",
        width, "' height='", whole, "' viewBox='0 0 ", width, " ", whole, "'>\n<title id='title'>",
        Escaped(picture.Title()), "</title>\n<desc id='desc'>");
    out << picture.Outlines().size() << " objects on " << picture.Layers().size() << " layers</desc>\n"
        << StyleSheet(styles, picture.Colours(), 1 / scale)
        << TextOf("<rect class='ground' width='", width, "' height='", whole, "'/>\n<svg width='", width,
                  "' height='", height, "' viewBox='", box.x, " ", -box.y - box.height, " ", box.width, " ",
                  box.height, "'>\n<g class='drawing' transform='scale(1,-1)'>\n");
    WriteOutlines(picture, out);
    WriteOverlays(picture, styles, out);
    WriteSteps(picture, out);
    out << "</g>\n</svg>\n" << ScaleBar(16, height + kLegendLine / 2, width, scale);
    for (std::size_t i = 0; i < styles.size(); ++i) {
        const std::size_t row = i / columns;
        const std::size_t column = i % columns;
        out << LegendEntry(styles[i], 16 + static_cast<double>(column) * kLegendEntry,
                           height + (static_cast<double>(row) + 1.5) * kLegendLine);
    }
    out << "</svg>\n";
}

} // namespace host
