/// \file
/// The objects of a DXF drawing.
#pragma once

#include <string>
#include <string_view>

#include "host/drawing/drawing.h"

namespace host {

/// Reads a DXF drawing, ASCII or binary, and adds its objects to a drawing; its units are taken as mm. What
/// is wrong with an entity goes to the log: a strict log throws the first error, a lenient one leaves the
/// entity out. A file that cannot be loaded throws a DrawingError whatever the log. A drawing of more than
/// half a million segments or a hundred thousand inserts is read as far as that.
void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing);

/// Reads a DXF drawing from the bytes of a file and adds its objects to a drawing; its units are taken as mm.
/// What is wrong goes to the log: a strict log throws the first error, a lenient one leaves the entity out.
/// No bytes make it crash or take more than about half a gigabyte.
void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing);

} // namespace host
