/// \file
/// The host program's work, apart from its entry: main adds the standard streams.
#pragma once

#include <iosfwd>

namespace host {

/// What a run ends with, as an exit code. Of several drawings the worst counts, in the order of the names
/// here.
enum class Exit {
    kWhole = 0,   ///< every drawing was read whole, and every option was served
    kInPart = 2,  ///< a damaged drawing was read as far as it goes, which --lenient asks for
    kRefused = 1, ///< a drawing cannot be read, or an option does not fit it
    kUsage = 64   ///< the command line cannot be used; nothing was read
};

/// Runs the program with a command line as main gets it, the program's name first: reads the options, sets
/// the display unit of the process, and runs one drawing after the other; one that is refused does not stop
/// the others. Returns the exit code, a value of Exit. What was asked for goes to `out`: tables, led by the
/// drawing's name when there are several, or data for programs and nothing else. What is wrong goes to
/// `errors`, one line each, led by the drawing's name; of a strict run that is the first error of a drawing,
/// of a lenient run all of them, and what was readable is shown nevertheless. `isTerminal` says that `errors`
/// is one, on which progress may be shown.
int Main(int argc, const char* const* argv, std::ostream& out, std::ostream& errors, bool isTerminal = false);

} // namespace host
