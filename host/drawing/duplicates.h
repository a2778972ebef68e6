/// \file
/// What a drawing holds twice.
#pragma once

#include "drawing.h"

namespace host {

/// Deletes each object that another one of its layer is a copy of, whichever way it runs and wherever a
/// closed one begins; of the copies the one that was drawn first stays. Copies on different layers stay,
/// since layers are worked in different ways, unless all layers are taken as one. Counts the copies that went
/// and those that stayed in the drawing's counts. Takes n log n steps for n objects.
void DropDuplicates(Drawing& drawing, bool acrossLayers);

} // namespace host
