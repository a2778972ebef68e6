// A biarc is two arcs that leave and reach the ends of a stretch in given directions and meet in a common
// tangent. Their joint may lie anywhere on one circle through both ends (Bolton 1975); here it is the point
// in which that circle meets the curve, which makes both arcs deviate alike. How far they deviate is bounded
// in arc_deviation.h.
//
// Biarcs that begin and end along the curve's tangents waste half of what they could do. Against a curve
// whose curvature grows by k with the length, an arc of the length l errs by k/6 x (l - x) (r - x), where r
// depends on the direction in which it starts. Along the tangent r is 0 and there is one lobe; for r = l/2
// there are two, which are three times lower. So a step ends a little off the tangent, by a part of what the
// stretch turns more at its end than at its start, and the next one continues it. An eighth would make all
// lobes equal; but then the error has a hump on the way to the longest step, below which the search could
// stay, so it is a tenth. Only the ends of the whole stretch keep the tangent. This takes a fifth fewer arcs.
//
// Where the curvature stops growing or begins to fall within a step, it may be that no biarc continues such a
// direction. Then the step before is taken back and made anew, along the tangent at its end. A stretch for
// which that does not help either, as one with a cusp, is fitted by biarcs along the tangents alone.
//
// No function of angles is called but for points of an ellipse: the tangent of half the angle between two
// vectors is their cross product over the sum of the product of their lengths and their scalar product.
//
// Rejected: single arcs that continue the one before, each as long as it may be, whose directions swing up;
// least squares, which is nearer on average and says nothing of the largest deviation.
#include "arc_fit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include <qevmath/root.h>

#include "arc_deviation.h"
#include "greedy_fit.h"

namespace math {
namespace {

// Of the stretch: the joint of a biarc is searched this far from its ends. Nearer, the directions to the ends
// are blurred by rounding.
constexpr double kJointMargin = 1e-3;
// Sine of an angle. Directions that make the same angle with the chord to this are met by one arc.
constexpr double kSameAngle = 1e-9;

// tan(angle / 2) of the angle from u to v: the bulge of the arc with the tangent u and the chord v.
double BulgeBetween(const DPOINT2& u, const DPOINT2& v) {
    const double divisor = Norm(u) * Norm(v) + Dot(u, v);
    return divisor > 0 ? Cross(u, v) / divisor : 0;
}

// The direction at the other end of the arc that has a direction at one end of its chord.
DPOINT2 Mirrored(const DPOINT2& direction, const DPOINT2& chord) {
    return chord * (2 * Dot(direction, chord) / Dot(chord, chord)) - direction;
}

// The directions, unit vectors, in which arcs leave the start of a stretch and reach its end.
struct Ends {
    DPOINT2 leaving;
    DPOINT2 arriving;
};

// Sine of what the directions turn against the chord more at the end than at the start.
double ExcessOf(const Ends& ends, const DPOINT2& chord) {
    return (Cross(chord, ends.arriving) * Dot(ends.leaving, chord)
            - Cross(ends.leaving, chord) * Dot(chord, ends.arriving))
           / Dot(chord, chord);
}

// The arcs of a curve from a point on, left in a given direction or along the tangent. `lead` is the part of
// the excess of a stretch by which a step ends against the tangent.
template <class Curve>
class ArcStep {
public:
    static constexpr int kOrder = 3;

    ArcStep(const Curve& curve, const DPOINT2& leaving, double lead)
        : m_curve(curve), m_leaving(leaving), m_dLead(lead) {}

    Step operator()(double from, double to) const {
        if (!m_curve.Advances(from, to)) return kNoFit;
        const Ends tangents{m_curve.TangentAt(from, false), m_curve.TangentAt(to, true)};
        const double turn = m_dLead * ExcessOf(tangents, Chord(from, to));
        const DPOINT2 arriving = tangents.arriving - LeftOf(tangents.arriving) * turn;
        const double norm = Norm(arriving); // 0 where the curve has no tangent
        return FitBiarc(from, to, {m_leaving, norm > 0 ? arriving / norm : arriving}, tangents);
    }
    // A step into a cusp would break the chain.
    double GetLengthBound(double, double) const { return std::numeric_limits<double>::infinity(); }

private:
    DPOINT2 Chord(double from, double to) const { return m_curve.At(to).point - m_curve.At(from).point; }

    Step FitArc(double from, double to, const DPOINT2& leaving) const {
        const DPOINT2 start = m_curve.At(from).point;
        const DPOINT2 end = m_curve.At(to).point;
        if (!(Dot(end - start, end - start) > 0 && Dot(leaving, end - start) >= 0)) return kNoFit;
        const double bulge = BulgeBetween(leaving, end - start);
        const Circle circle(start, end, bulge);
        return {{{to, bulge}, {}}, 1, circle.Distance(m_curve.BoundF(circle, from, to))};
    }

    // One arc where that reaches the end in its direction.
    Step FitBiarc(double from, double to, const Ends& ends, const Ends& tangents) const {
        const DPOINT2 chord = Chord(from, to);
        if (!(Dot(ends.leaving, chord) >= 0 && Dot(ends.arriving, chord) >= 0)) return kNoFit;
        if (std::abs(ExcessOf(ends, chord)) < kSameAngle) return FitArc(from, to, ends.leaving);
        const auto u = FindJoint(from, to, ends, tangents);
        if (!u) return kNoFit;
        const Step first = FitArc(from, *u, ends.leaving);
        const Step second = FitArc(*u, to, Mirrored(ends.arriving, Chord(*u, to)));
        return {{first.nodes[0], second.nodes[0]}, 2, std::max(first.deviation, second.deviation)};
    }

    // In the joint the direction v to the end has turned against the direction w from the start by half of
    // what the ends turn, which is the angle of the vector `half`. Just after the start and just before the
    // end one of them is the tangent; where neither has turned too much and the other too little, there is no
    // joint.
    std::optional<double> FindJoint(double from, double to, const Ends& ends, const Ends& tangents) const {
        const DPOINT2 chord = Chord(from, to);
        const DPOINT2 half{1 + Dot(ends.leaving, ends.arriving), Cross(ends.leaving, ends.arriving)};
        const auto excess = [&](const DPOINT2& w, const DPOINT2& v) {
            return Cross(w, v) * half.x - Dot(w, v) * half.y;
        };
        const double low = excess(tangents.leaving, chord);
        if (!(low * excess(chord, tangents.arriving) < 0)) return std::nullopt;
        const DPOINT2 start = m_curve.At(from).point;
        const auto withSlope = [&](double u) {
            const auto [joint, travel] = m_curve.At(u);
            const DPOINT2 w = joint - start;
            const DPOINT2 v = chord - w;
            return std::pair(excess(w, v), Cross(travel, chord) * half.x - Dot(travel, v - w) * half.y);
        };
        const double margin = (to - from) * kJointMargin;
        return FindRoot(withSlope, from + margin, to - margin, low < 0);
    }

    const Curve& m_curve;
    DPOINT2 m_leaving;
    double m_dLead;
};

// The biarcs along the curve's tangents, as FitGreedily takes them.
template <class Curve>
class TangentBiarcs {
public:
    static constexpr int kOrder = 3;

    explicit TangentBiarcs(const Curve& curve) : m_curve(curve) {}

    Step operator()(double from, double to) const {
        return ArcStep(m_curve, m_curve.TangentAt(from, false), 0)(from, to);
    }
    double GetLengthBound(double from, double to) const { return m_curve.GetLengthBound(from, to); }
    double GetLeastNodes(double, double) const { return 1; } // arcs reach the limit only by many stretches

private:
    const Curve& m_curve;
};

// Biarcs each of which continues the one before.
template <class Curve>
class Chain {
public:
    Chain(const Curve& curve, double from, double to, const FitSettings& settings,
          std::vector<FitNode>& nodes)
        : m_curve(curve), m_to(to), m_settings(settings),
          m_nodes(nodes), m_here{from, curve.TangentAt(from, false), nodes.size(), {to - from}, true},
          m_before(m_here) {}

    // False when the stretch cannot be fitted that way; what was appended is then left in the list.
    bool Fit() {
        constexpr double kNearEnd =
            2; // steps: one that ends along the tangent reaches less far than one that does not
        constexpr int kMaxClosings = 8; // as each that fails halves what is left, the chain is stuck
        for (int closings = 0; closings < kMaxClosings;) {
            const double rest = m_to - m_here.u;
            const bool nearEnd = rest <= kNearEnd * m_here.guess.length;
            if (nearEnd) {
                const Step closing = ArcStep(m_curve, m_here.leaving, 0)(m_here.u, m_to);
                if (closing.deviation <= m_settings.error) return Append(closing);
                ++closings;
            }
            if (!Advance(nearEnd ? m_here.u + 0.5 * rest : m_to)) return false;
        }
        return false;
    }

private:
    // Where the chain has got.
    struct Place {
        double u;
        DPOINT2 leaving;
        std::size_t nodes;
        Guess guess;
        bool onTangent;
    };

    // A step from here, or from the place before to here along the tangent.
    bool Advance(double limit) {
        constexpr double kLead = 0.1; // of what a stretch turns more at its end: see above
        if (StepFrom(m_here, limit, kLead)) return true;
        return !m_here.onTangent && StepFrom(m_before, m_here.u, 0);
    }

    // False when there is no step, or only one far shorter than its neighbours.
    bool StepFrom(Place start, double limit, double lead) {
        constexpr double kFarShorter = 0.25;
        const double expected = std::min(start.guess.ideal, limit - start.u);
        const auto step =
            LongestStep(ArcStep(m_curve, start.leaving, lead), start.u, limit, m_settings.error, start.guess);
        if (!step || !(step->nodes[0].u > start.u)) return false;
        if (step->nodes[step->count - 1].u - start.u < kFarShorter * expected) return false;
        m_before = m_here;
        m_here = start;
        m_here.onTangent = lead == 0;
        m_nodes.resize(start.nodes);
        return Append(*step);
    }

    bool Append(const Step& step) {
        if (m_nodes.size() + step.count > m_settings.maxNodes) return false;
        for (int i = 0; i < step.count; ++i) {
            const double u = step.nodes[i].u;
            m_here.leaving = Mirrored(m_here.leaving, m_curve.At(u).point - m_curve.At(m_here.u).point);
            m_here.u = u;
            m_nodes.push_back(step.nodes[i]);
        }
        m_here.nodes = m_nodes.size();
        return true;
    }

    const Curve& m_curve;
    double m_to;
    const FitSettings& m_settings;
    std::vector<FitNode>& m_nodes;
    Place m_here;
    Place m_before;
};

template <class Curve>
bool FitByArcs(const Curve& curve, double from, double to, const FitSettings& settings,
               std::vector<FitNode>& nodes) {
    const std::size_t first = nodes.size();
    if (Chain(curve, from, to, settings, nodes).Fit()) return true;
    if (nodes.size() + 2 > settings.maxNodes) return false; // other biarcs would be more
    nodes.resize(first);
    return FitGreedily(TangentBiarcs(curve), from, to, settings, nodes);
}

} // namespace

bool FitArcs(const EllipticArc& arc, double from, double to, const FitSettings& settings,
             std::vector<FitNode>& nodes) {
    return FitByArcs(EllipseCurve(arc), from, to, settings, nodes);
}

bool FitArcs(const CubicBezier& bezier, double from, double to, const FitSettings& settings,
             std::vector<FitNode>& nodes) {
    return FitByArcs(BezierCurve(bezier), from, to, settings, nodes);
}

} // namespace math
