/// \file
/// Positions carried from a contour onto the polyline that it was converted to.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// The position on a converted polyline (Convert2Polyline) that lies where a position of its source lies: the
/// one after the same fraction of the length, and the position itself when both have the same segments. It is
/// the inverse of picking on an ellipse. `map` is the conversion's segment map; a conversion keeps the order
/// of the segments, so the lengths say all that it could. False, with nothing written, for null objects,
/// kinds without segments, an invalid position, and a length of 0 or that is not finite.
QEVCOMMON_API bool GetMapPos(const CCadObject* source, const CCadObject* destination,
                             const std::vector<int>& map, const math::POLYPOS& pos, math::POLYPOS& out);

} // namespace qev
