/// \file
/// Positions carried from a contour onto the polyline that it was converted to.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadObject;

/// The position on a converted polyline (Convert2Polyline) that lies where a position of its source lies, in
/// normal form. It is the one after the same fraction of the whole length; the position itself when both have
/// the same number of segments and more than one. On an ellipse it undoes what picking answers. `map` is the
/// conversion's segment map, which is not looked at: a conversion keeps the order of the segments, so that
/// the lengths say all that it could. False, with nothing written, for null objects, kinds without segments,
/// a position off the source, and where one of the two lengths is 0 or not finite.
QEVCOMMON_API bool GetMapPos(const CCadObject* source, const CCadObject* destination,
                             const std::vector<int>& map, const math::POLYPOS& pos, math::POLYPOS& out);

} // namespace qev
