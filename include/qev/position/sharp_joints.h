/// \file
/// The joints at which a contour turns sharply.
#pragma once

#include <vector>

#include <qev/export.h>

namespace qev {

class CCadObject;

/// Appends the indices of the segments that begin at a joint where the contour turns by dAngleDegrees or
/// more. A circle and an ellipse have one, 0; other single pieces none. Joints with a Bezier piece do not
/// count. Throws std::bad_alloc without memory.
QEVCOMMON_API void CollectPos(const CCadObject* object, double dAngleDegrees, std::vector<int>& out);

/// CollectPos into `joints`; then, when there are more joints than nLimit (than 3 for a smaller limit; never
/// for 1), `joints` keeps those on their convex hull, counter-clockwise from the lowest, and `second` gets
/// the others in their order: the convex turns of a contour apart from the concave ones. Otherwise `second`
/// stays as it was. Throws std::bad_alloc without memory, with what was collected until then in the lists.
QEVCOMMON_API void CollectTurnDirPos(const CCadObject* object, double dAngleDegrees, std::vector<int>& joints,
                                     int nLimit, std::vector<int>& second);

} // namespace qev
