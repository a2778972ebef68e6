/// \file
/// The greedy walk along a curve that every fit takes. Private to the math library.
///
/// Each step takes the longest stretch that its lines or arcs can stand for. A stretch that fits still fits
/// when it is shortened, so no other choice of nodes gets farther with as many steps. A step may stop a
/// little short of the error, which costs less than a node in a hundred: the deviation of a step of n nodes
/// grows with a known power of its length, so each try tells what length the next one should have, and the
/// growth from one step to the next foretells the length of the step behind it. On a smooth curve most steps
/// take one try. Where the curve does not behave that evenly, a length that fits and one that does not close
/// in on the answer.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include <qevmath/curve_fit.h>
#include <qevmath/elementary.h>

namespace math {

/// A step is good enough when it uses this part of the error at least. A chord that uses 0.97 of it is 1.5 %
/// shorter than the longest one, an arc 1 %.
inline constexpr double kGoodFit = 0.97;
/// Steps are aimed at this part of the error, the middle between good enough and too much.
inline constexpr double kAim = 0.985;

/// The one or two nodes that stand for a stretch.
struct Step {
    FitNode nodes[2];
    int count;
    double deviation; ///< mm; infinite when the stretch cannot be fitted at all
};

/// What a stretch has that nothing can stand for.
inline constexpr Step kNoFit{{}, 0, std::numeric_limits<double>::infinity()};

/// What is known of a step before it is tried.
struct Guess {
    double length;    ///< of the parameter: what to try first
    double ideal = 0; ///< that of the step before, at which the aim would have been met; 0 at first

    /// A step of this length fits, and one of the length `aimed` would meet the aim. Steps grow or shrink
    /// evenly, so that the next one has to this the ratio that this has to the one before.
    void Learn(double fitting, double aimed) {
        constexpr double kMostGrowth = 2;
        const double reached = std::min(aimed, kMostGrowth * fitting);
        const double growth = ideal > 0 ? reached / ideal : 1;
        length = reached * std::clamp(growth, 1 / kMostGrowth, kMostGrowth);
        ideal = reached;
    }
};

/// The step from `from` to `to` that the fitter makes. A stretch that is shorter than the error and cannot be
/// fitted is its own chord: this ends the steps into a cusp.
template <class Fitter>
Step TryStep(const Fitter& fitter, double from, double to, double error) {
    const Step step = fitter(from, to);
    const bool isWithin = step.deviation <= error;
    return isWithin || fitter.GetLengthBound(from, to) > error ? step : Step{{{to, 0}, {}}, 1, 0};
}

/// The longest step from a parameter that keeps the error; none when there is none.
template <class Fitter>
std::optional<Step> LongestStep(const Fitter& fitter, double from, double to, double error, Guess& guess) {
    constexpr int kMaxTries = 80;
    constexpr double kNarrow = (1 - kGoodFit) / Fitter::kOrder; // of the length: what good enough leaves open
    const double rest = to - from;
    double fits = 0;
    double tooLong = 2 * rest; // which nothing reaches: none is known to be too long
    double length = std::min(guess.length, rest);
    std::optional<Step> best;
    for (int i = 0; i < kMaxTries && tooLong - fits > kNarrow * tooLong; ++i) {
        const Step step = TryStep(fitter, from, length == rest ? to : from + length, error);
        const double room = kAim * error / step.deviation;
        const double aimed = length * (Fitter::kOrder == 2 ? std::sqrt(room) : Cbrt(room));
        if (step.deviation <= error) {
            best = step;
            fits = length;
            guess.Learn(length, aimed);
            if (length == rest || step.deviation >= kGoodFit * error) break;
        } else {
            tooLong = length;
        }
        length = std::min(aimed, rest);
        if (!(length > fits && length < tooLong)) length = 0.5 * (fits + tooLong);
    }
    return best;
}

/// Nodes of a stretch after which it is asked whether the rest can fit: so many that ordinary stretches are
/// not asked, and so few that the answer comes at once.
inline constexpr std::size_t kManyNodes = 1000;

/// Appends the nodes of a stretch; false when they are more than the settings allow, or when the parameter
/// cannot tell the ends of a step apart any more.
/// A fitter answers the step between two parameters, the power kOrder with which its deviation grows (2 or
/// 3), an upper bound of the length between two parameters in mm, and a number of nodes that the stretch
/// between two parameters takes at least.
template <class Fitter>
bool FitGreedily(const Fitter& fitter, double from, double to, const FitSettings& settings,
                 std::vector<FitNode>& nodes) {
    const std::size_t first = nodes.size();
    bool asked = false;
    Guess guess{to - from};
    double u = from;
    while (u < to) {
        if (!asked && nodes.size() - first >= kManyNodes) {
            asked = true;
            if (fitter.GetLeastNodes(u, to) > static_cast<double>(settings.maxNodes - nodes.size()))
                return false;
        }
        const auto step = LongestStep(fitter, u, to, settings.error, guess);
        if (!step || !(step->nodes[0].u > u) || nodes.size() + step->count > settings.maxNodes) return false;
        nodes.insert(nodes.end(), step->nodes, step->nodes + step->count);
        u = nodes.back().u;
    }
    return true;
}

} // namespace math
