/// \file
/// The host program's work, apart from its entry: main adds the command line and the standard streams.
#pragma once

#include <iosfwd>

#include "options.h"

namespace host {

/// Reads the drawing, prints its table on `out` and does what the options ask for, in the display unit that
/// the process has. Returns the exit code: 0, or 1 when the drawing is damaged or an option does not fit it.
/// What is wrong goes to `errors`, one line each, led by the drawing's name; of a strict run that is the
/// first error, of a lenient run all of them, and what was readable is shown nevertheless.
int Run(const Options& options, std::ostream& out, std::ostream& errors);

} // namespace host
