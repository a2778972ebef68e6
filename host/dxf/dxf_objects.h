/// \file
/// The objects of a DXF drawing.
#pragma once

#include <string>
#include <string_view>

#include "host/drawing/drawing.h"

namespace host {

/// Reads a DXF drawing, ASCII or binary, and adds its objects to a drawing; its units are taken as mm. What
/// is wrong with an entity goes to the log: a strict log throws the first error, a lenient one leaves the
/// entity out. A file that cannot be loaded throws a DrawingError whatever the log. A drawing whose
/// inserts make its objects larger than 256 MB and eight times the file, or that has more than a hundred
/// thousand inserts, is read as far as that.
void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing);

/// Reads a DXF drawing from the bytes of a file and adds its objects to a drawing; its units are taken as mm.
/// What is wrong goes to the log: a strict log throws the first error, a lenient one leaves the entity out.
/// More than 256 MB of bytes are refused. No bytes make it crash; the objects take at most 256 MB and eight
/// times the bytes, and reading them no more than about a gigabyte besides.
void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing);

} // namespace host
