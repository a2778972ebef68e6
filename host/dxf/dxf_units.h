/// \file
/// The unit of the numbers in a DXF file.
#pragma once

#include <string_view>

#include "dxf_file.h"
#include "host/drawing/drawing.h"

namespace host {

/// The unit of a file's numbers. A name that is given, as "inches" or "in", in any case of letters, counts
/// before what the file says. A file that says nothing is in mm. Throws a
/// DrawingError for a name that there is not, and for a unit that a drawing cannot be made in because it is
/// longer than a million km; what is odd about the file's word is remarked in the log.
DrawingUnit UnitOf(const DxfFile& file, std::string_view name, ErrorLog& log);

} // namespace host
