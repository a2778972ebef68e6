// A cubic piece with given ends and tangents has two free numbers, how far its control points lie along the
// tangents. It begins with both at a third of the length. Each point gets the parameter of the piece's point
// nearest to it, by a Newton step, at first in proportion to the length of the chords. Then the two numbers
// that make the points' squared distances from the piece's tangents least follow from two linear equations,
// and so on in turns. (Fitting by the distance from the tangents is the method of Gauss and Newton; it needs
// a few rounds where the distance from points, as in Schneider's "An algorithm for automatically fitting
// digitized curves", 1990, needs hundreds: see Wang, Pottmann and Liu, "Fitting B-spline curves to point
// clouds", 2006.)
//
// What is measured is the distance of each point from the piece's point at its parameter, which is never less
// than its distance from the piece. So an accepted piece passes all points within the tolerance; what lies
// between them is as near as the points are dense. The error falls with the sixth power of the stretch, as
// the two numbers let the piece bend as the curve does at its ends. Pieces with the curve's derivatives,
// which need no search, were rejected: they fall with the fourth power alone, and a circle took eight times
// as many.

#include "bezier_fit.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

using math::CubicBezier;
using math::DPOINT2;

// Rounds of correcting the parameters and finding the two numbers: after these few the error of smooth
// stretches changes no more, and a stretch that needs more is better halved.
constexpr int kRounds = 6;

// The least determinant of the two equations, as a part of the product of their diagonal: below it the
// columns are equal to rounding and the numbers are noise.
constexpr double kSingular = 1e-12;

// For each point the length of the chords up to it, as a part of all of them; the length of all goes to
// `total`.
std::vector<double> ChordParameters(const std::vector<DPOINT2>& points, double& total) {
    std::vector<double> parameters{0};
    for (std::size_t i = 1; i < points.size(); ++i)
        parameters.push_back(parameters.back() + math::Norm(points[i] - points[i - 1]));
    total = parameters.back();
    for (double& each : parameters) each /= total;
    return parameters;
}

// The piece whose control points lie so far along the tangents of a stretch.
CubicBezier PieceOf(const CurveStretch& stretch, double alpha, double beta) {
    const DPOINT2 start = stretch.points.front();
    const DPOINT2 end = stretch.points.back();
    return {start, start + stretch.startTangent * alpha, end - stretch.endTangent * beta, end};
}

// The piece with the least squared distances, at the parameters, from the tangents of the piece before. When
// no solution leaves along both tangents and no farther than the stretch is long, it stays as it was.
CubicBezier Improved(const CurveStretch& stretch, const std::vector<double>& parameters, double length,
                     const CubicBezier& before) {
    double aa = 0;
    double ab = 0;
    double bb = 0;
    double ar = 0;
    double br = 0;
    for (std::size_t i = 1; i + 1 < parameters.size(); ++i) {
        const double t = parameters[i];
        const double s = 1 - t;
        const DPOINT2 normal = math::LeftOf(before.TangentAt(t));
        const double a = math::Dot(normal, stretch.startTangent) * (3 * s * s * t);
        const double b = math::Dot(normal, stretch.endTangent) * (-3 * s * t * t);
        const DPOINT2 rest =
            stretch.points[i] - before.start * (s * s * (s + 3 * t)) - before.end * (t * t * (t + 3 * s));
        const double r = math::Dot(normal, rest);
        aa += a * a;
        ab += a * b;
        bb += b * b;
        ar += a * r;
        br += b * r;
    }
    const double determinant = aa * bb - ab * ab;
    if (!(determinant > kSingular * aa * bb)) return before;
    const double alpha = (ar * bb - br * ab) / determinant;
    const double beta = (br * aa - ar * ab) / determinant;
    const auto usable = [length](double reach) { return reach > 0 && reach < length; };
    return usable(alpha) && usable(beta) ? PieceOf(stretch, alpha, beta) : before;
}

// The parameter of the piece's point next to p, by one Newton step from a parameter near it.
double Corrected(const CubicBezier& piece, const DPOINT2& p, double t) {
    const DPOINT2 off = piece.PointAt(t) - p;
    const DPOINT2 speed = piece.DerivativeAt(t);
    const DPOINT2 bend = (piece.ctrl2 - piece.ctrl1 * 2 + piece.start) * (6 * (1 - t))
                         + (piece.end - piece.ctrl2 * 2 + piece.ctrl1) * (6 * t);
    const double slope = math::Dot(speed, speed) + math::Dot(off, bend);
    return slope > 0 ? std::clamp(t - math::Dot(off, speed) / slope, 0.0, 1.0) : t;
}

} // namespace

std::optional<CubicBezier> FitBezier(const CurveStretch& stretch, double tolerance) {
    double length = 0;
    std::vector<double> parameters = ChordParameters(stretch.points, length);
    CubicBezier piece = PieceOf(stretch, length / 3, length / 3);
    for (int round = 0; round < kRounds; ++round) {
        double worst = 0;
        for (std::size_t i = 1; i + 1 < parameters.size(); ++i) {
            parameters[i] = Corrected(piece, stretch.points[i], parameters[i]);
            worst = std::max(worst, math::Norm(piece.PointAt(parameters[i]) - stretch.points[i]));
        }
        if (worst <= tolerance) return piece;
        piece = Improved(stretch, parameters, length, piece);
    }
    return std::nullopt;
}

} // namespace host
