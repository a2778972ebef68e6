#include "host.h"

#include <fstream>
#include <memory>
#include <optional>
#include <ostream>

#include <qev/qev.h>

#include "drawing.h"
#include "report.h"
#include "svg.h"

namespace host {
namespace {

// mm: what is cut out of an object that is no segment contour is cut out of its polyline.
constexpr double kCutError = 0.001;

void DrawConverted(const std::vector<ObjectReport>& reports, double error, SvgPicture& picture,
                   std::ostream& out) {
    int converted = 0;
    int segments = 0;
    for (const ObjectReport& report : reports) {
        const std::unique_ptr<qev::CCadPolyline> polyline(qev::Convert2Polyline(report.object, error));
        if (!polyline) continue;
        ++converted;
        segments += polyline->GetSegmentCount();
        picture.Draw(*polyline, "converted");
        picture.MarkJoints(*polyline, "joint");
    }
    out << converted << " objects converted within " << error << " mm: " << segments << " lines and arcs\n";
}

// The contour that positions of an object refer to: the object itself, or the polyline it converts to.
std::unique_ptr<qev::CCadMultiSegments> ContourOf(const qev::CCadObject& object) {
    if (dynamic_cast<const qev::CCadMultiSegments*>(&object))
        return std::unique_ptr<qev::CCadMultiSegments>(
            static_cast<qev::CCadMultiSegments*>(object.Clone(false)));
    return std::unique_ptr<qev::CCadMultiSegments>(qev::Convert2Polyline(&object, kCutError));
}

void DrawCut(const std::vector<ObjectReport>& reports, const CutOption& cut, SvgPicture& picture,
             std::ostream& out) {
    if (cut.object < 0 || cut.object >= static_cast<int>(reports.size()))
        throw DrawingError("there is no object " + std::to_string(cut.object));
    const auto contour = ContourOf(*reports[cut.object].object);
    if (!contour) throw DrawingError("object " + std::to_string(cut.object) + " cannot be cut");
    const math::PosRange range(qev::DoubleToPolyPos(contour.get(), cut.from),
                               qev::DoubleToPolyPos(contour.get(), cut.to));
    const std::unique_ptr<qev::CCadMultiSegments> stretch(qev::GetMultiSementsByRange(contour.get(), range));
    if (!stretch)
        throw DrawingError("object " + std::to_string(cut.object) + " has no such stretch; it has "
                           + std::to_string(contour->GetSegmentCount()) + " segments");
    picture.Draw(*stretch, "cut");
    out << "cut: " << stretch->GetSegmentCount() << " segments, " << stretch->GetLength() << " mm of "
        << contour->GetLength() << " mm\n";
}

void WritePicture(const SvgPicture& picture, const std::string& path, std::ostream& out) {
    std::ofstream file(path, std::ios::binary);
    picture.Write(file);
    file.close();
    if (!file) throw DrawingError("the picture " + path + " cannot be written");
    out << "picture: " << path << "\n";
}

void Show(const Options& options, const Drawing& drawing, int joined, std::ostream& out) {
    const std::vector<ObjectReport> reports = ReportOf(drawing);
    PrintTable(out, reports, options.rows);
    PrintSummary(out, drawing, reports, joined);
    SvgPicture picture(drawing.root.GetBoundRect());
    for (const ObjectReport& report : reports)
        picture.Draw(*report.object, report.object->GetType() == qev::kCadText ? "text" : "outline");
    if (options.polylineError) DrawConverted(reports, *options.polylineError, picture, out);
    for (const ObjectReport& report : reports) picture.Mark(report);
    if (options.cut) DrawCut(reports, *options.cut, picture, out);
    if (!options.svg.empty()) WritePicture(picture, options.svg, out);
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
