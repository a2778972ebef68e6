// A curve is walked greedily: each step takes the longest stretch that one chord, or one pair of arcs with a
// common tangent (a biarc), can stand for. A stretch that fits still fits when it is
// shortened, so no other choice of nodes gets farther with as many steps; a step may stop at nine tenths of
// the error, which costs a few nodes in a hundred.
//
// The deviation of a step is not sampled. Between the ends, which curve and fit share, the distance from a
// circle or a line is largest where it is stationary, which is where the curve's normal passes through the
// centre. These parameters are the roots of the curve's foot equation, which it solves without missing one.
// So the bound holds to rounding, some 1e-16 of the curve's size, as everything is computed in a frame with
// the origin on or in the curve. The distance from a circle is that from the arc only if the stretch does not
// leave the arc's sector, which is why a stretch has to advance along its chord all the way.
//
// Rejected: sampling at fixed parameters, which misses the peak between two samples and costs more than the
// roots; halving the curve until the pieces fit, which needs up to twice the nodes; fitting by least squares,
// which is nearer on average and says nothing of the largest deviation.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include <qevmath/angle.h>
#include <qevmath/arc.h>
#include <qevmath/curve_fit.h>
#include <qevmath/elementary.h>
#include <qevmath/root.h>

namespace math {
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

// What the fit has to know of a curve, parametrised by u from 0.
class FitCurve {
public:
    FitCurve() = default;
    FitCurve(const FitCurve&) = delete;
    FitCurve& operator=(const FitCurve&) = delete;
    virtual ~FitCurve() = default;
    virtual DPOINT2 PointAt(double u) const = 0;
    // Unit vector of travel just after u, or just before it for `arriving`: they differ in a cusp.
    virtual DPOINT2 TangentAt(double u, bool arriving) const = 0;
    // The roots of the foot equation strictly between two parameters.
    virtual Parameters SolveFoot(const FootEquation& equation, double from, double to) const = 0;
    // Whether the stretch advances along its chord all the way, so that it has no loop or cusp.
    virtual bool Advances(double from, double to) const = 0;
    // An upper bound of the stretch's length in mm.
    virtual double GetLengthBound(double from, double to) const = 0;
};

// An elliptic arc round the origin; u is the parameter travelled from its start, whichever way it runs.
class FitEllipse final : public FitCurve {
public:
    explicit FitEllipse(const EllipticArc& arc)
        : m_arc(arc.Translated(-arc.GetCenter())), m_dSign(arc.GetSweep() < 0 ? -1 : 1) {}

    DPOINT2 PointAt(double u) const override { return m_arc.PointAt(ParameterAt(u)); }
    DPOINT2 TangentAt(double u, bool) const override { return m_arc.TangentAt(ParameterAt(u)) * m_dSign; }

    Parameters SolveFoot(const FootEquation& equation, double from, double to) const override {
        Parameters inside;
        for (const double t : m_arc.SolveFoot(equation)) {
            const double u = from + RegularizeRadian(m_dSign * (t - ParameterAt(from)));
            if (u < to) inside.Add(u);
        }
        return inside;
    }

    bool Advances(double, double) const override { return true; } // as it does within a quadrant
    double GetLengthBound(double from, double to) const override {
        return (to - from) * std::max(m_arc.GetSemiAxisA(), m_arc.GetSemiAxisB());
    }

private:
    double ParameterAt(double u) const { return m_arc.GetStart() + m_dSign * u; }

    EllipticArc m_arc;
    double m_dSign;
};

// A Bezier piece that starts in the origin, with its own parameter.
class FitBezier final : public FitCurve {
public:
    explicit FitBezier(const CubicBezier& bezier)
        : m_bezier{{}, bezier.ctrl1 - bezier.start, bezier.ctrl2 - bezier.start, bezier.end - bezier.start} {}

    DPOINT2 PointAt(double u) const override { return m_bezier.PointAt(u); }

    DPOINT2 TangentAt(double u, bool arriving) const override {
        if (!arriving) return m_bezier.TangentAt(u);
        return -CubicBezier{m_bezier.end, m_bezier.ctrl2, m_bezier.ctrl1, m_bezier.start}.TangentAt(1 - u);
    }

    Parameters SolveFoot(const FootEquation& equation, double from, double to) const override {
        return m_bezier.SolveFoot(equation, from, to);
    }

    // The derivative is a mean of the legs of the control polygon, with weights that are not negative.
    bool Advances(double from, double to) const override {
        const CubicBezier b = Stretch(from, to);
        const DPOINT2 chord = b.end - b.start;
        return Dot(chord, chord) > 0 && Dot(b.ctrl1 - b.start, chord) >= 0
               && Dot(b.ctrl2 - b.ctrl1, chord) >= 0 && Dot(b.end - b.ctrl2, chord) >= 0;
    }

    double GetLengthBound(double from, double to) const override {
        const CubicBezier b = Stretch(from, to);
        return Norm(b.ctrl1 - b.start) + Norm(b.ctrl2 - b.ctrl1) + Norm(b.end - b.ctrl2);
    }

private:
    // The stretch as a Bezier piece of its own: its control points follow from its ends and derivatives.
    CubicBezier Stretch(double from, double to) const {
        const double third = (to - from) / 3;
        const DPOINT2 start = m_bezier.PointAt(from);
        const DPOINT2 end = m_bezier.PointAt(to);
        return {start, start + m_bezier.DerivativeAt(from) * third, end - m_bezier.DerivativeAt(to) * third,
                end};
    }

    CubicBezier m_bezier;
};

// Largest distance of the stretch from the line or circle through `arc`, which shares the stretch's ends.
double Deviation(const FitCurve& curve, double from, double to, const BulgeArc& arc) {
    const DPOINT2 apex = arc.PointAt(0.5);
    const DPOINT2 normal = LeftOf(arc.DirectionAt(0.5));
    const double k = arc.GetCurvature();
    double deviation = 0;
    for (const double u : curve.SolveFoot({k, apex * k + normal}, from, to)) {
        // |p - C| - R as (|p - C|^2 - R^2) / (|p - C| + R), with k multiplied into both sides of the
        // fraction: the centre C, which lies far away from a nearly straight arc, cancels out
        const DPOINT2 w = curve.PointAt(u) - apex;
        const double d = (k * Dot(w, w) - 2 * Dot(w, normal)) / (1 + Norm(w * k - normal));
        deviation = std::max(deviation, std::abs(d));
    }
    return deviation;
}

// tan(angle / 2) of the angle from u to v: the bulge of the arc with the tangent u and the chord v.
double BulgeBetween(const DPOINT2& u, const DPOINT2& v) {
    return Tan(Atan2(Cross(u, v), Dot(u, v)) / 2);
}

// The one or two nodes that stand for a stretch.
struct Step {
    FitNode nodes[2];
    int count;
    double deviation; // mm; infinite when the stretch cannot be fitted at all
};

constexpr Step kNoFit{{}, 0, std::numeric_limits<double>::infinity()};

Step FitChord(const FitCurve& curve, double from, double to) {
    const BulgeArc chord{curve.PointAt(from), curve.PointAt(to), 0};
    if (chord.GetLength() == 0) return kNoFit;
    return {{{to, 0}, {}}, 1, Deviation(curve, from, to, chord)};
}

// The joint of a biarc may lie anywhere on one circle through both ends (Bolton 1975); here it is the point
// in which that circle meets the curve. There the direction v from the joint to the end has turned against
// the direction w from the start to the joint by half of what the tangents turn.
std::optional<double> JointOnCurve(const FitCurve& curve, double from, double to, double halfTurn) {
    const DPOINT2 start = curve.PointAt(from);
    const DPOINT2 end = curve.PointAt(to);
    const auto excess = [&](double u) {
        const DPOINT2 joint = curve.PointAt(u);
        const DPOINT2 w = joint - start;
        const DPOINT2 v = end - joint;
        const double turn = Atan2(Cross(w, v), Dot(w, v)) - halfTurn;
        const double speed = Norm(end - start) / (to - from);
        const DPOINT2 travel = curve.TangentAt(u, false) * speed;
        return std::pair(turn, -Cross(v, travel) / Dot(v, v) - Cross(w, travel) / Dot(w, w));
    };
    const double margin = (to - from) * kJointMargin;
    const double low = excess(from + margin).first;
    const double high = excess(to - margin).first;
    if (low == 0 && high == 0) return 0.5 * (from + to);
    if (!(low * high < 0)) return std::nullopt;
    return FindRoot(excess, from + margin, to - margin, low < 0);
}

// A biarc: two arcs that leave and reach the stretch's ends along its tangents and meet in a common tangent;
// one arc where that is enough.
Step FitBiarc(const FitCurve& curve, double from, double to) {
    const DPOINT2 start = curve.PointAt(from);
    const DPOINT2 end = curve.PointAt(to);
    const DPOINT2 chord = end - start;
    const DPOINT2 leaving = curve.TangentAt(from, false);
    const DPOINT2 arriving = curve.TangentAt(to, true);
    if (!(Dot(leaving, chord) >= 0 && Dot(arriving, chord) >= 0)) return kNoFit;

    const double alpha = Atan2(Cross(leaving, chord), Dot(leaving, chord));
    const double beta = Atan2(Cross(chord, arriving), Dot(chord, arriving));
    if (std::abs(alpha - beta) < kSameAngle) {
        const double bulge = Tan(alpha / 2);
        return {{{to, bulge}, {}}, 1, Deviation(curve, from, to, {start, end, bulge})};
    }
    const auto u = JointOnCurve(curve, from, to, (alpha + beta) / 2);
    if (!u) return kNoFit;
    const DPOINT2 joint = curve.PointAt(*u);
    const double first = BulgeBetween(leaving, joint - start);
    const double second = BulgeBetween(end - joint, arriving);
    const double deviation = std::max(Deviation(curve, from, *u, {start, joint, first}),
                                      Deviation(curve, *u, to, {joint, end, second}));
    return {{{*u, first}, {to, second}}, 2, deviation};
}

// A stretch that is shorter than the error and cannot be fitted is its own chord: this ends the steps into a
// cusp.
Step FitStep(const FitCurve& curve, double from, double to, const FitSettings& settings) {
    Step fit = kNoFit;
    if (curve.Advances(from, to))
        fit = settings.chords ? FitChord(curve, from, to) : FitBiarc(curve, from, to);
    const bool isWithin = fit.deviation <= settings.error;
    return isWithin || curve.GetLengthBound(from, to) > settings.error ? fit : Step{{{to, 0}, {}}, 1, 0};
}

// The longest step from a parameter that keeps the error. The deviation of a chord grows with the square of
// its length, that of a biarc with the third power: so each try tells what length the next one should have. A
// length that fits and one that does not close in on the answer where the curve does not grow that evenly.
// `step` holds the first guess, which is the step before, and then the step taken.
std::optional<Step> LongestStep(const FitCurve& curve, double from, double to, double& step,
                                const FitSettings& settings) {
    constexpr int kMaxTries = 80;
    const double order = settings.chords ? 2 : 3; // with which the deviation grows
    std::optional<Step> best;
    double fits = 0;
    double tooLong = to - from;
    bool limitTried = false;
    double length = std::min(step, tooLong);
    for (int i = 0; i < kMaxTries; ++i) {
        const bool toLimit = length >= to - from;
        const Step fit = FitStep(curve, from, toLimit ? to : from + length, settings);
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
        length *= settings.chords ? std::sqrt(room) : Cbrt(room);
        if (length >= tooLong && !limitTried) length = tooLong;
        if (!(length > fits && (length < tooLong || !limitTried))) length = 0.5 * (fits + tooLong);
    }
    return best;
}

bool Fit(const FitCurve& curve, double from, double to, const FitSettings& settings,
         std::vector<FitNode>& nodes);

// Whether the nodes that are left may suffice. The deviation grows with the second power of a chord and the
// third of a biarc, so a fit to a million (thousand million) times the error takes a thousandth of the nodes
// where the curve is smooth. A step uses 0.9 to 1 of the error, which changes the count by a twentieth: a fit
// that takes a quarter more than its share is hopeless. One that takes fewer has still to be tried.
bool MaySuffice(const FitCurve& curve, double from, double to, const FitSettings& settings,
                std::size_t nodes) {
    constexpr std::size_t kFewer = 1000;
    const double coarser = settings.error * (settings.chords ? 1e6 : 1e9);
    const std::size_t share = (settings.maxNodes - nodes) / kFewer + 1;
    std::vector<FitNode> probe;
    return Fit(curve, from, to, {coarser, settings.chords, share + share / 4}, probe);
}

bool Fit(const FitCurve& curve, double from, double to, const FitSettings& settings,
         std::vector<FitNode>& nodes) {
    // Nodes of this stretch after which it is asked once whether all may suffice: enough that ordinary
    // stretches are not asked, and few enough that the answer comes in some milliseconds.
    constexpr std::size_t kManyNodes = 1300;
    const std::size_t askAt = nodes.size() + kManyNodes;
    bool asked = false;
    double step = to - from;
    for (double u = from; u < to;) {
        if (!asked && nodes.size() >= askAt) {
            if (!MaySuffice(curve, u, to, settings, nodes.size())) return false;
            asked = true;
        }
        const auto fit = LongestStep(curve, u, to, step, settings);
        if (!fit || !(fit->nodes[0].u > u) || nodes.size() + 2 > settings.maxNodes) return false;
        nodes.insert(nodes.end(), fit->nodes, fit->nodes + fit->count);
        u = nodes.back().u;
    }
    return true;
}

} // namespace

bool FitStretch(const EllipticArc& arc, double from, double to, const FitSettings& settings,
                std::vector<FitNode>& nodes) {
    return Fit(FitEllipse(arc), from, to, settings, nodes);
}

bool FitStretch(const CubicBezier& bezier, double from, double to, const FitSettings& settings,
                std::vector<FitNode>& nodes) {
    return Fit(FitBezier(bezier), from, to, settings, nodes);
}

} // namespace math
