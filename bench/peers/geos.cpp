#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/Envelope.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/Point.h>
#include <geos/index/strtree/TemplateSTRtree.h>
#include <geos/operation/distance/IndexedFacetDistance.h>

#include "peers.h"

namespace qev::bench {
namespace {

geos::geom::Envelope EnvelopeOf(const math::Bounds& box) {
    return {box.lower.x, box.upper.x, box.lower.y, box.upper.y};
}

} // namespace

struct GeosBoxes::Tree {
    geos::index::strtree::TemplateSTRtree<int> tree;
};
GeosBoxes::GeosBoxes(const std::vector<math::Bounds>& boxes) : m_pTree(std::make_unique<Tree>()) {
    for (std::size_t i = 0; i < boxes.size(); ++i)
        m_pTree->tree.insert(EnvelopeOf(boxes[i]), static_cast<int>(i));
    m_pTree->tree.build();
}
GeosBoxes::~GeosBoxes() = default;
void GeosBoxes::Collect(const math::Bounds& box, std::vector<int>& found) const {
    found.clear();
    m_pTree->tree.query(EnvelopeOf(box), [&found](int i) { found.push_back(i); });
}

struct GeosLines::Tree {
    explicit Tree(std::unique_ptr<geos::geom::LineString> made) : line(std::move(made)), facets(line.get()) {}
    std::unique_ptr<geos::geom::LineString> line;
    mutable geos::operation::distance::IndexedFacetDistance facets;
};
GeosLines::GeosLines(const std::vector<math::DPOINT2>& points) {
    auto sequence = std::make_unique<geos::geom::CoordinateArraySequence>();
    for (const math::DPOINT2& p : points) sequence->add(geos::geom::Coordinate(p.x, p.y));
    const auto factory = geos::geom::GeometryFactory::getDefaultInstance();
    m_pTree = std::make_unique<Tree>(factory->createLineString(std::move(sequence)));
    Distance(points.front()); // makes the tree
}
GeosLines::~GeosLines() = default;
double GeosLines::Distance(const math::DPOINT2& p) const {
    const auto factory = geos::geom::GeometryFactory::getDefaultInstance();
    const std::unique_ptr<geos::geom::Point> point(factory->createPoint(geos::geom::Coordinate(p.x, p.y)));
    return m_pTree->facets.distance(point.get());
}

} // namespace qev::bench
