/// \file
/// Contours from open pieces: drawings often hold an outline as single lines and arcs.
#pragma once

#include "drawing.h"

namespace host {

/// Joins open lines, arcs and polylines whose ends lie within a tolerance (mm) into contours, in each group
/// by itself and layer by layer; a tolerance that is not above 0 joins nothing. A contour takes the place and
/// the direction of its first piece, and is closed when its ends lie within the tolerance. The pieces are
/// deleted. Returns how many pieces went into contours.
int JoinOpenPieces(qev::CCadGroup& root, double tolerance);

} // namespace host
