/// \file
/// Lines of a drawing that lie over one another in part.
#pragma once

#include <vector>

#include "drawing.h"

namespace host {

/// Deletes each line, or open polyline of one straight side, that lies within 0.001 mm on a longer straight
/// side of another object of its layer (of any layer, when all are taken as one), and counts it in the
/// drawing's counts. A line that another open object goes on from stays, as it may be the side of a contour
/// beside the longer one. Curves are not looked at. Takes n log n steps for n straight sides.
void DropCovered(Drawing& drawing, bool acrossLayers);

/// Two objects that run along each other on straight sides, or one that runs over itself.
struct Overlap {
    int first = 0;     ///< number of an object in Drawing::Objects()
    int second = 0;    ///< of another one, higher than first, or of the same one
    double length = 0; ///< mm that both hold
};

/// The pairs of objects of one layer (of any layer, when all are taken as one) of which straight sides lie
/// over each other within 0.001 mm by more than that, in the order of their numbers; what they share would be
/// cut twice. Of several objects over one place each is named with the one that reaches farthest before it.
/// Takes n log n steps for n straight sides.
std::vector<Overlap> FindOverlaps(const Drawing& drawing, bool acrossLayers);

} // namespace host
