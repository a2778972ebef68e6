/// \file
/// The order in which a tool visits cuts: inside before outside, and what is nearest next.
#pragma once

#include <vector>

#include <qevmath/point.h>

namespace host {

/// One visit of a tool: where it comes, where it leaves, and what has to wait for it.
struct Visit {
    math::DPOINT2 start; ///< finite
    math::DPOINT2 end;   ///< finite
    int outer = -1;      ///< index of the visit that must come later, as the cut round this one; -1 for none
};

/// The indices of all visits in the order of the tool, which comes from a place: it always goes to the
/// nearest start of those that wait for nobody, by the lower index among equally near ones. The visits'
/// `outer` must be -1 or an index of the list and lead into no circle. Takes n log n steps for n visits that
/// are spread like the contours of a drawing.
std::vector<int> NearestNext(const std::vector<Visit>& visits, const math::DPOINT2& from);

} // namespace host
