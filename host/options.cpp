// The command line as CLI11 reads it. An option is one statement: its name, the member that takes its value,
// what --help says of it, the form of the value, and what the value must be. It stands under the heading that
// was set before it. A new option is a member of Options and such a statement.
//
// Values of several numbers are read with from_chars and must be used up to their last letter: "1x" and "1,5"
// are refused rather than read as 1. A number does not depend on the locale.

#include "options.h"

#include <charconv>
#include <cmath>
#include <memory>
#include <string_view>

#include <qev/version.h>

#include <CLI/CLI.hpp>

namespace host {

static_assert(qev::kit::kSharpCornerDegrees == 30, "the help names the default of --corner");

namespace {

constexpr const char* kExamples = R"(Examples:
  qev_host part.dxf --svg part.svg                  a table, and a picture of it
  qev_host *.dxf --svg {}.svg                       pictures beside the drawings; {} is a drawing without its .dxf
  qev_host *.dxf --lenient --rows 0                 the summaries of a folder, damaged drawings as far as they go
  qev_host part.dxf --pick 0,40 --walk 0:0.5:100    what is at a point, and 100 mm along it from there
  qev_host part.dxf --order --feed 3000 --dxf path.dxf     what is cut when, and how long it takes
  qev_host *.dxf --json | jq .length_mm             the contour lengths of a folder
  qev_host part.dxf --plugin leadin --technics 'T={LeadIn={Length=4}}' --svg part.svg    a picture with lead-ins

Exit codes: 0 all drawings were read whole, 2 one was read in part (--lenient), 1 one was refused,
64 the command line cannot be used.
)";

// Reads numbers with a separator between each two. False when there are more or fewer, or one of them is no
// finite number.
template <class... Numbers>
bool ReadNumbers(std::string_view text, char separator, Numbers&... to) {
    const char* at = text.data();
    const char* const end = at + text.size();
    std::size_t left = sizeof...(Numbers);
    const auto read = [&](auto& number) {
        const auto [stop, error] = std::from_chars(at, end, number);
        if (error != std::errc() || !std::isfinite(static_cast<double>(number))) return false;
        at = stop;
        return --left == 0 ? at == end : at != end && *at++ == separator;
    };
    return (read(to) && ...);
}

bool Read(std::string_view text, CutRequest& to) {
    return ReadNumbers(text, ':', to.object, to.from, to.to);
}

bool Read(std::string_view text, math::DPOINT2& to) {
    return ReadNumbers(text, ',', to.x, to.y);
}

bool Read(std::string_view text, WalkRequest& to) {
    return ReadNumbers(text, ':', to.from.nSegIndex, to.from.dRatio, to.offset);
}

// An option whose value is several numbers in one word; `form` names them in the help and in the error.
template <class Request>
void AddRequest(CLI::App& app, const std::string& name, const std::string& form, std::optional<Request>& to,
                const std::string& help) {
    const auto take = [&to, name, form](const std::string& text) {
        if (!Read(text, to.emplace())) throw CLI::ValidationError(name, "takes " + form + ", not " + text);
    };
    app.add_option_function<std::string>(name, take, help)->type_name(form);
}

void AddForm(CLI::App& app, const char* name, Form& to, Form form, const char* help) {
    app.add_flag_callback(
        name, [&to, form] { to = form; }, help);
}

std::string RefusedUnlessNotNegative(const std::string& text) {
    double number = 0;
    if (ReadNumbers(text, ' ', number) && number >= 0) return {};
    return "takes a number that is not negative, not " + text;
}

const CLI::Validator kNotNegative(RefusedUnlessNotNegative, "");

void AddReading(CLI::App& app, Options& to) {
    app.option_defaults()->group("Reading");
    app.add_option("drawing", to.drawings, "DXF files, ASCII or binary")->type_name("FILE")->take_all();
    app.add_flag("--lenient", to.lenient, "report what was readable of a damaged drawing");
    app.add_option("--drawing-unit", to.reading.drawingUnit,
                   "the unit of the file's numbers, as mm or inches, whatever the file says")
        ->type_name("UNIT");
    app.add_flag("--all", to.reading.takeAll, "take hidden layers, invisible entities and paper space too");
    app.add_option("--layer", to.reading.layers, "take these layers alone")
        ->type_name("NAME[,NAME]")
        ->delimiter(',')
        ->take_all()
        ->allow_extra_args(false);
    app.add_option(
           "--join", to.reading.joinTolerance,
           "join open pieces whose ends lie this near (1/10000 of the drawing, at most 0.01; 0: none)")
        ->type_name("MM")
        ->check(kNotNegative);
    app.add_flag("--join-layers", to.reading.joinAcrossLayers, "join pieces of different layers too");
}

void AddOutput(CLI::App& app, Options& to) {
    app.option_defaults()->group("Output");
    app.add_option("--rows", to.rows, "print at most N rows of the table (40)")
        ->type_name("N")
        ->check(kNotNegative);
    app.add_option("--unit", to.unit, "the unit of the tables (Metric); all else is in mm")
        ->type_name("UNIT")
        ->check(CLI::IsMember({"Metric", "Inch"}));
    app.add_flag("--list-layers", to.listLayers,
                 "print the layers: colour, entities, whether they are shown");
    AddForm(app, "--json", to.form, Form::kJson,
            "print a JSON object for each drawing, one line each, instead of the table");
    AddForm(app, "--csv", to.form, Form::kCsv,
            "print a line for each CAD object, below a heading, instead of the table");
    app.add_option("--svg", to.svg, "draw the picture: outlines, start points, directions, sharp corners")
        ->type_name("FILE");
    app.add_option("--html", to.html,
                   "write a page for a browser: the drawing to move and zoom, its table beside")
        ->type_name("FILE");
}

void AddQuestions(CLI::App& app, Options& to) {
    app.option_defaults()->group("Questions");
    app.add_option("--polyline", to.polylineError,
                   "convert every object to lines and arcs within MM, draw them over it")
        ->type_name("MM")
        ->check(kNotNegative);
    app.add_flag("--groups", to.groups,
                 "group the segments of polylines: lines in a row, arcs of one circle, flattened curves");
    AddRequest(app, "--cut", "OBJ:FROM:TO", to.cut,
               "cut a stretch out of object OBJ; positions are segment index + ratio");
    AddRequest(app, "--pick", "X,Y", to.pick,
               "pick the object nearest to a point: object, segment, ratio, nearest point");
    AddRequest(app, "--walk", "SEG:RATIO:MM", to.walk,
               "walk from a position of the picked object (else of object 0) by a signed length");
    app.add_option("--start-zones", to.startZones,
                   "zones of MM round the sharp corners of closed contours, and where to start between them")
        ->type_name("MM")
        ->check(kNotNegative);
    app.add_option("--corner", to.cornerDegrees, "the least turn of a sharp corner for --start-zones (30)")
        ->type_name("DEGREES")
        ->check(kNotNegative);
}

void AddTechnics(CLI::App& app, TechnicsRequest& to) {
    app.option_defaults()->group("Technics");
    app.add_option(
           "--plugin", to.plugIns,
           "load a technics plug-in, by its file or the name of an installed one; may come several times")
        ->type_name("NAME")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--technics", to.text,
                   "add technics to the picked object, or else to all: 'T={LeadIn={Length=4}}'")
        ->type_name("TEXT");
    app.add_option("--params", to.params, "where the mouse is: 'MouseSegment=2;MouseRatio=0.5;'")
        ->type_name("TEXT");
    app.add_option("--remove", to.remove,
                   "remove technics of a name, as LeadIn, from the picked object, or else from all")
        ->type_name("NAME");
    app.add_option("--save", to.save, "write the technics of all objects")->type_name("FILE");
    app.add_option("--load", to.load, "read technics that --save wrote, before any are added")
        ->type_name("FILE");
}

void AddCutting(CLI::App& app, Options& to) {
    app.option_defaults()->group("Cutting");
    CLI::Option* const order = app.add_flag(
        "--order", to.order, "the order of cutting: inside before outside, nearest next; lengths and times");
    app.add_option("--feed", to.speeds.feed, "mm/min while it cuts (2000)")
        ->type_name("SPEED")
        ->check(CLI::PositiveNumber)
        ->needs(order);
    app.add_option("--rapid", to.speeds.rapid, "mm/min between cuts (20000)")
        ->type_name("SPEED")
        ->check(CLI::PositiveNumber)
        ->needs(order);
    app.add_option("--pierce", to.speeds.pierce, "seconds before each cut (0.5)")
        ->type_name("SECONDS")
        ->check(kNotNegative)
        ->needs(order);
    app.add_option("--dxf", to.dxf,
                   "write contours and tool paths as a DXF drawing, in the order of cutting if asked for")
        ->type_name("FILE");
}

// CLI11 takes what begins with '/' for an option on Windows unless it is told not to.
std::unique_ptr<CLI::App> Grammar(Options& to) {
    auto app = std::make_unique<CLI::App>(
        "Reads DXF drawings, reports their contours, and prepares them for cutting.", "qev_host");
    app->allow_windows_style_options(false);
    app->get_formatter()->column_width(30);
    app->footer(kExamples);
    app->set_version_flag("--version", "qev_host " QEV_VERSION_STRING);
    app->option_defaults()->take_last();
    AddReading(*app, to);
    AddOutput(*app, to);
    AddQuestions(*app, to);
    AddTechnics(*app, to.technics);
    AddCutting(*app, to);
    return app;
}

} // namespace

Options ParseOptions(int argc, const char* const* argv) {
    Options options;
    const auto app = Grammar(options);
    try {
        app->parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        options.answer = app->help();
    } catch (const CLI::CallForVersion& version) {
        options.answer = version.what() + std::string("\n");
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    if (options.answer.empty() && options.drawings.empty()) throw UsageError("no drawing is named");
    if (options.drawings.size() > 1)
        for (const std::string* path : options.PathsOfDrawings())
            if (!path->empty() && path->find("{}") == std::string::npos)
                throw UsageError("several drawings would share " + *path + ", which needs {} in its name");
    return options;
}

} // namespace host
