/// \file
/// Arcs in solved form: what a search needs of one without an angle.
#pragma once

#include <algorithm>
#include <cmath>

#include "support/contours.h"

namespace qev::bench {

/// An arc as its centre, radius and the directions of its middle and ends.
struct SolvedArc {
    explicit SolvedArc(const Node& node) : start(node.start), end(node.end) {
        double startAngle = 0;
        math::SolveArc(start, end, node.bulge, centre, radius, startAngle, sweep);
        middle = {std::cos(startAngle + sweep / 2), std::sin(startAngle + sweep / 2)};
        cosine = std::cos(sweep / 2);
    }
    /// Squared distance from p.
    double Square(const DPOINT2& p) const {
        const DPOINT2 out = p - centre;
        const double distance = std::sqrt(math::Dot(out, out));
        if (math::Dot(out, middle) >= distance * cosine) return (distance - radius) * (distance - radius);
        const DPOINT2 fromStart = p - start, fromEnd = p - end;
        return std::min(math::Dot(fromStart, fromStart), math::Dot(fromEnd, fromEnd));
    }
    /// Ratio of the foot of p.
    double Ratio(const DPOINT2& p) const {
        const DPOINT2 out = p - centre;
        const double fromMiddle = std::atan2(math::Cross(middle, out), math::Dot(middle, out));
        return std::clamp(0.5 + fromMiddle / sweep, 0.0, 1.0);
    }
    DPOINT2 start, end, centre, middle;
    double radius = 0, sweep = 0, cosine = 0;
};

} // namespace qev::bench
