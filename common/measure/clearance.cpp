// The least distance of two outlines. The outlines stand under trees of boxes; pairs of boxes wait in a
// queue, the pair whose boxes are nearest to each other first, and each in its turn is replaced by the pairs
// of the one box with those below the other, until two pieces are left, which are measured. When the nearest
// pair that waits is no nearer than the least distance so far, that is the answer. Outlines that lie apart
// are compared in some logarithm of their pieces; those that run along each other in the number of pieces
// that do.
//
// Two pieces of which one is a line or an arc have a distance that is exact (piece_distance.cpp). Of two
// curves the second is laid out in arcs, each within FitOf of it, against which the first is measured; then
// the points found are moved to each other's nearest points until that gains nothing. The answer is the
// distance of two points of the curves themselves, at most twice that above the least.
//
// Rejected: all pairs of pieces, which is what the queue does when it cannot tell any apart; sampling; and
// halving both curves until their boxes part, which takes the square root of the accuracy wanted many steps
// where the curves run along each other.
#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <queue>

#include <qev/measure/nesting.h>
#include <qevdata/polyline.h>

#include "outline.h"
#include "piece_distance.h"

namespace qev {
namespace {

using math::Bounds;
using math::DPOINT2;

// Of the coordinates: distances below are what rounding leaves where outlines meet.
constexpr double kRounding = 1e-14;

double SquareBetween(const Bounds& a, const Bounds& b) {
    const double x = std::max({a.lower.x - b.upper.x, b.lower.x - a.upper.x, 0.0});
    const double y = std::max({a.lower.y - b.upper.y, b.lower.y - a.upper.y, 0.0});
    return x * x + y * y;
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
        m_first.VisitTop([&](const Node& a) { m_second.VisitTop([&](const Node& b) { Push(a, b); }); });
        while (!m_queue.empty() && m_dLeast > 0 && m_queue.top().square < m_dLeast * m_dLeast) {
            const Pair nearest = m_queue.top();
            m_queue.pop();
            GoDown(nearest.a, nearest.b);
        }
        return m_dLeast;
    }

private:
    using Node = Outline::Node;
    struct Pair {
        double square; // mm^2, of the distance of the boxes
        Node a, b;
        bool operator<(const Pair& other) const { return square > other.square; } // the nearest is on top
    };

    void Push(const Node& a, const Node& b) {
        const double square = SquareBetween(a.box, b.box);
        if (square < m_dLeast * m_dLeast) m_queue.push({square, a, b});
    }
    // The larger box is replaced, since that parts the pairs sooner.
    void GoDown(const Node& a, const Node& b) {
        if (a.level < 0 && b.level < 0) return Measure(a, b);
        if (b.level < 0 || (a.level >= 0 && SizeOf(a.box) > SizeOf(b.box)))
            m_first.VisitBelow(a, [&](const Node& below) { Push(below, b); });
        else
            m_second.VisitBelow(b, [&](const Node& below) { Push(a, below); });
    }

    void Measure(const Node& a, const Node& b) {
        const OutlinePiece first = m_first.GetPiece(a.place), second = m_second.GetPiece(b.place);
        const double extent = std::max(ExtentOf(a.box), ExtentOf(b.box));
        if (IsLineOrArc(second))
            Offer(LeastGap(first, std::get<SEGMENT>(second)).distance, kRounding * extent);
        else if (IsLineOrArc(first))
            Offer(LeastGap(second, std::get<SEGMENT>(first)).distance, kRounding * extent);
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
            if (SquareBetween(LooseBoxOf(first), LooseBoxOf(arc)) > reach * reach) continue;
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
    std::priority_queue<Pair> m_queue;
    double m_dLeast = std::numeric_limits<double>::infinity();    // mm; so far
    std::map<int, std::unique_ptr<const CCadPolyline>> m_mapArcs; // of curves of the second outline
};

} // namespace

double GetClearance(const CCadObject* a, const CCadObject* b) {
    if (!a || !b) return std::numeric_limits<double>::infinity();
    return Search(*a, *b).Run();
}

} // namespace qev
