// The table of a drawing. The library answers each column; only two need more than a call.
//
// Area and sharp corners are asked of the polyline that the object converts to, so that they mean the same
// for every kind: corners are joints of segments, and an ellipse has none to ask. The conversion keeps lines
// and arcs as they are, so that areas of contours are exact; a curve's lies within its length times the
// conversion error. Where two tangent arcs of a converted curve meet, the turn is far below a sharp corner's.
//
// The names of the kinds are the host's own. The library's kind codes have none, as a message to a user is in
// the user's language and a name here is not.

#include "report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <string>

#include <qevtechnics/stretches.h>

#include "print.h"

namespace host {

const char* KindName(qev::cad_t kind) {
    const std::pair<qev::cad_t, const char*> names[] = {
        {qev::kCadDot, "dot"},           {qev::kCadLine, "line"},
        {qev::kCadCircle, "circle"},     {qev::kCadArc, "arc"},
        {qev::kCadEllipse, "ellipse"},   {qev::kCadEllipseArc, "elliptic arc"},
        {qev::kCadPolyline, "polyline"}, {qev::kCadPolylineEx, "polyline with curves"},
        {qev::kCadText, "text"},
    };
    for (const auto& [code, name] : names)
        if (code == kind) return name;
    return "?";
}

const char* DirectionName(int direction) {
    constexpr std::array<const char*, 3> kNames{"", "cw", "ccw"};
    return kNames.at(direction);
}

const char* SourceName(UnitSource source) {
    switch (source) {
    case UnitSource::kHint:
        return "assumed, though the file says that it is imperial";
    case UnitSource::kFile:
        return "as the file says";
    case UnitSource::kSettings:
        return "as asked";
    default:
        return "assumed";
    }
}

std::string LayerOf(const qev::CCadObject& object) {
    return object.GetKey("Layer").GetString();
}

namespace {

// The joints that turn sharply. An open polyline has none at its start, where nothing comes before.
void CollectCorners(const qev::CCadPolyline& polyline, std::vector<math::DPOINT2>& corners) {
    const double sharp = math::AngleToRadian(qev::kit::kSharpCornerDegrees);
    const int count = polyline.GetSegmentCount();
    for (int i = polyline.IsClose() ? 0 : 1; i < count; ++i)
        if (std::abs(qev::GetCornerAngle(&polyline, i)) >= sharp)
            corners.push_back(polyline.GetSegment(i).ptStart);
}

ObjectReport ReportOfObject(const qev::CCadObject* object) {
    ObjectReport report;
    report.object = object;
    report.segments = qev::GetCadSegments(object);
    report.length = qev::GetCadLength(object);
    report.closed = qev::IsClose(object);
    report.direction = qev::GetCadOBjectDir(object);
    const std::unique_ptr<qev::CCadPolyline> polyline(
        qev::Convert2Polyline(object, qev::kit::kConversionError));
    if (!polyline) return report;
    if (object->IsClose()) report.area = qev::GetCadPolylineArea(polyline.get(), false);
    CollectCorners(*polyline, report.corners);
    return report;
}

} // namespace

std::vector<ObjectReport> ReportOf(const Drawing& drawing) {
    std::vector<ObjectReport> reports;
    const std::vector<const qev::CCadObject*> objects = drawing.Objects();
    reports.reserve(objects.size());
    for (const qev::CCadObject* object : objects) reports.push_back(ReportOfObject(object));
    return reports;
}

Summary SummaryOf(const Drawing& drawing, const std::vector<ObjectReport>& reports) {
    Summary sum;
    for (const ObjectReport& r : reports) {
        ++sum.kinds[KindName(r.object->GetType())];
        const bool isContour = r.segments > 0; // dots and texts have a closedness too, but are no contours
        if (isContour) sum.length += r.length;
        if (isContour && r.closed == 1) ++sum.closed;
        sum.corners += static_cast<int>(r.corners.size());
    }
    sum.low = qev::GetCornerPoint(&drawing.root.GetObjectsList(), "BL");
    sum.high = qev::GetCornerPoint(&drawing.root.GetObjectsList(), "TR");
    return sum;
}

void PrintTable(std::ostream& out, const std::vector<ObjectReport>& reports, int rows) {
    const std::string unit = UnitName();
    Print(out, "%6s  %-20s %8s %14s  %-6s %-9s %16s %7s  %s\n", "object", "kind", "segments",
          ("length " + unit).c_str(), "closed", "direction", ("area " + unit + "2").c_str(), "corners",
          "layer");
    const int count = static_cast<int>(reports.size());
    for (int i = 0; i < std::min(rows, count); ++i) {
        const ObjectReport& r = reports[i];
        Print(out, "%6d  %-20s %8d %14.*f  %-6s %-9s ", i, KindName(r.object->GetType()), r.segments,
              UnitDigits(), ShownLength(r.length), r.closed == 1 ? "yes" : "no", DirectionName(r.direction));
        if (r.area > 0) // what is open leaves the column empty
            Print(out, "%16.*f", UnitDigits(), ShownArea(r.area));
        else
            Print(out, "%16s", "");
        Print(out, " %7d  ", static_cast<int>(r.corners.size()));
        out << OneLine(LayerOf(*r.object)) << "\n";
    }
    if (rows < count) Print(out, "        ... and %d more\n", count - rows);
}

namespace {

// What was done with the file's geometry, a line for each way that met anything. The joined pieces stand with
// the contours.
void PrintCounts(std::ostream& out, const Drawing& drawing) {
    for (const auto& [type, count] : drawing.skipped)
        Print(out, "not drawn: %d %s\n", count, type.substr(0, 60).c_str());
    for (const ReadCountRow& row : kReadCounts) {
        const int count = drawing.counts.*row.count;
        if (count > 0 && row.count != &ReadCounts::joined) Print(out, "%d %s\n", count, row.words);
    }
}

} // namespace

void PrintSummary(std::ostream& out, const Drawing& drawing, const std::vector<ObjectReport>& reports) {
    const Summary sum = SummaryOf(drawing, reports);
    const int digits = UnitDigits();
    Print(out, "%d objects:", static_cast<int>(reports.size()));
    for (const auto& [name, count] : sum.kinds)
        Print(out, " %d %s%s", count, name.c_str(), name == sum.kinds.rbegin()->first ? "" : ",");
    Print(out, "\n%d closed contours, %.*f %s of contour, %d sharp corners, %d pieces joined\n", sum.closed,
          digits, ShownLength(sum.length), UnitName(), sum.corners, drawing.counts.joined);
    Print(out, "from (%.*f, %.*f) to (%.*f, %.*f)\n", digits, ShownLength(sum.low.x), digits,
          ShownLength(sum.low.y), digits, ShownLength(sum.high.x), digits, ShownLength(sum.high.y));
    Print(out, "unit of the file: %s (%s)\n", drawing.unit.name.c_str(), SourceName(drawing.unit.source));
    PrintCounts(out, drawing);
}

} // namespace host
