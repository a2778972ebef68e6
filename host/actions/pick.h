/// \file
/// The place of a drawing that is nearest to a point.
#pragma once

#include <optional>
#include <vector>

#include <qev/types.h>

#include "host/report/report.h"

namespace host {

/// A place on an object.
struct Pick {
    int object = 0;                   ///< number in the table
    std::optional<math::POLYPOS> pos; ///< none on a text and a dot, which have no positions
    math::DPOINT2 point;              ///< of the position, to the bit; else of the text or dot
    double distance = 0;              ///< mm from the point that was asked for
};

/// Picks the object nearest to a point and the place on it that is nearest. On an ellipse, whose positions go
/// by the polyline that it converts to, the place is that polyline's. Throws a DrawingError when the drawing
/// has nothing to pick.
Pick PickAt(const Drawing& drawing, const std::vector<ObjectReport>& reports, const math::DPOINT2& point);

} // namespace host
