#include "report.h"

#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <ostream>

#include <qev/qev.h>

#include "units.h"

namespace host {
namespace {

// mm: small against any machining tolerance, so that areas and corners are those of the drawing.
constexpr double kConversionError = 0.001;
// Radians (30 degrees): what the host calls a sharp corner.
constexpr double kSharpCorner = math::kPi / 6;

const char* NameOf(qev::cad_t kind) {
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

void CollectCorners(const qev::CCadPolyline& polyline, std::vector<math::DPOINT2>& corners) {
    const int count = polyline.GetSegmentCount();
    for (int i = polyline.IsClose() ? 0 : 1; i < count; ++i)
        if (std::abs(qev::GetCornerAngle(&polyline, i)) >= kSharpCorner)
            corners.push_back(polyline.GetSegment(i).ptStart);
}

ObjectReport ReportOfObject(const qev::CCadObject* object) {
    ObjectReport report{object,
                        qev::GetCadSegments(object),
                        qev::GetCadLength(object),
                        qev::IsClose(object),
                        qev::GetCadOBjectDir(object),
                        0,
                        {}};
    const std::unique_ptr<qev::CCadPolyline> polyline(qev::Convert2Polyline(object, kConversionError));
    if (!polyline) return report;
    if (object->IsClose()) report.area = qev::GetCadPolylineArea(polyline.get(), false);
    CollectCorners(*polyline, report.corners);
    return report;
}

[[gnu::format(printf, 2, 3)]] void Print(std::ostream& out, const char* format, ...) {
    std::array<char, 256> line{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line.data(), line.size(), format, arguments);
    va_end(arguments);
    out << line.data();
}

} // namespace

std::vector<ObjectReport> ReportOf(const Drawing& drawing) {
    std::vector<ObjectReport> reports;
    for (const qev::CCadObject* object : drawing.Objects()) reports.push_back(ReportOfObject(object));
    return reports;
}

void PrintTable(std::ostream& out, const std::vector<ObjectReport>& reports, int rows) {
    const char* const directions[] = {"", "cw", "ccw"};
    const std::string unit = UnitName();
    Print(out, "%6s  %-20s %8s %14s  %-6s %-9s %16s %7s\n", "object", "kind", "segments",
          ("length " + unit).c_str(), "closed", "direction", ("area " + unit + "2").c_str(), "corners");
    const int count = static_cast<int>(reports.size());
    for (int i = 0; i < std::min(rows, count); ++i) {
        const ObjectReport& r = reports[i];
        std::array<char, 32> area{};
        if (r.area > 0) std::snprintf(area.data(), area.size(), "%.*f", UnitDigits(), ShownArea(r.area));
        Print(out, "%6d  %-20s %8d %14.*f  %-6s %-9s %16s %7d\n", i, NameOf(r.object->GetType()), r.segments,
              UnitDigits(), ShownLength(r.length), r.closed == 1 ? "yes" : "no", directions[r.direction],
              area.data(), static_cast<int>(r.corners.size()));
    }
    if (rows < count) Print(out, "        ... and %d more\n", count - rows);
}

void PrintSummary(std::ostream& out, const Drawing& drawing, const std::vector<ObjectReport>& reports,
                  int joined) {
    std::map<std::string, int> kinds;
    double length = 0;
    int closed = 0;
    int corners = 0;
    for (const ObjectReport& r : reports) {
        ++kinds[NameOf(r.object->GetType())];
        const bool isContour = r.segments > 0;
        if (isContour) length += r.length;
        if (isContour && r.closed == 1) ++closed;
        corners += static_cast<int>(r.corners.size());
    }
    Print(out, "%d objects:", static_cast<int>(reports.size()));
    for (const auto& [name, count] : kinds)
        Print(out, " %d %s%s", count, name.c_str(), name == kinds.rbegin()->first ? "" : ",");
    Print(out, "\n%d closed contours, %.*f %s of contour, %d sharp corners, %d pieces joined\n", closed,
          UnitDigits(), ShownLength(length), UnitName(), corners, joined);
    const math::DPOINT2 low = qev::GetCornerPoint(&drawing.root.GetObjectsList(), "BL");
    const math::DPOINT2 high = qev::GetCornerPoint(&drawing.root.GetObjectsList(), "TR");
    const int digits = UnitDigits();
    Print(out, "from (%.*f, %.*f) to (%.*f, %.*f)\n", digits, ShownLength(low.x), digits, ShownLength(low.y),
          digits, ShownLength(high.x), digits, ShownLength(high.y));
    for (const auto& [type, count] : drawing.skipped)
        Print(out, "not drawn: %d %s\n", count, type.substr(0, 60).c_str());
}

} // namespace host
