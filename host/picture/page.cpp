// The page is a fixed text around the drawing's data, which are JSON: rows of numbers and texts, and the
// outlines as SVG path data, the shortest form that keeps lines, arcs and curves apart. The page's script
// reads them once into arrays. Nothing of the drawing is written as HTML: a script puts names into the page
// as texts. Inside the page only one thing could end the data early, "</script>" in a name, and "<" is
// written as an escape of JSON for that reason.
//
// Rows are written one by one. A document of the whole drawing in memory would take some twenty times the
// drawing.

#include "page.h"

#include <ostream>

#include <nlohmann/json.hpp>

#include "host/report/print.h"
#include "page_template.h"
#include "path_text.h"
#include "styles.h"

namespace host {
namespace {

using Json = nlohmann::json;

void Write(std::ostream& out, const Json& value) {
    for (const char c : value.dump(-1, ' ', false, Json::error_handler_t::replace))
        if (c == '<')
            out << "\\u003c";
        else
            out << c;
}

void WriteMember(std::ostream& out, const char* name, const Json& value) {
    out << "\"" << name << "\":";
    Write(out, value);
}

// A member of the data whose value is a list, one row a line.
template <class Rows, class RowOf>
void WriteRows(std::ostream& out, const char* name, const Rows& rows, RowOf rowOf) {
    out << ",\n\"" << name << "\":[";
    const char* separator = "\n";
    for (const auto& row : rows) {
        out << separator;
        Write(out, rowOf(row));
        separator = ",\n";
    }
    out << "]";
}

Json StyleRow(const Style& style) {
    const std::array forms = {"line", "area", "ring", "disc", "square", "arrow", "cross", "diamond"};
    return {{"name", style.name},
            {"title", style.title},
            {"light", style.light},
            {"dark", style.dark},
            {"width", style.width},
            {"dash", style.dash},
            {"form", forms.at(static_cast<std::size_t>(style.form))},
            {"isFilled", IsFilled(style.form)}};
}

std::string PathOf(const qev::CCadObject& object) {
    std::string path;
    for (const qev::CCadObject* leaf : LeavesOf(object))
        path += leaf->GetType() == qev::kCadDot ? TextOf("M", leaf->GetStartPoint()) : PathText(*leaf);
    return path;
}

Json ObjectRow(const ObjectReport& report, const Picture::Outline& outline) {
    return {KindName(report.object->GetType()),
            outline.layer,
            outline.style,
            report.segments,
            report.length,
            report.area,
            report.closed == 1,
            report.direction,
            report.corners.size(),
            report.object->GetTechnicsList().size(),
            outline.colour,
            PathOf(*report.object)};
}

void WriteData(const Picture& picture, const std::vector<ObjectReport>& reports, std::ostream& out) {
    const qev::CadRect& box = picture.Box();
    out << "{";
    WriteMember(out, "name", picture.Title());
    out << ",";
    WriteMember(out, "unit", UnitName());
    out << ",";
    WriteMember(out, "digits", UnitDigits());
    out << ",";
    WriteMember(out, "perMm", ShownLength(1));
    out << ",";
    WriteMember(out, "box", {box.x, box.y, box.width, box.height});
    out << ",";
    Json colours = Json::object(); // as they are seen on a light and on a dark ground
    for (const std::string& colour : picture.Colours())
        colours[colour] = {SeenOn(colour, kLightGround, Styles()[0].light),
                           SeenOn(colour, kDarkGround, Styles()[0].dark)};
    WriteMember(out, "colours", colours);
    WriteRows(out, "styles", Styles(), StyleRow);
    WriteRows(out, "layers", picture.Layers(), [](const std::string& layer) { return Json(layer); });
    const auto* outline = picture.Outlines().data();
    WriteRows(out, "objects", reports,
              [&outline](const auto& report) { return ObjectRow(report, *outline++); });
    WriteRows(out, "curves", picture.Curves(), [](const Picture::Curve& curve) {
        return Json{curve.style, curve.path};
    });
    WriteRows(out, "spots", picture.Spots(), [](const Picture::Spot& spot) {
        return Json{spot.style, spot.at.x, spot.at.y, spot.radius, spot.along.x, spot.along.y};
    });
    WriteRows(out, "steps", picture.Steps(), [](const Picture::Step& step) {
        return Json{step.object, step.start.x, step.start.y};
    });
    out << "\n}";
}

} // namespace

void WritePage(const Picture& picture, const std::vector<ObjectReport>& reports, std::ostream& out) {
    const std::size_t mark = kPageTemplate.find(kPageDataMark);
    out << kPageTemplate.substr(0, mark);
    WriteData(picture, reports, out);
    out << kPageTemplate.substr(mark + kPageDataMark.size());
}

} // namespace host
