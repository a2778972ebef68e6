#include <algorithm>
#include <utility>

#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/icl/interval_set.hpp>
#include <boost/iterator/function_output_iterator.hpp>

#include "peers.h"

// An iterator over a query (qbegin) takes memory for each: query() with an output is several times as fast.
namespace qev::bench {
namespace {

namespace bg = boost::geometry;
using Point = bg::model::d2::point_xy<double>;
using Segment = bg::model::segment<Point>;
using Box = bg::model::box<Point>;
template <class Shape>
using RTree = bg::index::rtree<std::pair<Shape, int>, bg::index::rstar<16>>;

Point At(const math::DPOINT2& p) {
    return {p.x, p.y};
}
Box BoxOf(const math::Bounds& box) {
    return {At(box.lower), At(box.upper)};
}

double FootRatio(const Segment& line, const math::DPOINT2& p) {
    const double dx = line.second.x() - line.first.x(), dy = line.second.y() - line.first.y();
    const double ratio = ((p.x - line.first.x()) * dx + (p.y - line.first.y()) * dy) / (dx * dx + dy * dy);
    return std::clamp(ratio, 0.0, 1.0);
}

} // namespace

struct BoostLines::Tree {
    RTree<Segment> tree;
};
BoostLines::BoostLines(const std::vector<math::DPOINT2>& points) {
    std::vector<std::pair<Segment, int>> lines;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        lines.push_back({{At(points[i]), At(points[i + 1])}, static_cast<int>(i)});
    m_pTree = std::make_unique<Tree>(Tree{RTree<Segment>(lines)});
}
BoostLines::~BoostLines() = default;
double BoostLines::Nearest(const math::DPOINT2& p) const {
    double place = -1;
    m_pTree->tree.query(bg::index::nearest(At(p), 1),
                        boost::make_function_output_iterator(
                            [&](const auto& found) { place = found.second + FootRatio(found.first, p); }));
    return place;
}

struct BoostLineString::Line {
    bg::model::linestring<Point> line;
};
BoostLineString::BoostLineString(const std::vector<math::DPOINT2>& points)
    : m_pLine(std::make_unique<Line>()) {
    for (const math::DPOINT2& p : points) m_pLine->line.push_back(At(p));
}
BoostLineString::~BoostLineString() = default;
math::DPOINT2 BoostLineString::PointAt(double length) const {
    Point point;
    bg::line_interpolate(m_pLine->line, length, point);
    return {point.x(), point.y()};
}

struct BoostBoxes::Tree {
    RTree<Box> tree;
};
BoostBoxes::BoostBoxes(const std::vector<math::Bounds>& boxes) {
    std::vector<std::pair<Box, int>> entries;
    for (std::size_t i = 0; i < boxes.size(); ++i) entries.push_back({BoxOf(boxes[i]), static_cast<int>(i)});
    m_pTree = std::make_unique<Tree>(Tree{RTree<Box>(entries)});
}
BoostBoxes::~BoostBoxes() = default;
void BoostBoxes::Collect(const math::Bounds& box, std::vector<int>& found) const {
    found.clear();
    m_pTree->tree.query(
        bg::index::intersects(BoxOf(box)),
        boost::make_function_output_iterator([&](const auto& entry) { found.push_back(entry.second); }));
}

struct IclZones::Set {
    boost::icl::interval_set<double> zones;
};
IclZones::IclZones() : m_pSet(std::make_unique<Set>()) {}
IclZones::~IclZones() = default;
IclZones::IclZones(IclZones&&) noexcept = default;
void IclZones::Add(double first, double last) {
    m_pSet->zones.add(m_pSet->zones.end(), boost::icl::interval<double>::closed(first, last));
}
bool IclZones::Holds(double number) const {
    return boost::icl::contains(m_pSet->zones, number);
}
int IclZones::GetCount() const {
    return static_cast<int>(m_pSet->zones.iterative_size());
}

} // namespace qev::bench
