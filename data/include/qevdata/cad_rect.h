/// \file
/// Bounding boxes as the interface gives them.
#pragma once

#include <qevmath/bounds.h>

namespace qev {

/// An axis-parallel box in mm. The empty box, of an object without an outline, is all zeros.
struct CadRect {
    double x = 0;      ///< left
    double y = 0;      ///< bottom; the y axis points up
    double width = 0;  ///< not negative in a box of this library
    double height = 0; ///< not negative in a box of this library
};

/// The box of gathered bounds; the empty box when nothing was gathered.
inline CadRect ToRect(const math::Bounds& bounds) {
    if (bounds.IsEmpty()) return {};
    return {bounds.lower.x, bounds.lower.y, bounds.upper.x - bounds.lower.x, bounds.upper.y - bounds.lower.y};
}

} // namespace qev
