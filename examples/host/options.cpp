#include "options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace host {

const char* const kUsage =
    R"(usage: qev_host DRAWING.dxf [option ...]
  --svg FILE          draw the picture: outlines, start points, directions, sharp corners
  --rows N            print at most N rows of the table (40)
  --unit NAME         the unit of the tables, Metric or Inch (Metric); options and pictures are in mm
  --join MM           join open pieces whose ends lie this near (0.01; 0 joins nothing)
  --lenient           report what was readable of a damaged drawing
  --polyline ERROR    convert every object to lines and arcs within ERROR mm, draw them over it
  --cut OBJ:FROM:TO   cut a stretch out of object OBJ; positions are segment index + ratio
  --pick X,Y          pick the object nearest to a point: object, segment, ratio, nearest point
  --walk SEG:RATIO:MM walk from a position of the picked object (else of object 0) by a signed length
  --start-zones MM    zones of MM round the sharp corners of closed contours, and where to start between them
  --corner DEGREES    the least turn of a sharp corner there (30)
  --plugin FILE       load a technics plug-in; may come several times
  --technics TEXT     add technics to the picked object, or else to all: 'T={LeadIn={Length=4}}'
  --params TEXT       where the mouse is: 'MouseSegment=2;MouseRatio=0.5;'
  --remove TYPE       remove technics of a type from the same objects
  --save FILE         write the technics of all objects
  --load FILE         read them, before any are added
)";

namespace {

template <class T>
T Parse(std::string_view text, const std::string& option) {
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    if (!whole) throw UsageError(option + " takes a number, not '" + std::string(text) + "'");
    return value;
}

// The parts of a value between its separators.
template <std::size_t kCount>
std::array<std::string_view, kCount> Split(std::string_view text, char separator, const char* usage) {
    std::array<std::string_view, kCount> parts;
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if ((end == text.size()) != (i + 1 == kCount)) throw UsageError(usage);
        parts[i] = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

CutOption ParseCut(std::string_view text) {
    const auto parts = Split<3>(text, ':', "--cut takes OBJECT:FROM:TO");
    return {Parse<int>(parts[0], "--cut"), Parse<double>(parts[1], "--cut"),
            Parse<double>(parts[2], "--cut")};
}

math::DPOINT2 ParsePick(std::string_view text) {
    const auto parts = Split<2>(text, ',', "--pick takes X,Y");
    return {Parse<double>(parts[0], "--pick"), Parse<double>(parts[1], "--pick")};
}

WalkOption ParseWalk(std::string_view text) {
    const auto parts = Split<3>(text, ':', "--walk takes SEGMENT:RATIO:OFFSET");
    return {{Parse<int>(parts[0], "--walk"), Parse<double>(parts[1], "--walk")},
            Parse<double>(parts[2], "--walk")};
}

double NotNegative(double value, const std::string& option) {
    if (!(value >= 0 && std::isfinite(value)))
        throw UsageError(option + " takes a number that is not negative");
    return value;
}

} // namespace

Options ParseOptions(int argc, const char* const* argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        const auto value = [&]() -> std::string_view {
            if (++i >= argc) throw UsageError(option + " takes a value");
            return argv[i];
        };
        if (option == "--svg")
            options.svg = value();
        else if (option == "--rows")
            options.rows = static_cast<int>(NotNegative(Parse<int>(value(), option), option));
        else if (option == "--join")
            options.joinTolerance = NotNegative(Parse<double>(value(), option), option);
        else if (option == "--unit")
            options.unit = value();
        else if (option == "--lenient")
            options.lenient = true;
        else if (option == "--polyline")
            options.polylineError = NotNegative(Parse<double>(value(), option), option);
        else if (option == "--cut")
            options.cut = ParseCut(value());
        else if (option == "--pick")
            options.pick = ParsePick(value());
        else if (option == "--start-zones")
            options.startZones = NotNegative(Parse<double>(value(), option), option);
        else if (option == "--corner")
            options.cornerDegrees = NotNegative(Parse<double>(value(), option), option);
        else if (option == "--walk")
            options.walk = ParseWalk(value());
        else if (option == "--plugin")
            options.plugins.emplace_back(value());
        else if (option == "--technics")
            options.technics = value();
        else if (option == "--params")
            options.params = value();
        else if (option == "--remove")
            options.remove = Parse<int>(value(), option);
        else if (option == "--save")
            options.save = value();
        else if (option == "--load")
            options.load = value();
        else if (option.starts_with("-"))
            throw UsageError("there is no option " + option);
        else if (!options.drawing.empty())
            throw UsageError("only one drawing can be read");
        else
            options.drawing = option;
    }
    if (options.drawing.empty()) throw UsageError("no drawing is named");
    return options;
}

} // namespace host
