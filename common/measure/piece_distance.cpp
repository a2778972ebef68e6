// The least distance between a smooth piece C and a line or an arc B. Either it lies at an end of one of the
// two, and is the other one's nearest point from there, or inside of both. Inside of both it is the distance
// from the carrier of B, the whole line or circle, at a place where that is stationary along C; or it is 0
// where C runs through the carrier. The stationary places are the roots of the foot equation, which are found
// all of them: in closed form for a line and an arc, isolated first for an ellipse and a Bezier piece.
// Between two of them the signed distance from the carrier runs one way, so that a change of its sign tells
// one crossing, which a guarded search finds.
//
// All of these places are only candidates: each is measured from its point to the nearest point of B. So no
// answer is less than it should be, and a candidate that lies off by rounding is off in the distance by the
// square of that. There is no case of parallel lines or circles of one centre: their distance is the same all
// along, and the ends tell it.
//
// Nothing is computed from a centre. The carrier is known by a point, a tangent and a curvature
// (FootEquation), which go over into those of a line; and two arcs are stationary to each other where their
// tangents stand at right angles to w = k_b q_a - k_a q_b, which is the vector between the centres with both
// curvatures multiplied in.
//
// Rejected: the intersection and the distance of circles by their centres and radii, which lose the digits of
// nearly straight arcs and need a case for everything that touches.
#include "piece_distance.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include <qevdata/converter.h>
#include <qevdata/ellipse.h>
#include <qevdata/polyline_ex.h>
#include <qevmath/angle.h>
#include <qevmath/elementary.h>
#include <qevmath/root.h>
#include <qevmath/tolerance.h>

#include "outline.h"

namespace qev {
namespace {

using math::BulgeArc;
using math::CubicBezier;
using math::DPOINT2;
using math::EllipticArc;
using math::FootEquation;
using math::Parameters;

// The whole line or circle that a line or an arc lies on; without a chord a point, which nothing crosses.
class Carrier {
public:
    explicit Carrier(const BulgeArc& arc)
        : m_apex(arc.PointAt(0.5)), m_along(arc.DirectionAt(0.5)), m_dCurvature(arc.GetCurvature()) {}

    FootEquation GetEquation() const { return {m_dCurvature, m_apex * m_dCurvature + math::LeftOf(m_along)}; }
    // The signed distance of a point, positive to the right: of a circle | rho - 1/k | multiplied out, which
    // no far centre blurs (contour_index.cpp has the formula).
    double DistanceOf(const DPOINT2& p) const {
        const DPOINT2 from = p - m_apex;
        const double t = math::Dot(from, m_along), n = math::Cross(m_along, from), k = m_dCurvature;
        return (k * (t * t + n * n) - 2 * n) / (1 + std::sqrt(k * t * (k * t) + (1 - k * n) * (1 - k * n)));
    }
    // Its derivative along a vector.
    double SlopeOf(const DPOINT2& p, const DPOINT2& along) const {
        const DPOINT2 gradient = GetEquation().At(p);
        return math::Dot(gradient, along) / math::Norm(gradient);
    }

private:
    DPOINT2 m_apex;
    DPOINT2 m_along;     // unit vector, or (0, 0)
    double m_dCurvature; // 1/mm, positive when the circle lies to the left
};

// The curves by the share u of their parameter, from 0 to 1.

DPOINT2 PointAt(const BulgeArc& arc, double u) {
    return arc.PointAt(u);
}
DPOINT2 PointAt(const CubicBezier& bezier, double u) {
    return bezier.PointAt(u);
}
DPOINT2 PointAt(const EllipticArc& arc, double u) {
    return arc.PointAt(u < 1 ? arc.GetStart() + u * arc.GetSweep() : arc.GetEnd());
}

DPOINT2 DerivativeAt(const BulgeArc& arc, double u) {
    return arc.DirectionAt(u) * arc.GetLength();
}
DPOINT2 DerivativeAt(const CubicBezier& bezier, double u) {
    return bezier.DerivativeAt(u);
}
DPOINT2 DerivativeAt(const EllipticArc& arc, double u) {
    return arc.DerivativeAt(arc.GetStart() + u * arc.GetSweep()) * arc.GetSweep();
}

// The shares, inside of the curve and in any order, at which the foot equation holds.
Parameters Stationary(const BulgeArc& arc, const FootEquation& equation) {
    Parameters shares;
    const DPOINT2 chord = arc.end - arc.start;
    const auto add = [&](double u) {
        if (u > 0 && u < 1) shares.Add(u);
    };
    if (arc.IsStraight()) {
        add(-math::Dot(equation.At(arc.start), chord) / (equation.curvature * math::Dot(chord, chord)));
        return shares;
    }
    const FootEquation own = Carrier(arc).GetEquation();
    const DPOINT2 w = own.q * equation.curvature - equation.q * own.curvature;
    const DPOINT2 along = arc.DirectionAt(0.5);
    for (const DPOINT2& tangent : {math::LeftOf(w), -math::LeftOf(w)})
        add(0.5
            + math::Atan2(math::Cross(along, tangent), math::Dot(along, tangent))
                  / (4 * math::Atan(arc.bulge)));
    return shares;
}
Parameters Stationary(const CubicBezier& bezier, const FootEquation& equation) {
    return bezier.SolveFoot(equation);
}
Parameters Stationary(const EllipticArc& arc, const FootEquation& equation) {
    Parameters shares;
    const double sweep = arc.GetSweep(), sign = sweep < 0 ? -1 : 1;
    for (const double t : arc.SolveFoot(equation)) {
        const double travelled = math::RegularizeRadian(sign * (t - arc.GetStart()));
        if (travelled < std::abs(sweep)) shares.Add(travelled / std::abs(sweep));
    }
    return shares;
}

// The share of the point of a curve that is nearest to p.
template <class Curve>
double NearestShare(const Curve& curve, const DPOINT2& p) {
    double nearest = 0;
    const auto distance = [&](double u) { return math::D2GetDistance(p, PointAt(curve, u)); };
    const auto offer = [&](double u) {
        if (distance(u) < distance(nearest)) nearest = u;
    };
    offer(1);
    for (const double u : Stationary(curve, {1, p})) offer(u);
    return nearest;
}
double NearestShare(const BulgeArc& arc, const DPOINT2& p) {
    return arc.GetFootRatio(p);
}

// A curve beside a line or an arc.
template <class Curve>
class Beside {
public:
    Beside(const Curve& curve, const BulgeArc& other) : m_curve(curve), m_other(other), m_carrier(other) {}

    // Calls visit(u) for the ends of the curve, for the places at which it is stationary to the carrier, and
    // for those at which it crosses it.
    template <class Visit>
    void VisitPlaces(const Visit& visit) const {
        std::array<double, 10> ends{0}; // two, and at most eight stationary places between
        std::size_t count = 1;
        for (const double u : Stationary(m_curve, m_carrier.GetEquation())) ends[count++] = u;
        std::sort(ends.begin() + 1, ends.begin() + static_cast<std::ptrdiff_t>(count));
        ends[count++] = 1;
        visit(0.0);
        for (std::size_t i = 1; i < count; ++i) {
            const double before = DistanceAt(ends[i - 1]), behind = DistanceAt(ends[i]);
            if (before * behind < 0) visit(Crossing(ends[i - 1], ends[i], before < 0));
            visit(ends[i]);
        }
    }

    Gap LeastGap() const {
        Gap least;
        const auto offer = [&](const DPOINT2& on, const DPOINT2& other) {
            const double distance = math::D2GetDistance(on, other);
            if (distance < least.distance) least = {distance, on};
        };
        VisitPlaces([&](double u) {
            const DPOINT2 on = PointAt(m_curve, u);
            offer(on, m_other.PointAt(m_other.GetFootRatio(on)));
        });
        for (const DPOINT2& end : {m_other.start, m_other.end})
            offer(PointAt(m_curve, NearestShare(m_curve, end)), end);
        return least;
    }

    void AppendMeetings(double reach, std::vector<double>& shares) const {
        VisitPlaces([&](double u) {
            if (m_other.IsWithin(PointAt(m_curve, u), reach)) shares.push_back(u);
        });
        for (const DPOINT2& end : {m_other.start, m_other.end}) {
            const double u = NearestShare(m_curve, end);
            if (math::D2GetDistance(PointAt(m_curve, u), end) <= reach) shares.push_back(u);
        }
    }

private:
    double DistanceAt(double u) const { return m_carrier.DistanceOf(PointAt(m_curve, u)); }
    double Crossing(double from, double to, bool rises) const {
        const auto distance = [&](double u) {
            const DPOINT2 p = PointAt(m_curve, u);
            return std::pair(m_carrier.DistanceOf(p), m_carrier.SlopeOf(p, DerivativeAt(m_curve, u)));
        };
        return math::FindRoot(distance, from, to, rises);
    }

    const Curve& m_curve;
    const BulgeArc& m_other;
    Carrier m_carrier;
};

// Calls use(curve) with the curve that a piece is.
template <class Use>
auto WithCurve(const OutlinePiece& piece, const Use& use) {
    if (const auto* ellipse = std::get_if<EllipticArc>(&piece)) return use(*ellipse);
    const auto& segment = std::get<SEGMENT>(piece);
    return segment.nType == SEGMENT::kBezier ? use(segment.GetBezier()) : use(segment.GetArc());
}

// The curve as an object, for the converter.
std::unique_ptr<CCadObject> ObjectOf(const EllipticArc& arc) {
    const double rotation = math::Atan2(arc.GetAxisA().y, arc.GetAxisA().x);
    return std::make_unique<CCadEllipseArc>(arc.GetCenter(), arc.GetSemiAxisA(), arc.GetSemiAxisB(), rotation,
                                            arc.GetStart(), std::abs(arc.GetSweep()), arc.GetSweep() > 0,
                                            false);
}
std::unique_ptr<CCadObject> ObjectOf(const SEGMENT& segment) {
    auto object = std::make_unique<CCadPolylineEx>(false);
    object->SetStartPoint(segment.ptStart);
    object->AddBezier(segment.ptCtrl1, segment.ptCtrl2, segment.ptEnd);
    return object;
}

std::string SettingsFor(double error) {
    std::array<char, 32> digits;
    const auto [end, _] = std::to_chars(digits.data(), digits.data() + digits.size(), error);
    return "SegmentType=Both;AbsoluteError=" + std::string(digits.data(), end) + ";";
}

} // namespace

double FitOf(const OutlinePiece& curve) {
    constexpr double kFitOfExtent = 1e-9;
    return std::max(math::kOnCurve, kFitOfExtent * ExtentOf(LooseBoxOf(curve)));
}

std::unique_ptr<const CCadPolyline> ArcsOf(const OutlinePiece& curve) {
    const auto object = std::visit([](const auto& of) { return ObjectOf(of); }, curve);
    CCadPolyline* arcs = nullptr;
    CConvertCadObjectToCadPolyline(SettingsFor(FitOf(curve)).c_str())(object.get(), arcs);
    return std::unique_ptr<const CCadPolyline>(arcs);
}

Gap LeastGap(const OutlinePiece& piece, const SEGMENT& lineOrArc) {
    return WithCurve(piece, [&](const auto& curve) {
        const BulgeArc other = lineOrArc.GetArc();
        return Beside(curve, other).LeastGap();
    });
}

void AppendMeetings(const OutlinePiece& piece, const SEGMENT& lineOrArc, double reach,
                    std::vector<double>& shares) {
    WithCurve(piece, [&](const auto& curve) {
        const BulgeArc other = lineOrArc.GetArc();
        Beside(curve, other).AppendMeetings(reach, shares);
    });
}

DPOINT2 PointAtShare(const OutlinePiece& piece, double share) {
    return WithCurve(piece, [&](const auto& curve) { return PointAt(curve, share); });
}

} // namespace qev
