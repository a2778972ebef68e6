// A chord's deviation from an ellipse or a cubic has a closed form, so nothing is sampled and no root is
// searched.
//
// An ellipse is the affine image of a circle. There the point that is farthest from a chord over the angle 2h
// belongs to the middle of its parameters, and the map keeps it so: the deviation is (1 - cos h) a b / v,
// with v the speed in the middle. Within a quadrant the speed rises or falls all along. The walk goes the way
// it rises: then the half angle that the speed a little before the middle allows is one that the middle
// allows too, so each step is a lower bound of the longest one without being tried, and a second look, at the
// middle that the first one found, leaves nothing to gain.
//
// For a cubic, the distance from the chord's line is (h^2 - s^2) (m + k s) / |w| in the stretch's own
// frame (cubic_stretch.h), with w along the chord, m = v x e - h^2 e x d and k = v x d, whose peak is the
// root of a quadratic.
//
// Both bounds hold to rounding, some 1e-16 of the curve's size. Rejected: halving until the chords fit,
// which needs up to twice the chords; steps by the local curvature alone, which is no bound where the
// curvature rises.
#include "chord_fit.h"

#include <algorithm>
#include <cmath>

#include <qevmath/elementary.h>

#include "cubic_stretch.h"
#include "greedy_fit.h"
#include "lobes.h"

namespace math {
namespace {

// Stretches by which the number of chords is bounded: few beside the chords after which that is asked.
constexpr int kCells = 500;

// The walk along a stretch of an ellipse, measured from the end where it is slower.
class EllipseWalk {
public:
    EllipseWalk(const EllipticArc& arc, double from, double to, double error)
        : m_a(arc.GetSemiAxisA()), m_b(arc.GetSemiAxisB()), m_start(arc.GetStart()),
          m_sign(arc.GetSweep() < 0 ? -1 : 1), m_from(from), m_to(to),
          m_scale(error / std::max(m_a, m_b) / std::min(m_a, m_b) / 2) {
        m_rises = Speed(0) <= Speed(to - from);
    }

    bool Rises() const { return m_rises; }
    double ParameterAt(double travelled) const { return m_rises ? m_from + travelled : m_to - travelled; }

    // The angle of the longest half chord from a place on, or more than half of what is left when that fits
    // as one chord; `half` is one that is known to fit. 1 - cos(h) is 2 sin^2(h/2), and asin(x) >= x + x^3/6.
    double LongestHalf(double travelled, double half) const {
        constexpr double kSettled = 0.01;        // of the half: what is left to gain is a fraction of it
        constexpr double kCoversQuadrant = 0.25; // sin^2(h/2) of an h above pi/4
        const double enough = 0.5 * (m_to - m_from - travelled);
        for (double seen = -1; half < enough && half - seen > kSettled * half;) {
            const double sine2 = m_scale * Speed(travelled + half);
            if (!(sine2 < kCoversQuadrant)) return enough; // nor is it a number for a flat ellipse
            const double sine = std::sqrt(sine2);
            seen = half;
            half = 2 * (sine + sine * sine2 / 6);
        }
        return half;
    }

    // No more than the chords that are left from a place on. The speed rises, so no half chord that ends
    // within a cell is longer than the one at the cell's end allows; asin(x) <= x + x^3/5 up to 0.5.
    // A chord that crosses into the next cell is counted twice.
    double GetLeastNodes(double travelled) const {
        const double width = (m_to - m_from - travelled) / kCells;
        double chords = -kCells;
        for (int i = 1; i <= kCells; ++i) {
            const double sine2 = m_scale * Speed(travelled + i * width);
            chords += width / (4 * (std::sqrt(sine2) * (1 + sine2 / 5)));
        }
        return chords;
    }

private:
    double Speed(double travelled) const {
        const auto [s, c] = SinCos(m_start + m_sign * ParameterAt(travelled));
        return Norm({m_a * s, m_b * c});
    }

    double m_a;
    double m_b;
    double m_start;
    double m_sign;
    double m_from;
    double m_to;
    double m_scale; // times the speed it is the square of the sine of half the half chord
    bool m_rises = true;
};

// The chords of a Bezier piece, as FitGreedily takes them.
class BezierChords {
public:
    static constexpr int kOrder = 2;

    BezierChords(const CubicBezier& bezier, double error) : m_powers(bezier), m_error(error) {}

    Step operator()(double from, double to) const {
        const CubicStretch b = m_powers.Between(from, to);
        if (!b.Advances()) return kNoFit;
        const double h2 = b.half * b.half;
        const double peak = PeakOfLobes(Cross(b.v, b.e) - h2 * Cross(b.e, b.d), b.half * Cross(b.v, b.d));
        return {{{to, 0}, {}}, 1, h2 * peak / Norm(b.Along())};
    }

    double GetLengthBound(double from, double to) const {
        return m_powers.Between(from, to).GetLengthBound();
    }

    // Within a cell a chord over 2h deviates by h^2 (|m| - h^2 |e x d|) / |w| at least, and a chord that
    // crosses into the next cell is counted twice.
    double GetLeastNodes(double from, double to) const {
        const double width = (to - from) / kCells;
        double chords = -kCells;
        for (int i = 0; i < kCells; ++i) {
            const CubicStretch b = m_powers.Between(from + i * width, from + (i + 1) * width);
            const double fastest = LargestSpeed(b);
            const double share = SmallestBend(b) / (m_error * fastest);
            if (share > 0) chords += b.half * std::sqrt(share);
        }
        return chords;
    }

private:
    // No less than the speed anywhere in the stretch: that of the fastest leg of the control polygon.
    static double LargestSpeed(const CubicStretch& b) {
        const DPOINT2 outer = b.v + b.d * (3 * b.half * b.half);
        const DPOINT2 turn = b.e * (2 * b.half);
        return std::max({Norm(outer - turn), Norm(b.v - b.d * (3 * b.half * b.half)), Norm(outer + turn)});
    }

    // No more than |v x e - h^2 e x d| of any chord within the stretch. v x e runs as the quadratic
    // m + 3 k s + 3 q s^2, with m, k and q in the middle, which its Bernstein coefficients bound.
    static double SmallestBend(const CubicStretch& b) {
        const double m = Cross(b.v, b.e);
        const double slope = 3 * b.half * Cross(b.v, b.d);
        const double q = b.half * b.half * Cross(b.e, b.d);
        const double low = m + 3 * q - slope;
        const double high = m + 3 * q + slope;
        const double inner = m - 3 * q;
        const double sign = m < 0 ? -1 : 1;
        return std::min({sign * low, sign * inner, sign * high}) - std::abs(q);
    }

    CubicPowers m_powers;
    double m_error;
};

} // namespace

bool FitChords(const EllipticArc& arc, double from, double to, const FitSettings& settings,
               std::vector<FitNode>& nodes) {
    const EllipseWalk walk(arc, from, to, settings.error);
    const double length = to - from;
    const std::size_t first = nodes.size();
    double half = 0;
    double travelled = 0;
    while (travelled < length) {
        half = walk.LongestHalf(travelled, half);
        const double next = 2 * half < length - travelled ? travelled + 2 * half : length;
        if (!(next > travelled) || nodes.size() >= settings.maxNodes) return false;
        if (nodes.size() - first == kManyNodes
            && walk.GetLeastNodes(travelled) > static_cast<double>(settings.maxNodes - nodes.size()))
            return false;
        nodes.push_back({walk.ParameterAt(walk.Rises() ? next : travelled), 0});
        travelled = next;
    }
    if (!walk.Rises()) std::reverse(nodes.begin() + static_cast<std::ptrdiff_t>(first), nodes.end());
    nodes.back().u = to;
    return true;
}

bool FitChords(const CubicBezier& bezier, double from, double to, const FitSettings& settings,
               std::vector<FitNode>& nodes) {
    return FitGreedily(BezierChords(bezier, settings.error), from, to, settings, nodes);
}

} // namespace math
