/// \file
/// Arithmetic on the halves of doubles. Private to the math library.
#pragma once

#include <bit>
#include <cstdint>

namespace math {

/// The leading 26 bits of a number: products of two such parts are exact.
inline double LeadingBits(double x) {
    constexpr std::uint64_t kTrailing = (1u << 27) - 1;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & ~kTrailing);
}

/// a * b - product, where product is a * b rounded (Dekker 1971); exact but for the last bits of the last
/// term.
inline double ProductError(double a, double b, double product) {
    const double aHigh = LeadingBits(a);
    const double aLow = a - aHigh;
    const double bHigh = LeadingBits(b);
    const double bLow = b - bHigh;
    return ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
}

} // namespace math
