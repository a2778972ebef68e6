// The winding number of a closed contour round a point p is counted along the ray from p to the right: a
// stretch that crosses it upwards counts 1, one that crosses it downwards -1.
//
// What is exact about it. A stretch of which p lies outside the box counts by its ends alone: nothing when it
// lies above, below or to the left, and when it lies to the right, 1 when it begins on or below the ray and
// ends above it, -1 the other way round. A contour's stretches share their ends, so that whatever lies
// between cannot miscount. Where p lies in the box, a line is decided by the exact sign of a turn. An arc
// counts as its chord does, and 1 more when p lies in the cap between the two (-1 for a clockwise arc), since
// the way along the arc and back along the chord goes once round the cap. A point beside the chord lies in
// the cap when it sees the chord under a larger angle than the points of the arc do (the theorem of the
// inscribed angle), which is
//     |cross| (1/b - b) + 2 dot < 0
// for the products of the vectors from p to the ends and the bulge b: neither a centre nor an angle is
// needed, and no y-extreme at which the arc would have to be split. An elliptic arc is the same with the
// equation of the ellipse, once it is halved, so that its chord has a length. A Bezier piece is halved as
// long as p lies in the box of its control points; what does not shrink any more is as good as its chord.
//
// Points on a level with a joint, on a line's carrier or on an arc's chord: p is treated as if it lay a
// little higher, and much more to the right of that. So every joint is above or below, and p is never on a
// chord; the chord and the cap go by the same rule (SideOf), so that what one takes the other gives.
//
// Error: a point nearer to a curve than the rounding of the coordinates, 1e-16 of them for an arc of a bulge
// up to 1, may be put on the wrong side; a line puts none there. A tolerance above that answers kOn for all
// of them. Rejected: a ray through a random direction, and the sum of angles, which are both uncertain where
// this is not; roots of the curves' equations, of which none is needed.
#include <algorithm>
#include <cmath>
#include <optional>

#include <qev/measure/nesting.h>
#include <qevdata/cad_object.h>

#include "exact_turn.h"
#include "outline.h"

namespace qev {
namespace {

using math::Bounds;
using math::CubicBezier;
using math::DPOINT2;
using math::EllipticArc;

// On which side of the way from a to b the point lies: 1 left, -1 right, 0 when a is b.
int SideOf(const DPOINT2& a, const DPOINT2& b, const DPOINT2& p) {
    const double turn = ExactTurn(a, b, p);
    if (turn != 0) return turn > 0 ? 1 : -1;
    if (a.y != b.y) return a.y < b.y ? -1 : 1;
    return (a.x < b.x ? 1 : 0) - (a.x > b.x ? 1 : 0);
}

// What a line counts.
int CrossingOfLine(const DPOINT2& a, const DPOINT2& b, const DPOINT2& p) {
    const bool startsAbove = a.y > p.y, endsAbove = b.y > p.y;
    if (startsAbove == endsAbove) return 0;
    const int side = SideOf(a, b, p);
    if (endsAbove) return side > 0 ? 1 : 0;
    return side < 0 ? -1 : 0;
}

// What a stretch counts of which p lies outside the box; nothing when it lies inside.
std::optional<int> CrossingOutside(const Bounds& box, const DPOINT2& a, const DPOINT2& b, const DPOINT2& p) {
    if (p.y < box.lower.y || p.y > box.upper.y || p.x > box.upper.x) return 0;
    if (p.x < box.lower.x) return (b.y > p.y ? 1 : 0) - (a.y > p.y ? 1 : 0);
    return std::nullopt;
}

// What the cap over a chord adds. It lies to the right of the chord of a stretch that runs counter-clockwise;
// isWithin tells whether p lies in the disk that the stretch is a part of the edge of.
template <class IsWithin>
int CrossingOfCap(const DPOINT2& a, const DPOINT2& b, bool counterClockwise, const DPOINT2& p,
                  const IsWithin& isWithin) {
    const int capSide = counterClockwise ? -1 : 1;
    return SideOf(a, b, p) == capSide && isWithin() ? -capSide : 0;
}

int CrossingOfArc(const math::BulgeArc& arc, const DPOINT2& p) {
    const int chord = CrossingOfLine(arc.start, arc.end, p);
    if (arc.IsStraight()) return chord;
    return chord + CrossingOfCap(arc.start, arc.end, arc.bulge > 0, p, [&] {
               const DPOINT2 toStart = arc.start - p, toEnd = arc.end - p;
               const double b = std::abs(arc.bulge);
               return std::abs(math::Cross(toStart, toEnd)) * (1 / b - b) + 2 * math::Dot(toStart, toEnd) < 0;
           });
}

int CrossingOfHalf(const EllipticArc& arc, const DPOINT2& a, const DPOINT2& b, const DPOINT2& p) {
    return CrossingOfLine(a, b, p) + CrossingOfCap(a, b, arc.GetSweep() > 0, p, [&] {
               const DPOINT2 q = p - arc.GetCenter();
               const double u = math::Dot(q, arc.GetAxisA()) / math::Dot(arc.GetAxisA(), arc.GetAxisA());
               const double v = math::Dot(q, arc.GetAxisB()) / math::Dot(arc.GetAxisB(), arc.GetAxisB());
               return u * u + v * v < 1; // not for one that has no width
           });
}

int CrossingOf(const EllipticArc& arc, const DPOINT2& p) {
    const DPOINT2 middle = arc.PointAt(arc.GetStart() + arc.GetSweep() / 2);
    return CrossingOfHalf(arc, StartOf(arc), middle, p) + CrossingOfHalf(arc, middle, EndOf(arc), p);
}

int CrossingOfBezier(const CubicBezier& bezier, const DPOINT2& p, int halvings) {
    const auto& [start, ctrl1, ctrl2, end] = bezier;
    const Bounds box = LooseBoxOf(SEGMENT(start, ctrl1, ctrl2, end));
    if (const auto outside = CrossingOutside(box, start, end, p)) return *outside;
    const double size = box.upper.x - box.lower.x + box.upper.y - box.lower.y;
    constexpr double kRounding = 1e-15; // of the coordinates: halving does not make it smaller
    if (halvings == 0 || size <= kRounding * (std::abs(p.x) + std::abs(p.y)))
        return CrossingOfLine(start, end, p);
    return CrossingOfBezier(bezier.Between(0, 0.5), p, halvings - 1)
           + CrossingOfBezier(bezier.Between(0.5, 1), p, halvings - 1);
}

int CrossingOf(const SEGMENT& segment, const DPOINT2& p) {
    constexpr int kMostHalvings = 60; // more than the digits of a coordinate
    return segment.nType == SEGMENT::kBezier ? CrossingOfBezier(segment.GetBezier(), p, kMostHalvings)
                                             : CrossingOfArc(segment.GetArc(), p);
}

// Whether a line runs through the point, exactly: the distance from a foot that is rounded does not tell.
bool RunsThrough(const SEGMENT& segment, const DPOINT2& p) {
    return segment.nType == SEGMENT::kLine && ExactTurn(segment.ptStart, segment.ptEnd, p) == 0
           && LooseBoxOf(segment).GetSquaredDistance(p) == 0;
}
bool RunsThrough(const EllipticArc&, const DPOINT2&) {
    return false;
}

// What has been counted of one contour, until a stretch is met that the point lies on.
class Winding {
public:
    Winding(const DPOINT2& p, double tolerance) : m_point(p), m_dTolerance(tolerance > 0 ? tolerance : 0) {}

    // Takes a stretch by its ends when p lies outside its box by more than the tolerance; else answers false.
    bool TakeOutside(const Bounds& box, const DPOINT2& a, const DPOINT2& b) {
        const DPOINT2 reach{m_dTolerance, m_dTolerance};
        const auto crossing = CrossingOutside({box.lower - reach, box.upper + reach}, a, b, m_point);
        m_nNumber += crossing.value_or(0);
        return crossing.has_value();
    }
    void Take(const OutlinePiece& piece, const DPOINT2& a, const DPOINT2& b) {
        if (TakeOutside(LooseBoxOf(piece), a, b)) return;
        std::visit([this](const auto& of) { Measure(of); }, piece);
    }
    // The way over a gap, which is no part of the outline.
    void Bridge(const DPOINT2& a, const DPOINT2& b) { m_nNumber += CrossingOfLine(a, b, m_point); }

    bool IsOn() const { return m_bIsOn; }
    PointSide Answer() const {
        if (m_bIsOn) return PointSide::kOn;
        return m_nNumber != 0 ? PointSide::kInside : PointSide::kOutside;
    }

private:
    template <class Piece>
    void Measure(const Piece& piece) {
        m_bIsOn = m_bIsOn || RunsThrough(piece, m_point)
                  || math::D2GetDistance(m_point, piece.GetNearest(m_point)) <= m_dTolerance;
        if (!m_bIsOn) m_nNumber += CrossingOf(piece, m_point);
    }

    DPOINT2 m_point;
    double m_dTolerance; // mm
    int m_nNumber = 0;
    bool m_bIsOn = false;
};

// By the boxes of an index: those that p lies outside of count by the joints at their ends.
class IndexedWinding {
public:
    IndexedWinding(const CCadObject& contour, const ContourIndex& index, Winding& winding)
        : m_contour(contour), m_index(index), m_winding(winding) {}

    void Run() {
        TakeLevel(m_index.GetTree().GetLevelCount() - 1, 0);
        m_winding.Bridge(m_index.GetJoint(m_index.GetSegmentCount()), m_index.GetJoint(0));
    }

private:
    void TakeLevel(int level, int place) {
        VisitBoxesBelow(m_index.GetTree(), level, place, [&](const Bounds& box, int i) {
            const auto [first, end] = RunOf(m_index, level, i);
            if (m_winding.IsOn()
                || m_winding.TakeOutside(box, m_index.GetJoint(first), m_index.GetJoint(end)))
                return;
            if (level > 0) return TakeLevel(level - 1, i);
            for (int k = first; k < end && !m_winding.IsOn(); ++k)
                m_winding.Take(m_contour.GetPiece(k), m_index.GetJoint(k), m_index.GetJoint(k + 1));
        });
    }

    const CCadObject& m_contour;
    const ContourIndex& m_index;
    Winding& m_winding;
};

// Piece by piece; false when a piece is not measurable.
bool TakeAll(const CCadObject& contour, Winding& winding) {
    DPOINT2 first, last;
    for (int i = 0, count = contour.GetPieceCount(); i < count; ++i) {
        const OutlinePiece piece = contour.GetPiece(i);
        if (!IsMeasurable(piece)) return false;
        const DPOINT2 start = StartOf(piece), end = EndOf(piece);
        if (i == 0)
            first = start;
        else
            winding.Bridge(last, start);
        if (!winding.IsOn()) winding.Take(piece, start, end);
        last = end;
    }
    winding.Bridge(last, first);
    return true;
}

} // namespace

PointSide GetPointSide(const CCadObject* contour, const DPOINT2& p, double dTolerance) {
    if (!contour || !IsMeasurable(p) || !contour->IsClose()) return PointSide::kOutside;
    Winding winding(p, dTolerance);
    if (const ContourIndex* index = UsableIndexOf(*contour))
        IndexedWinding(*contour, *index, winding).Run();
    else if (!TakeAll(*contour, winding))
        return PointSide::kOutside;
    return winding.Answer();
}

} // namespace qev
