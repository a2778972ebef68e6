/// \file
/// The order in which things that lie about in the plane are put under a tree of boxes. Not installed: for
/// the library itself.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include <qevmath/bounds.h>

namespace qev {

/// The place of a cell of a grid of 65,536 by 65,536 along a Hilbert curve: in each of the nested squares,
/// the largest first, the quarter's number in the order in which the curve runs there, which turns from
/// quarter to quarter (D. Hilbert, 1891).
inline std::uint32_t HilbertPlace(std::uint32_t x, std::uint32_t y) {
    std::uint32_t place = 0;
    for (std::uint32_t half = 1u << 15; half > 0; half /= 2) {
        const std::uint32_t right = x & half ? 1 : 0, upper = y & half ? 1 : 0;
        place = place * 4 + ((3 * right) ^ upper);
        if (upper) continue;
        if (right) x = ~x, y = ~y;
        std::swap(x, y);
    }
    return place;
}

/// The place along the curve of the middle of a box, in the grid over the box `all`; any for an empty one.
inline std::uint32_t HilbertPlaceOf(const math::Bounds& box, const math::Bounds& all) {
    constexpr double kCells = 65535;
    const auto cell = [](double middle, double lower, double upper) {
        const double share = (middle - lower) / (upper - lower);
        return share > 0 ? static_cast<std::uint32_t>(kCells * std::min(share, 1.0)) : 0; // NaN is 0
    };
    const math::DPOINT2 middle = box.lower * 0.5 + box.upper * 0.5;
    return HilbertPlace(cell(middle.x, all.lower.x, all.upper.x), cell(middle.y, all.lower.y, all.upper.y));
}

} // namespace qev
