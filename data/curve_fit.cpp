#include "curve_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include <qevmath/elementary.h>
#include <qevmath/root.h>

namespace qev {
namespace {

// A step is good enough when it uses this much of the error.
constexpr double kGoodFit = 0.9;
// Steps are aimed at this part of the error, so that the aim does not overshoot it.
constexpr double kAim = 0.96;

// The joint of a biarc is searched this far, of the stretch, from its ends: nearer the directions to the ends
// are blurred by rounding.
constexpr double kJointMargin = 1e-3;
// Radians. Tangents that make the same angle with the chord to this are met by one arc.
constexpr double kSameAngle = 1e-9;

// Largest distance of the stretch from the line or circle through `arc`, which shares the stretch's ends.
double Deviation(const FitCurve& curve, double from, double to, const math::BulgeArc& arc) {
    const math::DPOINT2 apex = arc.PointAt(0.5);
    const math::DPOINT2 normal = math::LeftOf(arc.DirectionAt(0.5));
    const double k = arc.GetCurvature();
    double deviation = 0;
    for (const double u : curve.SolveFoot({k, apex * k + normal}, from, to)) {
        // |p - C| - R as (|p - C|^2 - R^2) / (|p - C| + R), times k on both sides: no far centre
        const math::DPOINT2 w = curve.PointAt(u) - apex;
        const double d = (k * math::Dot(w, w) - 2 * math::Dot(w, normal)) / (1 + math::Norm(w * k - normal));
        deviation = std::max(deviation, std::abs(d));
    }
    return deviation;
}

// tan(angle / 2) of the angle from u to v: the bulge of the arc with the tangent u and the chord v.
double BulgeBetween(const math::DPOINT2& u, const math::DPOINT2& v) {
    return math::Tan(math::Atan2(math::Cross(u, v), math::Dot(u, v)) / 2);
}

struct Fit {
    FitNode nodes[2];
    int count;
    double deviation; // mm; infinite when the stretch cannot be fitted at all
};

constexpr Fit kNoFit{{}, 0, std::numeric_limits<double>::infinity()};

Fit FitChord(const FitCurve& curve, double from, double to) {
    const math::BulgeArc chord{curve.PointAt(from), curve.PointAt(to), 0};
    if (chord.GetLength() == 0) return kNoFit;
    return {{{to, 0}, {}}, 1, Deviation(curve, from, to, chord)};
}

// The joint of a biarc may lie anywhere on one circle through both ends (Bolton 1975); here it is the point
// in which that circle meets the curve. There the direction v from the joint to the end has turned against
// the direction w from the start to the joint by half of what the tangents turn.
std::optional<double> JointOnCurve(const FitCurve& curve, double from, double to, double halfTurn) {
    const math::DPOINT2 start = curve.PointAt(from);
    const math::DPOINT2 end = curve.PointAt(to);
    const auto excess = [&](double u) {
        const math::DPOINT2 joint = curve.PointAt(u);
        const math::DPOINT2 w = joint - start;
        const math::DPOINT2 v = end - joint;
        const double turn = math::Atan2(math::Cross(w, v), math::Dot(w, v)) - halfTurn;
        const double speed = math::Norm(end - start) / (to - from);
        const math::DPOINT2 travel = curve.TangentAt(u, false) * speed;
        return std::pair(turn, -math::Cross(v, travel) / math::Dot(v, v)
                                   - math::Cross(w, travel) / math::Dot(w, w));
    };
    const double margin = (to - from) * kJointMargin;
    const double low = excess(from + margin).first;
    const double high = excess(to - margin).first;
    if (low == 0 && high == 0) return 0.5 * (from + to);
    if (!(low * high < 0)) return std::nullopt;
    return math::FindRoot(excess, from + margin, to - margin, low < 0);
}

Fit FitBiarc(const FitCurve& curve, double from, double to) {
    const math::DPOINT2 start = curve.PointAt(from);
    const math::DPOINT2 end = curve.PointAt(to);
    const math::DPOINT2 chord = end - start;
    const math::DPOINT2 leaving = curve.TangentAt(from, false);
    const math::DPOINT2 arriving = curve.TangentAt(to, true);
    if (!(math::Dot(leaving, chord) >= 0 && math::Dot(arriving, chord) >= 0)) return kNoFit;

    const double alpha = math::Atan2(math::Cross(leaving, chord), math::Dot(leaving, chord));
    const double beta = math::Atan2(math::Cross(chord, arriving), math::Dot(chord, arriving));
    if (std::abs(alpha - beta) < kSameAngle) {
        const double bulge = math::Tan(alpha / 2);
        return {{{to, bulge}, {}}, 1, Deviation(curve, from, to, {start, end, bulge})};
    }
    const auto u = JointOnCurve(curve, from, to, (alpha + beta) / 2);
    if (!u) return kNoFit;
    const math::DPOINT2 joint = curve.PointAt(*u);
    const double first = BulgeBetween(leaving, joint - start);
    const double second = BulgeBetween(end - joint, arriving);
    const double deviation = std::max(Deviation(curve, from, *u, {start, joint, first}),
                                      Deviation(curve, *u, to, {joint, end, second}));
    return {{{*u, first}, {to, second}}, 2, deviation};
}

// A stretch that is shorter than the error and cannot be fitted is its own chord: this ends the steps into a
// cusp.
Fit FitStep(const FitCurve& curve, double from, double to, const FitSettings& settings) {
    Fit fit = kNoFit;
    if (curve.Advances(from, to))
        fit = settings.chords ? FitChord(curve, from, to) : FitBiarc(curve, from, to);
    const bool isWithin = fit.deviation <= settings.error;
    return isWithin || curve.GetLengthBound(from, to) > settings.error ? fit : Fit{{{to, 0}, {}}, 1, 0};
}

// The longest step from a parameter that keeps the error, found by the order with which the deviation grows.
// `step` holds the first guess and then the step taken.
std::optional<Fit> LongestStep(const FitCurve& curve, double from, double to, double& step,
                               const FitSettings& settings) {
    constexpr int kMaxTries = 80;
    const double order = settings.chords ? 2 : 3; // with which the deviation grows
    std::optional<Fit> best;
    double fits = 0;
    double tooLong = to - from;
    bool limitTried = false;
    double length = std::min(step, tooLong);
    for (int i = 0; i < kMaxTries; ++i) {
        const bool toLimit = length >= to - from;
        const Fit fit = FitStep(curve, from, toLimit ? to : from + length, settings);
        limitTried = limitTried || toLimit;
        if (fit.deviation <= settings.error) {
            best = fit;
            step = fits = length;
            if (toLimit || fit.deviation >= kGoodFit * settings.error) break;
        } else {
            tooLong = length;
            limitTried = true;
        }
        if (best && tooLong - fits <= (1 - kGoodFit) / order * tooLong && limitTried) break;
        const double room = kAim * settings.error / fit.deviation;
        length *= settings.chords ? std::sqrt(room) : math::Cbrt(room);
        if (length >= tooLong && !limitTried) length = tooLong;
        if (!(length > fits && (length < tooLong || !limitTried))) length = 0.5 * (fits + tooLong);
    }
    return best;
}

} // namespace

math::Parameters FitEllipse::SolveFoot(const math::FootEquation& equation, double from, double to) const {
    math::Parameters inside;
    for (const double t : m_arc.SolveFoot(equation)) {
        const double u = from + math::RegularizeRadian(m_dSign * (t - ParameterAt(from)));
        if (u < to) inside.Add(u);
    }
    return inside;
}

double FitEllipse::GetLengthBound(double from, double to) const {
    return (to - from) * std::max(m_arc.GetSemiAxisA(), m_arc.GetSemiAxisB());
}

math::DPOINT2 FitBezier::TangentAt(double u, bool arriving) const {
    if (!arriving) return m_bezier.TangentAt(u);
    return -math::CubicBezier{m_bezier.end, m_bezier.ctrl2, m_bezier.ctrl1, m_bezier.start}.TangentAt(1 - u);
}

math::Parameters FitBezier::SolveFoot(const math::FootEquation& equation, double from, double to) const {
    return m_bezier.SolveFoot(equation, from, to);
}

// The control points of the stretch, from its end points and derivatives.
math::CubicBezier FitBezier::Stretch(double from, double to) const {
    const double third = (to - from) / 3;
    const math::DPOINT2 start = m_bezier.PointAt(from);
    const math::DPOINT2 end = m_bezier.PointAt(to);
    return {start, start + m_bezier.DerivativeAt(from) * third, end - m_bezier.DerivativeAt(to) * third, end};
}

bool FitBezier::Advances(double from, double to) const {
    const math::CubicBezier b = Stretch(from, to);
    const math::DPOINT2 chord = b.end - b.start;
    return math::Dot(chord, chord) > 0 && math::Dot(b.ctrl1 - b.start, chord) >= 0
           && math::Dot(b.ctrl2 - b.ctrl1, chord) >= 0 && math::Dot(b.end - b.ctrl2, chord) >= 0;
}

double FitBezier::GetLengthBound(double from, double to) const {
    const math::CubicBezier b = Stretch(from, to);
    return math::Norm(b.ctrl1 - b.start) + math::Norm(b.ctrl2 - b.ctrl1) + math::Norm(b.end - b.ctrl2);
}

bool FitStretch(const FitCurve& curve, double from, double to, const FitSettings& settings,
                std::vector<FitNode>& nodes) {
    double step = to - from;
    for (double u = from; u < to;) {
        const auto fit = LongestStep(curve, u, to, step, settings);
        if (!fit || !(fit->nodes[0].u > u) || nodes.size() + 2 > settings.maxNodes) return false;
        nodes.insert(nodes.end(), fit->nodes, fit->nodes + fit->count);
        u = nodes.back().u;
    }
    return true;
}

} // namespace qev
