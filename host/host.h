/// \file
/// The host program's work, apart from its entry.
#pragma once

#include <iosfwd>

#include "options.h"

namespace host {

/// Reads the drawing, prints its table and does what the options ask for. Returns the exit code: 0, or 1 with
/// one line on `errors` when the drawing is damaged or an option does not fit it.
int Run(const Options& options, std::ostream& out, std::ostream& errors);

} // namespace host
