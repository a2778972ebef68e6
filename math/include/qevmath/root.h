/// \file
/// Search for a root of a function.
#pragma once

#include <cmath>

namespace math {

/// The root of f between lo and hi by Newton's method, guarded by bisection; f(t) answers the pair (value,
/// slope). rising: f is negative below the root and positive above it, else the reverse. The slope only
/// steers; it need not be exact. A root at lo or hi is found when there is none between them. Always ends.
template <class F>
double FindRoot(F&& f, double lo, double hi, bool rising) {
    constexpr double kRelativeStep = 1e-15; // the last digits of a parameter
    constexpr int kMaxSteps = 100;
    double t = 0.5 * (lo + hi);
    double lastStep = hi - lo;
    for (int i = 0; i < kMaxSteps; ++i) {
        const auto [value, slope] = f(t);
        if (value == 0) return t;
        ((value < 0) == rising ? lo : hi) = t;
        double next = t - value / slope;
        if (!(next > lo && next < hi) || 2 * std::abs(next - t) > lastStep) next = 0.5 * (lo + hi);
        lastStep = std::abs(next - t);
        t = next;
        if (!(lastStep > kRelativeStep * (1 + std::abs(t)))) break;
    }
    return t;
}

} // namespace math
