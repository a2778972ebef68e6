/// \file
/// The turn of three points without a fault of rounding. Private to the room.
///
/// The turn is the sign of a cross product of the coordinates as they are given. The rounded cross product
/// decides when it lies beyond its own error; else the products are added without rounding (J. R. Shewchuk,
/// "Adaptive precision floating-point arithmetic and fast robust geometric predicates", 1997). Coordinates
/// must not exceed 1e100, so that no product overflows; parts of products below 1e-290 may be lost, which is
/// less than any length of a drawing squared.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include <qevmath/point.h>

namespace qev {

/// A sum of products that is kept without rounding: as parts that do not overlap, the smallest first
/// (Shewchuk's expansions, which need rounding to nearest and no overflow).
class ExactSum {
public:
    /// Adds the product of two numbers; six of them fit in.
    void AddProduct(double a, double b) {
        const double product = a * b;
        const auto [aHigh, aLow] = Split(a);
        const auto [bHigh, bLow] = Split(b);
        Add(aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow));
        Add(product);
    }
    /// A number with the sign of the sum: the last part that is not 0 outweighs all before it.
    double Sign() const {
        const auto last =
            std::find_if(m_parts.rbegin(), m_parts.rend(), [](double part) { return part != 0; });
        return last == m_parts.rend() ? 0 : *last;
    }

private:
    // The upper and the lower half of a number's 53 bits (T. J. Dekker, 1971): products of halves are exact.
    static std::pair<double, double> Split(double a) {
        constexpr double kSplitter = (1 << 27) + 1;
        const double c = kSplitter * a;
        const double high = c - (c - a);
        return {high, a - high};
    }
    void Add(double x) {
        for (std::size_t i = 0; i < m_nParts; ++i) {
            const double sum = x + m_parts[i];
            const double ofPart = sum - x; // what arrived of the part; the rest of both is the rounding
            m_parts[i] = (x - (sum - ofPart)) + (m_parts[i] - ofPart);
            x = sum;
        }
        m_parts[m_nParts++] = x;
    }

    std::array<double, 12> m_parts{}; // six products of two parts each
    std::size_t m_nParts = 0;
};

/// Above 0 when the way from a over b to c turns left, below 0 when it turns right, and 0 when rounding may
/// decide. The bound is Shewchuk's, for three rounded operations on each product.
inline double CertainTurn(const math::DPOINT2& a, const math::DPOINT2& b, const math::DPOINT2& c) {
    constexpr double kUnit = std::numeric_limits<double>::epsilon() / 2;
    constexpr double kBound = (3 + 16 * kUnit) * kUnit;
    const double left = (b.x - a.x) * (c.y - a.y);
    const double right = (b.y - a.y) * (c.x - a.x);
    const double turn = left - right;
    return std::abs(turn) > kBound * (std::abs(left) + std::abs(right)) ? turn : 0;
}

/// Above 0 when the way from a over b to c turns left, below 0 when it turns right, and 0 when the three lie
/// on a line, exactly, by the products without rounding. It is called and not put in line: hardly any turn
/// needs it, and its arrays would take the registers of loops over turns.
[[gnu::noinline]] inline double SumOfTurn(const math::DPOINT2& a, const math::DPOINT2& b,
                                          const math::DPOINT2& c) {
    ExactSum sum;
    sum.AddProduct(a.x, b.y);
    sum.AddProduct(-a.y, b.x);
    sum.AddProduct(b.x, c.y);
    sum.AddProduct(-b.y, c.x);
    sum.AddProduct(c.x, a.y);
    sum.AddProduct(-c.y, a.x);
    return sum.Sign();
}

/// Above 0 when the way from a over b to c turns left, below 0 when it turns right, and 0 when the three lie
/// on a line, exactly.
inline double ExactTurn(const math::DPOINT2& a, const math::DPOINT2& b, const math::DPOINT2& c) {
    const double turn = CertainTurn(a, b, c);
    return turn != 0 ? turn : SumOfTurn(a, b, c);
}

/// Whether the way from a over b to c turns left, exactly: not when the three lie on a line.
inline bool TurnsLeft(const math::DPOINT2& a, const math::DPOINT2& b, const math::DPOINT2& c) {
    return ExactTurn(a, b, c) > 0;
}

} // namespace qev
