// The least distance of two outlines. The outlines stand under trees of boxes; a pair of boxes is replaced by
// the pairs of the smaller one with those below the larger one, of which the nearest are gone into first,
// until two pieces are left, which are measured. What cannot come nearer than the least distance so far is
// left out. How near a pair can come is told by the boxes, and better, where a contour runs across the axes
// or along the other one, by the chords over its ends less how far it leaves them, and for a large curve by
// its distance from the middle of a small box. So outlines that lie apart are compared in some logarithm of
// their pieces, those that run along each other in about the number of pieces that do.
//
// Two pieces of which one is a line or an arc have a distance that is exact (piece_distance.cpp). Of two
// curves the second is laid out in arcs, each within FitOf of it, against which the first is measured; then
// the points found are moved to each other's nearest points until that gains nothing. The answer is the
// distance of two points of the curves themselves, at most twice that above the least.
//
// Rejected: a queue of all pairs that wait, the nearest on top, which asks for memory and saves little;
// sampling; and halving both curves until their boxes part: where the curves run along each other the number
// of boxes grows with the inverse of the accuracy.
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <span>

#include <qev/measure/nesting.h>
#include <qevdata/polyline.h>

#include "outline.h"
#include "piece_distance.h"

namespace qev {
namespace {

using math::Bounds;
using math::DPOINT2;

// A part of the coordinates: distances below are what rounding leaves where outlines meet.
constexpr double kMeetingShare = 1e-14;

double Between(const Bounds& a, const Bounds& b) {
    const double x = std::max({a.lower.x - b.upper.x, b.lower.x - a.upper.x, 0.0});
    const double y = std::max({a.lower.y - b.upper.y, b.lower.y - a.upper.y, 0.0});
    return std::sqrt(x * x + y * y);
}

// The distance of two lines; 0 where they cross.
double BetweenLines(const DPOINT2& a, const DPOINT2& b, const DPOINT2& c, const DPOINT2& d) {
    const auto parts = [](const DPOINT2& from, const DPOINT2& to, const DPOINT2& p, const DPOINT2& q) {
        return math::Cross(to - from, p - from) * math::Cross(to - from, q - from) < 0;
    };
    if (parts(a, b, c, d) && parts(c, d, a, b)) return 0;
    return std::sqrt(std::min({SquareFromLine(a, c, d), SquareFromLine(b, c, d), SquareFromLine(c, a, b),
                               SquareFromLine(d, a, b)}));
}

double SizeOf(const Bounds& box) {
    return box.upper.x - box.lower.x + box.upper.y - box.lower.y;
}

DPOINT2 NearestOn(const OutlinePiece& piece, const DPOINT2& p) {
    return std::visit([&](const auto& of) { return of.GetNearest(p); }, piece);
}

class Search {
public:
    Search(const CCadObject& a, const CCadObject& b) : m_first(a), m_second(b) {}

    double Run() {
        Compare(m_first.GetRoot(), m_second.GetRoot());
        return m_dLeast;
    }

private:
    using Node = Outline::Node;
    struct Pair {
        double bound; // mm, which the distance of the two is not below
        Node a, b;
    };

    // What is below the larger one is compared with the other, the nearest first.
    void Compare(const Node& a, const Node& b) {
        if (a.level < 0 && b.level < 0) return Measure(a, b);
        std::array<Pair, BoxTree::kFan> pairs;
        Pair* end = pairs.data();
        const auto add = [&](const Node& first, const Node& second) {
            const double bound = BoundOf(first, second);
            if (!(bound < m_dLeast)) return;
            Pair* const farther =
                std::find_if(pairs.data(), end, [&](const Pair& pair) { return pair.bound > bound; });
            std::move_backward(farther, end, end + 1);
            *farther = {bound, first, second};
            ++end;
        };
        if (b.level < 0 || (a.level >= 0 && SizeOf(a.box) > SizeOf(b.box)))
            m_first.VisitBelow(a, [&](const Node& below) { add(below, b); });
        else
            m_second.VisitBelow(b, [&](const Node& below) { add(a, below); });
        for (const Pair& pair : std::span(pairs.data(), end))
            if (pair.bound < m_dLeast) Compare(pair.a, pair.b);
    }

    double BoundOf(const Node& a, const Node& b) const {
        double bound = Between(a.box, b.box);
        if (bound < m_dLeast)
            bound = std::max(bound, BetweenLines(a.from, a.to, b.from, b.to) - a.width - b.width);
        if (bound < m_dLeast) bound = std::max(bound, BoundOfLarge(m_first, a, b));
        if (bound < m_dLeast) bound = std::max(bound, BoundOfLarge(m_second, b, a));
        return std::max(0.0, bound - kMeetingShare * std::max(ExtentOf(a.box), ExtentOf(b.box)));
    }
    // Of a large curve the box and the chord tell little: its distance from the middle of a small box does.
    static double BoundOfLarge(const Outline& outline, const Node& large, const Node& small) {
        const bool isLarge = large.level < 0 && large.width > 2 * SizeOf(small.box);
        if (!isLarge) return 0;
        const DPOINT2 middle = (small.box.lower + small.box.upper) * 0.5;
        const double distance = math::D2GetDistance(middle, NearestOn(outline.GetPiece(large.place), middle));
        return distance - SizeOf(small.box) / 2; // half the sides together, which half the diagonal is below
    }

    void Measure(const Node& a, const Node& b) {
        const OutlinePiece first = m_first.GetPiece(a.place), second = m_second.GetPiece(b.place);
        const double extent = std::max(ExtentOf(a.box), ExtentOf(b.box));
        if (IsLineOrArc(second))
            Offer(LeastGap(first, std::get<SEGMENT>(second)).distance, kMeetingShare * extent);
        else if (IsLineOrArc(first))
            Offer(LeastGap(second, std::get<SEGMENT>(first)).distance, kMeetingShare * extent);
        else
            MeasureCurves(first, second, b);
    }
    void Offer(double distance, double none) {
        m_dLeast = std::min(m_dLeast, distance > none ? distance : 0);
    }

    void MeasureCurves(const OutlinePiece& first, const OutlinePiece& second, const Node& b) {
        auto& arcs = m_mapArcs[b.place];
        if (!arcs) arcs = ArcsOf(second);
        if (!arcs) return Offer(Approach(first, second, StartOf(first)), 0); // a point, or next to one
        const double fit = FitOf(second);
        Gap least;
        for (int i = 0, count = arcs->GetSegmentCount(); i < count; ++i) {
            const SEGMENT arc = arcs->GetSegment(i);
            const double reach = std::min(least.distance, m_dLeast + fit);
            if (Between(LooseBoxOf(first), LooseBoxOf(arc)) > reach) continue;
            const Gap gap = LeastGap(first, arc);
            if (gap.distance < least.distance) least = gap;
        }
        if (!math::IsNoPoint(least.onFirst)) Offer(Approach(first, second, least.onFirst), 2 * fit);
    }
    // The distance of two points that go to each other's nearest points.
    static double Approach(const OutlinePiece& first, const OutlinePiece& second, const DPOINT2& onFirst) {
        constexpr int kMostSteps = 20;   // the rest gains less than the arcs may be off
        constexpr double kNoGain = 1e-9; // of the distance
        double distance = std::numeric_limits<double>::infinity();
        DPOINT2 p = onFirst;
        for (int i = 0; i < kMostSteps; ++i) {
            const DPOINT2 q = NearestOn(second, p);
            p = NearestOn(first, q);
            const double before = distance;
            distance = math::D2GetDistance(p, q);
            if (!(distance < before * (1 - kNoGain))) break;
        }
        return distance;
    }

    Outline m_first;
    Outline m_second;
    double m_dLeast = std::numeric_limits<double>::infinity();    // mm; so far
    std::map<int, std::unique_ptr<const CCadPolyline>> m_mapArcs; // of curves of the second outline
};

} // namespace

double GetClearance(const CCadObject* a, const CCadObject* b) {
    if (!a || !b) return std::numeric_limits<double>::infinity();
    return Search(*a, *b).Run();
}

} // namespace qev
