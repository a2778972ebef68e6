/// \file
/// Chains of pieces taken apart where they come back to a point.
#pragma once

#include <vector>

#include <qevmath/point.h>

namespace host {

/// A step of a chain: a piece of a drawing, run from one of its ends to the other.
struct ChainStep {
    int piece = 0;       ///< whose the step is, by any number of the caller's
    math::DPOINT2 enter; ///< mm, where the chain comes to it
    math::DPOINT2 leave; ///< mm, where the chain goes on
};

/// Takes a chain apart into the closed loops that lie in it and what is left of it, each in the order of the
/// chain: a loop is taken out as soon as the chain comes back within `tolerance` (mm, above 0) of where a
/// step of it began. No part passes one point twice. A chain that is one loop or none comes back whole. Takes
/// about as many steps as the chain has; these must be longer than the tolerance.
std::vector<std::vector<ChainStep>> SplitLoops(const std::vector<ChainStep>& chain, double tolerance);

} // namespace host
