/// \file
/// The axis-parallel box that grows round what is put into it.
#pragma once

#include <algorithm>
#include <limits>

#include <qevmath/point.h>

namespace math {

/// An axis-parallel box; empty until something is added. Points that are not numbers add nothing.
struct Bounds {
    /// The corner of the least coordinates in mm; infinite while the box is empty.
    DPOINT2 lower{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    /// The corner of the largest coordinates in mm; minus infinite while the box is empty.
    DPOINT2 upper{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    /// Whether nothing has been added. The box of a single point is not empty.
    bool IsEmpty() const { return !(lower.x <= upper.x && lower.y <= upper.y); }

    /// Square of a point's distance from the box: 0 inside, infinity when the box is empty.
    double GetSquaredDistance(const DPOINT2& p) const {
        const double x = std::max({lower.x - p.x, p.x - upper.x, 0.0});
        const double y = std::max({lower.y - p.y, p.y - upper.y, 0.0});
        return x * x + y * y;
    }

    /// Grows the box until it holds a point. One with a coordinate that is not a number is ignored.
    void Add(const DPOINT2& p) {
        if (IsNoPoint(p)) return;
        lower = {std::min(lower.x, p.x), std::min(lower.y, p.y)};
        upper = {std::max(upper.x, p.x), std::max(upper.y, p.y)};
    }
    /// Grows the box until it holds all that another box holds; an empty one is ignored.
    void Add(const Bounds& other) {
        if (other.IsEmpty()) return;
        Add(other.lower);
        Add(other.upper);
    }
};

} // namespace math
