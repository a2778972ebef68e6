/// \file
/// The winding direction of a contour.
#pragma once

#include <qev/export.h>

namespace qev {

class CCadObject;

/// Holds the names of the directions.
struct CContourDirection {
    /// Which way a contour runs, seen with the y axis up.
    enum ContourDirection_T {
        NONE = 0,            ///< neither way: no contour, or next to no area
        CLOCKWISE = 1,       ///< what it encloses lies to the right of travel
        COUNTERCLOCKWISE = 2 ///< what it encloses lies to the left of travel
    };
};

/// The name of the direction of something that runs counter-clockwise, or does not.
constexpr CContourDirection::ContourDirection_T DirectionOf(bool counterClockwise) {
    return counterClockwise ? CContourDirection::COUNTERCLOCKWISE : CContourDirection::CLOCKWISE;
}

/// The direction in which an object runs: by their flag for circles, ellipses, arcs and elliptic arcs; by the
/// sign of the enclosed area (closing chord added) for segment contours, NONE within 1e-9 mm^2 of 0; NONE for
/// everything else and for a null object.
QEVDATA_API CContourDirection::ContourDirection_T GetContourDirectionEx(const CCadObject* object);

} // namespace qev
