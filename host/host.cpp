#include "host.h"

#include <fstream>
#include <ostream>

#include <qev/units.h>

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

Exit Worse(Exit a, Exit b) {
    const auto either = [a, b](Exit exit) { return a == exit || b == exit; };
    if (either(Exit::kRefused)) return Exit::kRefused;
    return either(Exit::kInPart) ? Exit::kInPart : Exit::kWhole;
}

} // namespace

Exit Run(const std::string& drawing, const Options& options, std::ostream& out, std::ostream& errors) {
    ErrorLog log(options.lenient);
    try {
        Drawing read;
        ReadDxf(drawing, log, read);
        const int joined = JoinOpenPieces(read.root, options.joinTolerance);
        if (options.drawings.size() > 1) out << drawing << ":\n";
        Show(options, read, joined, out);
    } catch (const DrawingError& error) {
        errors << drawing << ": " << error.what() << "\n";
        return Exit::kRefused;
    }
    for (const std::string& error : log.Errors()) errors << drawing << ": " << error << "\n";
    if (log.Unkept()) errors << drawing << ": and " << log.Unkept() << " more errors\n";
    return log.Errors().empty() ? Exit::kWhole : Exit::kInPart;
}

int Main(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    Options options;
    try {
        options = ParseOptions(argc, argv);
    } catch (const UsageError& error) {
        errors << "qev_host: " << error.what() << " (--help lists the options)\n";
        return static_cast<int>(Exit::kUsage);
    }
    if (!options.answer.empty()) {
        out << options.answer;
        return static_cast<int>(Exit::kWhole);
    }
    UnitSystem::GetUnitSystem()->Load(options.unit);
    Exit worst = Exit::kWhole;
    for (const std::string& drawing : options.drawings)
        worst = Worse(worst, Run(drawing, options, out, errors));
    return static_cast<int>(worst);
}

} // namespace host
