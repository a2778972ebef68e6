// Chords and arcs have little in common but the walk along the curve (greedy_fit.h); each has a source of
// its own.
#include <qevmath/curve_fit.h>

#include "arc_fit.h"
#include "chord_fit.h"

namespace math {
namespace {

template <class Curve>
bool Fit(const Curve& curve, double from, double to, const FitSettings& settings,
         std::vector<FitNode>& nodes) {
    return settings.chords ? FitChords(curve, from, to, settings, nodes)
                           : FitArcs(curve, from, to, settings, nodes);
}

} // namespace

bool FitStretch(const EllipticArc& arc, double from, double to, const FitSettings& settings,
                std::vector<FitNode>& nodes) {
    return Fit(arc, from, to, settings, nodes);
}

bool FitStretch(const CubicBezier& bezier, double from, double to, const FitSettings& settings,
                std::vector<FitNode>& nodes) {
    return Fit(bezier, from, to, settings, nodes);
}

} // namespace math
