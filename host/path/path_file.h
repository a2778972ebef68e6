/// \file
/// The tool paths of a drawing as a DXF drawing.
#pragma once

#include <iosfwd>

#include "cutting_plan.h"

namespace host {

/// Writes the objects of a drawing and their tool paths as a DXF drawing in mm, each kind on a layer of its
/// own: CONTOURS, TEXTS, LEAD_IN, LEAD_OUT, OVERLAP, CUT for what is cut of a contour with bridges, and
/// BRIDGES for what is not. What is cut comes in the order of the plan, an object with its paths; what is not
/// cut follows. Without a plan, which is null then, objects come in the order of the drawing. Throws a
/// DrawingError for what DXF cannot hold.
void WritePathFile(std::ostream& out, const Drawing& drawing, const CuttingPlan* plan);

} // namespace host
