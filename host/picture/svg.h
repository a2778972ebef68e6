/// \file
/// A drawing as an SVG picture.
#pragma once

#include <iosfwd>

#include "picture.h"

namespace host {

/// Writes a picture as one SVG document, 1600 pixels along its longer side: the drawing with a group for each
/// layer, what lies over it with a group for each style, a scale bar in the display unit of the process and a
/// legend of the styles that occur. It follows the viewer's choice of a light or a dark ground.
void WriteSvg(const Picture& picture, std::ostream& out);

} // namespace host
