/// \file
/// The table of a cutting plan.
#pragma once

#include <iosfwd>

#include "host/path/cutting_plan.h"

namespace host {

/// Prints a headline and one row for each of the first `rows` cuts in the order in which they are made, with
/// the lengths in the display unit of the process; then what all of them come to, and how many objects are
/// not cut.
void PrintPlan(std::ostream& out, const CuttingPlan& plan, int rows);

} // namespace host
