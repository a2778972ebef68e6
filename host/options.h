/// \file
/// The host's command line.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <qev/types.h>
#include <qevmath/point.h>

namespace host {

/// OBJECT:FROM:TO, positions as segment index + ratio.
struct CutOption {
    int object = 0;
    double from = 0;
    double to = 0;
};

/// SEGMENT:RATIO:OFFSET, a position and how far to walk from it in mm.
struct WalkOption {
    math::POLYPOS from;
    double offset = 0;
};

struct Options {
    std::string drawing;
    std::string svg; ///< where the picture goes; empty for none
    std::string unit = "Metric";
    bool lenient = false;
    double joinTolerance = 0.01; ///< mm; 0 joins nothing
    int rows = 40;
    std::optional<double> polylineError;
    std::optional<CutOption> cut;
    std::optional<math::DPOINT2> pick;
    std::optional<double> startZones; ///< mm round each sharp corner
    double cornerDegrees = 30;        ///< the least turn of a sharp corner
    std::optional<WalkOption> walk;   ///< on the object that was picked, else on the first one
    std::vector<std::string> plugins;
    std::string technics;      ///< Lua text; empty for none
    std::string params;        ///< the mouse's position with it
    std::optional<int> remove; ///< a type of technics
    std::string save;
    std::string load;
};

/// The command line cannot be used; the text says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

extern const char* const kUsage;

/// Throws UsageError.
Options ParseOptions(int argc, const char* const* argv);

} // namespace host
