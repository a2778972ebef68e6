/// \file
/// A drawing as a tree of CAD objects.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <qevdata/qevdata.h>

#include "drawing_error.h"

namespace host {

/// The objects of a drawing. An insert of a block is a group with the attribute "Block", a text holds the
/// strokes that draw it, everything else is a leaf. Every leaf and text carries the attribute "Layer".
struct Drawing {
    qev::CCadGroup root;                ///< owns all objects
    std::map<std::string, int> skipped; ///< how many entities the host does not draw, by type

    /// Leaves and texts in drawing order, through all groups. They belong to the drawing and stay valid until
    /// it changes.
    std::vector<const qev::CCadObject*> Objects() const;
};

} // namespace host
