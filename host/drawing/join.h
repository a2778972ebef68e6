/// \file
/// Contours from open pieces: drawings often hold an outline as single lines and arcs.
#pragma once

#include <optional>

#include "drawing.h"

namespace host {

/// Joins open lines, arcs and polylines whose ends lie within a tolerance (mm) into contours, across all
/// groups and layer by layer, or all layers as one; a tolerance that is not above 0 joins nothing. When none
/// is given it is a ten-thousandth of the diagonal of the box round all open ends, and at most 0.01
/// mm. A contour takes the place, the attributes and the direction of its first piece, and is closed when its
/// ends lie within the tolerance. No contour passes through an end of its pieces twice: where a chain comes
/// back to one, the loop becomes a contour of its own. The pieces are deleted. Returns how many pieces went
/// into contours.
int JoinOpenPieces(qev::CCadGroup& root, std::optional<double> tolerance, bool acrossLayers = false);

} // namespace host
