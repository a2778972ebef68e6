// Where four ends or more meet in a point, lines can be joined in several ways, and to go on with any free
// end makes a contour that passes the point twice: a figure of eight out of two squares that touch, or a
// frame and the table in its corner as one contour that lies over itself and runs round the table twice.
// Whoever drew them meant simple outlines. So the chain is gone along, and each loop is taken out where it
// closes.
//
// The places where steps begin lie in a grid. They are farther than the tolerance from one another, as a
// step that came nearer would have closed a loop; so a cell of four tolerances holds few of them, whatever is
// drawn, and the work grows with the chain alone. To choose the sharpest turn at every such point was
// rejected: it makes outlines of faces, and takes a contour apart that only touches another one.

#include "loops.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>

namespace host {
namespace {

using math::DPOINT2;

// Cells are so many tolerances wide: mostly one cell is looked at, and few points lie in it.
constexpr double kCellWidth = 4;

struct CellHash {
    std::size_t operator()(const DPOINT2& cell) const {
        constexpr std::size_t kOdd = 0x9e3779b97f4a7c15; // spreads the bits of neighbours
        return std::hash<double>()(cell.x) * kOdd ^ std::hash<double>()(cell.y);
    }
};
struct IsSameCell {
    bool operator()(const DPOINT2& a, const DPOINT2& b) const { return a.x == b.x && a.y == b.y; }
};

// Where the steps of a chain begin, by their places in it.
class Beginnings {
public:
    explicit Beginnings(double tolerance) : m_dTolerance(tolerance), m_dWidth(kCellWidth * tolerance) {}

    void Add(const DPOINT2& p, std::size_t place) { m_cells.emplace(CellOf(p), Entry{p, place}); }

    void Remove(const DPOINT2& p, std::size_t place) {
        const auto [begin, end] = m_cells.equal_range(CellOf(p));
        for (auto each = begin; each != end; ++each)
            if (each->second.place == place) return static_cast<void>(m_cells.erase(each));
    }

    // The place of the first step that begins within the tolerance of a point.
    std::optional<std::size_t> FirstAt(const DPOINT2& p) const {
        const DPOINT2 reach{m_dTolerance, m_dTolerance};
        const DPOINT2 low = CellOf(p - reach), high = CellOf(p + reach);
        std::optional<std::size_t> first;
        for (const double x : {low.x, high.x})
            for (const double y : {low.y, high.y}) {
                const auto [begin, end] = m_cells.equal_range({x, y});
                for (auto each = begin; each != end; ++each)
                    if (math::D2GetDistance(each->second.point, p) <= m_dTolerance)
                        first = std::min(first.value_or(each->second.place), each->second.place);
            }
        return first;
    }

private:
    struct Entry {
        DPOINT2 point;
        std::size_t place;
    };

    // Adding 0 makes -0 equal to 0 for the hash.
    DPOINT2 CellOf(const DPOINT2& p) const {
        return {std::floor(p.x / m_dWidth) + 0.0, std::floor(p.y / m_dWidth) + 0.0};
    }

    double m_dTolerance;
    double m_dWidth;
    std::unordered_multimap<DPOINT2, Entry, CellHash, IsSameCell> m_cells;
};

} // namespace

std::vector<std::vector<ChainStep>> SplitLoops(const std::vector<ChainStep>& chain, double tolerance) {
    std::vector<std::vector<ChainStep>> parts;
    std::vector<ChainStep> open;
    Beginnings beginnings(tolerance);
    for (const ChainStep& step : chain) {
        beginnings.Add(step.enter, open.size());
        open.push_back(step);
        const auto first = beginnings.FirstAt(step.leave);
        if (!first) continue;
        for (std::size_t i = *first; i < open.size(); ++i) beginnings.Remove(open[i].enter, i);
        const auto loop = open.begin() + static_cast<std::ptrdiff_t>(*first);
        parts.emplace_back(loop, open.end());
        open.erase(loop, open.end());
    }
    if (!open.empty()) parts.push_back(open);
    return parts;
}

} // namespace host
