/// \file
/// The layers of a drawing as a table.
#pragma once

#include <iosfwd>

#include "host/drawing/drawing.h"

namespace host {

/// Prints a headline and a row for each layer that the drawing's file lists or uses: how many entities lie on
/// it, its colour, and whether it is shown.
void PrintLayers(std::ostream& out, const Drawing& drawing);

} // namespace host
