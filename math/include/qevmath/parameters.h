/// \file
/// A short list of curve parameters that needs no memory of its own.
#pragma once

#include <array>
#include <cstddef>

#include <qevmath/point.h>

namespace math {

/// Up to eight curve parameters, held in place: the stationary points of a curve of this library.
class Parameters {
public:
    /// Appends a value; beyond the capacity it is dropped.
    void Add(double value) {
        if (m_nCount < m_dValues.size()) m_dValues[m_nCount++] = value;
    }
    /// The first value, for range loops. The values stand in the order in which they were added.
    const double* begin() const { return m_dValues.data(); }
    /// Behind the last value.
    const double* end() const { return m_dValues.data() + m_nCount; }
    /// Number of values kept, at most eight.
    std::size_t size() const { return m_nCount; }

private:
    std::array<double, 8> m_dValues{};
    std::size_t m_nCount = 0;
};

/// The foot equation of a circle or a straight line, free of its possibly far centre. For a circle of
/// curvature k through `apex` with the unit normal n towards its left side, the points C(t) of a curve
/// whose distance from it is stationary satisfy (k*C(t) - q) . C'(t) = 0 with q = k*apex + n. k = 0 is
/// the straight line through apex at right angles to n. k = 1 and q = p is the distance from the point p.
struct FootEquation {
    double curvature = 1; ///< k, in 1/mm for a circle; 0 for a straight line
    DPOINT2 q;            ///< k*apex + n, or the point itself

    /// The factor of C'(t) at a point of the curve.
    DPOINT2 At(const DPOINT2& onCurve) const { return onCurve * curvature - q; }
};

} // namespace math
