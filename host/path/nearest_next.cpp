// The starts stand in a k-d tree: a half of the points on either side of the middle one, by x and by y in
// turn, without pointers, as a range of an array whose middle is the root. Each root knows how many starts
// under it are open, which means that their visits wait for nobody and have not been made. A start is opened
// and closed on one way down; the search passes over halves with no open start and over those beyond the
// nearest one so far. So the tree is built once and never changed.
//
// Of equally near starts the lower index wins, so that the answer does not depend on how the tree came to be.
//
// The nearest next is not the shortest tour, which nobody can afford to find; of starts that are spread
// evenly it comes within about a quarter of it. To improve it by exchanges was rejected: an exchange may not
// put an outer cut before an inner one, and asking that costs more than the rapids it saves.

#include "nearest_next.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace host {
namespace {

using math::DPOINT2;

class OpenStarts {
public:
    explicit OpenStarts(const std::vector<Visit>& visits)
        : m_visits(visits), m_vecOrder(visits.size()), m_vecPlace(visits.size()), m_vecOpen(visits.size()) {
        std::iota(m_vecOrder.begin(), m_vecOrder.end(), 0);
        Build(0, m_vecOrder.size(), 0);
        for (std::size_t i = 0; i < m_vecOrder.size(); ++i) m_vecPlace[m_vecOrder[i]] = i;
        m_vecIsOpen.resize(visits.size());
    }

    void Open(int visit) { Set(visit, true); }
    void Close(int visit) { Set(visit, false); }

    // The open visit whose start is nearest to a point; -1 when none is open.
    int Nearest(const DPOINT2& p) const {
        Found best{-1, std::numeric_limits<double>::infinity()};
        Search(p, 0, m_vecOrder.size(), 0, best);
        return best.visit;
    }

private:
    struct Found {
        int visit;
        double squared; // of the distance
    };

    double Coordinate(int visit, int axis) const {
        const DPOINT2& start = m_visits[visit].start;
        return axis == 0 ? start.x : start.y;
    }

    void Build(std::size_t begin, std::size_t end, int axis) {
        if (end - begin < 2) return;
        const std::size_t middle = begin + (end - begin) / 2;
        const auto at = [this](std::size_t i) { return m_vecOrder.begin() + static_cast<std::ptrdiff_t>(i); };
        std::nth_element(at(begin), at(middle), at(end), [this, axis](int a, int b) {
            return std::pair(Coordinate(a, axis), a) < std::pair(Coordinate(b, axis), b);
        });
        Build(begin, middle, 1 - axis);
        Build(middle + 1, end, 1 - axis);
    }

    void Set(int visit, bool isOpen) {
        m_vecIsOpen[visit] = isOpen;
        const std::size_t place = m_vecPlace[visit];
        std::size_t begin = 0;
        std::size_t end = m_vecOrder.size();
        std::size_t middle = end;
        while (middle != place) {
            middle = begin + (end - begin) / 2;
            m_vecOpen[middle] += isOpen ? 1 : -1;
            if (place < middle)
                end = middle;
            else
                begin = middle + 1;
        }
    }

    // The half that the point lies in comes first, so that the other one is seldom looked at.
    void Search(const DPOINT2& p, std::size_t begin, std::size_t end, int axis, Found& best) const {
        const std::size_t middle = begin + (end - begin) / 2;
        if (begin == end || m_vecOpen[middle] == 0) return;
        const int visit = m_vecOrder[middle];
        if (m_vecIsOpen[visit]) Take(p, visit, best);
        const double across = (axis == 0 ? p.x : p.y) - Coordinate(visit, axis);
        for (const bool isLow : {across < 0, across >= 0}) {
            if (isLow != (across < 0) && across * across > best.squared) return;
            Search(p, isLow ? begin : middle + 1, isLow ? middle : end, 1 - axis, best);
        }
    }

    void Take(const DPOINT2& p, int visit, Found& best) const {
        const DPOINT2 away = m_visits[visit].start - p;
        const Found found{visit, away.x * away.x + away.y * away.y};
        if (std::pair(found.squared, found.visit) < std::pair(best.squared, best.visit)) best = found;
    }

    const std::vector<Visit>& m_visits;
    std::vector<int> m_vecOrder;         // the visits as the tree has them
    std::vector<std::size_t> m_vecPlace; // where a visit stands in the tree
    std::vector<int> m_vecOpen;          // how many are open under the root at a place, itself included
    std::vector<bool> m_vecIsOpen;       // by visit
};

} // namespace

std::vector<int> NearestNext(const std::vector<Visit>& visits, const DPOINT2& from) {
    std::vector<int> waitsFor(visits.size());
    for (const Visit& visit : visits)
        if (visit.outer >= 0) ++waitsFor[visit.outer];
    OpenStarts open(visits);
    for (std::size_t i = 0; i < visits.size(); ++i)
        if (waitsFor[i] == 0) open.Open(static_cast<int>(i));
    std::vector<int> order;
    order.reserve(visits.size());
    DPOINT2 at = from;
    for (int next = open.Nearest(at); next >= 0; next = open.Nearest(at)) {
        open.Close(next);
        order.push_back(next);
        const int outer = visits[next].outer;
        if (outer >= 0 && --waitsFor[outer] == 0) open.Open(outer);
        at = visits[next].end;
    }
    return order;
}

} // namespace host
