/// \file
/// A drawing as a tree of CAD objects.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <qevdata/qevdata.h>

#include "drawing_error.h"

namespace host {

/// The objects of a drawing. An insert of a block is a group, a text holds the strokes that draw it,
/// everything else is a leaf. Every leaf carries the attribute "Layer".
struct Drawing {
    qev::CCadGroup root;
    std::map<std::string, int> skipped; ///< entities by type that the host does not draw

    /// Leaves and texts in drawing order.
    std::vector<const qev::CCadObject*> Objects() const;
};

/// Reads a DXF drawing. Errors go to the log; a strict log throws the first. A file that cannot be loaded
/// throws a DrawingError for any log. Drawing units are taken as mm.
void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing);
/// The same for a file's bytes.
void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing);

/// Joins open lines, arcs and polylines whose ends lie within a tolerance (mm) into contours, in each group
/// for itself and layer by layer. A contour takes the place and the direction of its first piece. Returns how
/// many pieces went into contours.
int JoinOpenPieces(qev::CCadGroup& root, double tolerance);

} // namespace host
