/// \file
/// Colours of DXF files.
#pragma once

#include <string>

namespace host {

/// The colour of an index of the format's palette, 1 to 255, as "#rrggbb"; empty for 7, which is black on
/// white paper and white on black, and for what is no index.
std::string PaletteColour(int index);

/// A colour of the form 0xrrggbb as "#rrggbb"; higher bits are left out.
std::string TrueColour(int value);

} // namespace host
