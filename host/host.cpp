#include "host.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <ostream>
#include <span>

#include <qev/units.h>

#include <qevtechnics/parameters.h>

#include "host/actions/start_zones.h"
#include "host/drawing/join.h"
#include "host/drawing/overlaps.h"
#include "host/drawing/unicode.h"
#include "host/dxf/dxf_objects.h"
#include "host/path/path_file.h"
#include "host/picture/page.h"
#include "host/picture/svg.h"
#include "host/report/layer_table.h"
#include "host/report/output_file.h"
#include "host/report/plan_table.h"
#include "host/report/progress.h"
#include "host/report/records.h"
#include "options.h"

namespace host {
namespace {

// What a run has in common over its drawings.
struct Streams {
    std::ostream& out;    // what was asked for
    std::ostream& words;  // what people read: `out` unless a program reads that
    std::ostream& errors; // what is wrong, and progress
    bool isTerminal;      // whether errors go to one
};

// Writes a file with what `write` puts into it, and says so. Without a path nothing is asked for.
template <class Write>
void WriteFile(const char* what, const std::string& path, const Streams& to, Write write) {
    if (path.empty()) return;
    {
        const Progress progress(path + ": writing", to.errors, to.isTerminal);
        OutputFile file(path, what);
        write(file.Stream());
        file.Keep();
    }
    to.words << what << ": " << path << "\n";
}

// What was read and found out of a drawing. It stays where it is, as its reports point into it.
struct Read {
    Drawing drawing;
    std::vector<ObjectReport> reports;
    std::optional<CuttingPlan> plan;
};

void PlanIfAsked(const Options& options, Read& read, const std::string& name, const Streams& to) {
    if (!options.order) return;
    {
        const Progress progress(name + ": planning", to.errors, to.isTerminal);
        read.plan = PlanCuts(read.drawing, options.speeds);
    }
    if (options.form == Form::kTable) PrintPlan(to.out, *read.plan, options.rows);
}

// Draws in the order in which the picture is to be seen: outlines first, then what lies over them.
void Act(const Options& options, Read& read, const std::string& name, const Streams& to) {
    std::ostream& words = to.words;
    const Drawing& drawing = read.drawing;
    const std::vector<ObjectReport>& reports = read.reports;
    Picture picture(name.substr(name.find_last_of("/\\") + 1), drawing.root.GetBoundRect());
    // a picture of a large drawing takes more memory than it
    const bool isDrawn = !options.svg.empty() || !options.html.empty();
    for (const ObjectReport& report : reports)
        if (isDrawn) picture.DrawObject(report);
    if (options.polylineError) DrawConverted(reports, *options.polylineError, picture, words);
    for (const ObjectReport& report : reports)
        if (isDrawn) picture.Mark(report);
    if (options.startZones)
        DrawStartZones(reports, *options.startZones, options.cornerDegrees, picture, words);
    if (options.groups) DrawGroups(reports, picture, words);
    if (options.cut) DrawCut(reports, *options.cut, picture, words);
    // without a pick the walk is on the first object, and technics are on all
    const int picked = options.pick ? DrawPick(drawing, reports, *options.pick, picture, words) : 0;
    if (options.walk) DrawWalk(reports, picked, *options.walk, picture, words);
    RunTechnics(options.technics, drawing, options.pick ? reports[picked].object : nullptr, picture, words);
    PlanIfAsked(options, read, name, to);
    const CuttingPlan* const plan = read.plan ? &*read.plan : nullptr;
    if (plan && isDrawn)
        for (const Cut& cut : plan->cuts) picture.AddStep(cut.object, cut.start, cut.end);
    WriteFile("tool paths", options.dxf, to, [&](std::ostream& file) { WritePathFile(file, drawing, plan); });
    WriteFile("picture", options.svg, to, [&](std::ostream& file) { WriteSvg(picture, file); });
    WriteFile("page", options.html, to, [&](std::ostream& file) { WritePage(picture, reports, file); });
}

// Counts what would be cut twice, and names the first of it.
void RemarkOverlaps(Drawing& drawing, bool acrossLayers, ErrorLog& log) {
    constexpr std::size_t kMostNamed = 5;
    const std::vector<Overlap> overlaps = FindOverlaps(drawing, acrossLayers);
    drawing.counts.overlaps = static_cast<int>(overlaps.size());
    for (const Overlap& each : std::span(overlaps).first(std::min(kMostNamed, overlaps.size())))
        log.Remark("objects " + std::to_string(each.first) + " and " + std::to_string(each.second) + " share "
                   + qev::kit::ShortestText(std::round(each.length * 1e3) / 1e3)
                   + " mm of straight sides, which would be cut twice");
    if (overlaps.size() > kMostNamed)
        log.Remark("and " + std::to_string(overlaps.size() - kMostNamed) + " more pairs of objects");
}

void ReadDrawing(const std::string& name, const Options& options, const Streams& to, ErrorLog& log,
                 Read& read) {
    const Progress progress(name + ": reading", to.errors, to.isTerminal);
    const ReadSettings& reading = options.reading;
    ReadDxf(name, log, read.drawing, reading);
    read.drawing.counts.joined =
        JoinOpenPieces(read.drawing.root, reading.joinTolerance, reading.joinAcrossLayers);
    RemarkOverlaps(read.drawing, reading.joinAcrossLayers, log);
    read.reports = ReportOf(read.drawing);
}

void Show(const Options& options, Read& read, const Streams& to, const std::string& name) {
    if (options.form == Form::kTable) {
        if (options.drawings.size() > 1) to.out << name << ":\n";
        PrintTable(to.out, read.reports, options.rows);
        PrintSummary(to.out, read.drawing, read.reports);
        if (options.listLayers) PrintLayers(to.out, read.drawing);
    }
    Act(options, read, name, to);
}

// Reads and shows a drawing; the record takes what is wrong.
Exit Work(const std::string& name, const Options& options, const Streams& to, Read& read, Record& record) {
    ErrorLog log(options.lenient);
    try {
        ReadDrawing(name, options, to, log, read);
        Show(options, read, to, name);
    } catch (const DrawingError& error) {
        record.result = "refused";
        record.errors = {FromBridge(error.what())};
        return Exit::kRefused;
    }
    record.errors = log.Errors();
    record.remarks = log.Remarks();
    if (log.Unkept()) record.errors.push_back("and " + std::to_string(log.Unkept()) + " more errors");
    record.drawing = &read.drawing;
    record.reports = &read.reports;
    if (read.plan) record.plan = &*read.plan;
    record.result = record.errors.empty() ? "whole" : "in part";
    return record.errors.empty() ? Exit::kWhole : Exit::kInPart;
}

Exit Run(const std::string& name, const Options& options, const Streams& to) {
    Read read;
    Record record;
    record.name = name;
    const Exit exit = Work(name, options, to, read, record);
    if (options.form == Form::kJson) WriteJson(to.out, record);
    if (options.form == Form::kCsv) WriteCsv(to.out, record);
    for (const auto* lines : {&record.remarks, &record.errors})
        for (const std::string& line : *lines) to.errors << name << ": " << line << "\n";
    return exit;
}

// The options for one of the drawings: "{}" in the names of files that are written or loaded stands for the
// drawing's path without its extension.
Options OptionsFor(const std::string& name, Options options) {
    const std::size_t dot = name.find_last_of("./\\");
    const bool hasExtension = dot != std::string::npos && name[dot] == '.';
    for (std::string* path : options.PathsOfDrawings())
        if (const std::size_t place = path->find("{}"); place != std::string::npos)
            path->replace(place, 2, name.substr(0, hasExtension ? dot : name.size()));
    return options;
}

Exit Worse(Exit a, Exit b) {
    const auto either = [a, b](Exit exit) { return a == exit || b == exit; };
    if (either(Exit::kRefused)) return Exit::kRefused;
    return either(Exit::kInPart) ? Exit::kInPart : Exit::kWhole;
}

Exit RunAll(const Options& options, const Streams& to) {
    UnitSystem::GetUnitSystem()->Load(options.unit);
    if (options.form == Form::kCsv) WriteCsvHead(to.out, options.order);
    Exit worst = Exit::kWhole;
    for (const std::string& name : options.drawings)
        worst = Worse(worst, Run(name, OptionsFor(name, options), to));
    return worst;
}

} // namespace

int Main(int argc, const char* const* argv, std::ostream& out, std::ostream& errors, bool isTerminal) {
    try {
        const Options options = ParseOptions(argc, argv);
        out << options.answer;
        if (!options.answer.empty()) return static_cast<int>(Exit::kWhole);
        std::ostream& words = options.form == Form::kTable ? out : errors;
        const Exit exit = RunAll(options, {out, words, errors, isTerminal});
        if (out.flush()) return static_cast<int>(exit);
        errors << "qev_host: the standard output cannot be written\n";
        return static_cast<int>(Exit::kRefused);
    } catch (const UsageError& error) {
        errors << "qev_host: " << error.what() << " (--help lists the options)\n";
        return static_cast<int>(Exit::kUsage);
    }
}

} // namespace host
