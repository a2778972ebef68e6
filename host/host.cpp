#include "host.h"

#include <fstream>
#include <ostream>

#include "host/actions/start_zones.h"
#include "host/drawing/join.h"
#include "host/dxf/dxf_objects.h"

namespace host {
namespace {

void WritePicture(const SvgPicture& picture, const std::string& path, std::ostream& out) {
    std::ofstream file(path, std::ios::binary);
    picture.Write(file);
    file.close();
    if (!file) throw DrawingError("the picture " + path + " cannot be written");
    out << "picture: " << path << "\n";
}

// Prints and draws in the order in which the picture is to be seen: outlines first, then what lies over them.
void Show(const Options& options, const Drawing& drawing, int joined, std::ostream& out) {
    const std::vector<ObjectReport> reports = ReportOf(drawing);
    PrintTable(out, reports, options.rows);
    PrintSummary(out, drawing, reports, joined);
    SvgPicture picture(drawing.root.GetBoundRect());
    const bool isDrawn = !options.svg.empty(); // a picture of a large drawing takes more memory than it
    for (const ObjectReport& report : reports)
        if (isDrawn)
            picture.Draw(*report.object, report.object->GetType() == qev::kCadText ? "text" : "outline");
    if (options.polylineError) DrawConverted(reports, *options.polylineError, picture, out);
    for (const ObjectReport& report : reports)
        if (isDrawn) picture.Mark(report);
    if (options.startZones) DrawStartZones(reports, *options.startZones, options.cornerDegrees, picture, out);
    if (options.cut) DrawCut(reports, *options.cut, picture, out);
    // without a pick the walk is on the first object, and technics are on all
    const int picked = options.pick ? DrawPick(drawing, reports, *options.pick, picture, out) : 0;
    if (options.walk) DrawWalk(reports, picked, *options.walk, picture, out);
    RunTechnics(options.technics, drawing, options.pick ? reports[picked].object : nullptr, picture, out);
    if (isDrawn) WritePicture(picture, options.svg, out);
}

} // namespace

int Run(const Options& options, std::ostream& out, std::ostream& errors) {
    ErrorLog log(options.lenient);
    try {
        Drawing drawing;
        ReadDxf(options.drawing, log, drawing);
        const int joined = JoinOpenPieces(drawing.root, options.joinTolerance);
        Show(options, drawing, joined, out);
    } catch (const DrawingError& error) {
        errors << options.drawing << ": " << error.what() << "\n";
        return 1;
    }
    for (const std::string& error : log.Errors()) errors << options.drawing << ": " << error << "\n";
    if (log.Unkept()) errors << options.drawing << ": and " << log.Unkept() << " more errors\n";
    return log.Errors().empty() ? 0 : 1;
}

} // namespace host
