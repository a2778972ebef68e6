// Every option but one takes a value, so that a table of names and of what is done with the value is the
// whole grammar; what is left is the drawing. A general parser of command lines would be longer than the
// table.
//
// Values are read with from_chars and must be used up to their last letter: "1x" and "1,5" are refused rather
// than read as 1. A number does not depend on the locale.

#include "options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace host {

static_assert(kit::kSharpCornerDegrees == 30, "the usage names the default of --corner");

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

// An option as it was written and the value behind it, for messages that name both.
struct Value {
    template <class T = double>
    T Number(std::string_view part) const {
        T value{};
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        const bool whole = error == std::errc() && end == part.data() + part.size();
        if (!whole) throw UsageError(option + " takes a number, not '" + std::string(part) + "'");
        return value;
    }
    int Int() const { return Number<int>(text); }
    int Count() const {
        NotNegative();
        return Int();
    }
    double NotNegative() const {
        const double value = Number(text);
        if (!(value >= 0 && std::isfinite(value)))
            throw UsageError(option + " takes a number that is not negative");
        return value;
    }
    // The parts between separators, which must be as many as are asked for; `usage` names them in the
    // message.
    template <std::size_t kCount>
    std::array<std::string_view, kCount> Split(char separator, const char* usage) const {
        std::array<std::string_view, kCount> parts;
        std::string_view rest = text;
        for (std::size_t i = 0; i < kCount; ++i) {
            const std::size_t end = std::min(rest.find(separator), rest.size());
            if ((end == rest.size()) != (i + 1 == kCount)) throw UsageError(option + " takes " + usage);
            parts[i] = rest.substr(0, end);
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
        return parts;
    }

    std::string option;
    std::string_view text;
};

CutRequest Cut(const Value& value) {
    const auto [object, from, to] = value.Split<3>(':', "OBJECT:FROM:TO");
    return {value.Number<int>(object), value.Number(from), value.Number(to)};
}

math::DPOINT2 Point(const Value& value) {
    const auto [x, y] = value.Split<2>(',', "X,Y");
    return {value.Number(x), value.Number(y)};
}

WalkRequest Walk(const Value& value) {
    const auto [segment, ratio, offset] = value.Split<3>(':', "SEGMENT:RATIO:OFFSET");
    return {{value.Number<int>(segment), value.Number(ratio)}, value.Number(offset)};
}

// An option that takes a value, and what becomes of the options by it.
struct Option {
    std::string_view name;
    void (*take)(Options&, const Value&);
};

constexpr Option kOptions[] = {
    {"--svg", [](Options& to, const Value& value) { to.svg = value.text; }},
    {"--rows", [](Options& to, const Value& value) { to.rows = value.Count(); }},
    {"--unit", [](Options& to, const Value& value) { to.unit = value.text; }},
    {"--join", [](Options& to, const Value& value) { to.joinTolerance = value.NotNegative(); }},
    {"--polyline", [](Options& to, const Value& value) { to.polylineError = value.NotNegative(); }},
    {"--cut", [](Options& to, const Value& value) { to.cut = Cut(value); }},
    {"--pick", [](Options& to, const Value& value) { to.pick = Point(value); }},
    {"--walk", [](Options& to, const Value& value) { to.walk = Walk(value); }},
    {"--start-zones", [](Options& to, const Value& value) { to.startZones = value.NotNegative(); }},
    {"--corner", [](Options& to, const Value& value) { to.cornerDegrees = value.NotNegative(); }},
    {"--plugin", [](Options& to, const Value& value) { to.technics.plugIns.emplace_back(value.text); }},
    {"--technics", [](Options& to, const Value& value) { to.technics.text = value.text; }},
    {"--params", [](Options& to, const Value& value) { to.technics.params = value.text; }},
    {"--remove", [](Options& to, const Value& value) { to.technics.remove = value.Int(); }},
    {"--save", [](Options& to, const Value& value) { to.technics.save = value.text; }},
    {"--load", [](Options& to, const Value& value) { to.technics.load = value.text; }},
};

} // namespace

Options ParseOptions(int argc, const char* const* argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const auto* option = std::find_if(std::begin(kOptions), std::end(kOptions),
                                          [&word](const Option& each) { return each.name == word; });
        if (option != std::end(kOptions)) {
            if (++i >= argc) throw UsageError(word + " takes a value");
            option->take(options, {word, argv[i]});
        } else if (word == "--lenient") {
            options.lenient = true;
        } else if (word.starts_with("-")) {
            throw UsageError("there is no option " + word);
        } else if (!options.drawing.empty()) {
            throw UsageError("only one drawing can be read");
        } else {
            options.drawing = word;
        }
    }
    if (options.drawing.empty()) throw UsageError("no drawing is named");
    return options;
}

} // namespace host
