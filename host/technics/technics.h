/// \file
/// Machining processes on the drawing, by way of plug-ins.
#pragma once

#include <iosfwd>

#include "host/drawing/drawing.h"
#include "host/options.h"
#include "host/picture/svg.h"

namespace host {

/// Loads the plug-ins, then loads, adds, removes and saves technics as the options ask, and draws the tool
/// paths. Technics are added to and removed from one object or, when it is null, all contours. Throws a
/// DrawingError when something is refused.
void RunTechnics(const Options& options, const Drawing& drawing, const qev::CCadObject* picked,
                 SvgPicture& picture, std::ostream& out);

} // namespace host
