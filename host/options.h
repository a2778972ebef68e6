/// \file
/// The host's command line.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <qevtechnics/stretches.h>

#include "host/actions/contours.h"
#include "host/actions/technics.h"
#include "host/dxf/dxf_objects.h"
#include "host/path/cutting_plan.h"

namespace host {

/// How what is told of the drawings is written.
enum class Form {
    kTable, ///< for people
    kJson,  ///< an object a drawing, one line each
    kCsv    ///< a line an object of a drawing, after a line with the names of the columns
};

/// What the command line asks for. Lengths are in mm whatever the display unit is.
struct Options {
    std::string answer;                  ///< what --help or --version prints instead of work; else empty
    std::vector<std::string> drawings;   ///< the DXF files to read, one at least
    Form form = Form::kTable;            ///< of what goes to the standard output
    bool order = false;                  ///< whether the order of cutting is planned
    Speeds speeds;                       ///< of the machine, for that plan
    std::string dxf;                     ///< where the tool paths go; empty for none
    std::string svg;                     ///< where the picture goes; empty for none
    std::string html;                    ///< where the page goes; empty for none
    std::string unit = "Metric";         ///< display unit of the tables, "Metric" or "Inch"
    bool lenient = false;                ///< whether a damaged drawing is read as far as it goes
    ReadSettings reading;                ///< what is read of a drawing, and how
    bool listLayers = false;             ///< prints the layers of each drawing
    int rows = 40;                       ///< the most rows of the table
    std::optional<double> polylineError; ///< mm; converts every object
    bool groups = false;                 ///< finds the segments that a machine treats as one
    std::optional<CutRequest> cut;       ///< cuts a stretch out of an object
    std::optional<math::DPOINT2> pick;   ///< picks the object nearest to a point
    std::optional<double> startZones;    ///< mm round each sharp corner; finds places to start at
    std::optional<WalkRequest> walk;     ///< walks along the picked object, else along the first one
    TechnicsRequest technics;            ///< on the picked contour, else on all

    /// The least turn, in degrees, of a sharp corner for the start zones.
    double cornerDegrees = qev::kit::kSharpCornerDegrees;

    /// The names of files that each drawing has its own of. They stay the options'.
    std::vector<std::string*> PathsOfDrawings() {
        return {&svg, &html, &dxf, &technics.save, &technics.load};
    }
};

/// The command line cannot be used; the text says why, in one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a command line as main gets it, the program's name first. Later options win over earlier ones of one
/// name; plug-ins and drawings add up. Throws a UsageError for an option that there is not, for a value that
/// does not fit, and when no drawing is named.
Options ParseOptions(int argc, const char* const* argv);

} // namespace host
