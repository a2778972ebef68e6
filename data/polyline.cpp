// A node is 24 bytes, and a contour of them is what the converter and the machine work on. Segments are made
// of two neighbouring nodes when they are asked for, which costs less than the memory would.
#include <cmath>
#include <utility>

#include <qevdata/polyline.h>
#include <qevmath/tolerance.h>

#include "similarity.h"

namespace qev {
namespace {

math::DPOINT2 PointOf(const CCadPolyline::ARCNODE& node) {
    return {node.x, node.y};
}

} // namespace

CCadPolyline::CCadPolyline(bool newId) : CCadPolylineBase(newId) {}

void CCadPolyline::SetStartPoint(const math::DPOINT2& start) {
    MoveStart(start);
}

void CCadPolyline::AddLine(const math::DPOINT2& end) {
    DropIndex();
    m_vecNodes.push_back({end.x, end.y, 0});
}

void CCadPolyline::AddArc(const math::DPOINT2& end, double bulge) {
    DropIndex();
    m_vecNodes.push_back({end.x, end.y, std::abs(bulge) < math::kZeroBulge ? 0 : bulge});
}

void CCadPolyline::Reserve(int nodes) {
    if (nodes > 0) m_vecNodes.reserve(static_cast<std::size_t>(nodes));
}

const CCadPolyline::ARCNODE& CCadPolyline::GetAt(int index) const {
    static constexpr ARCNODE kNoNode{math::NoPoint().x, math::NoPoint().y, 0};
    return index >= 0 && index < GetNodeCount() ? m_vecNodes[index] : kNoNode;
}

math::DPOINT2 CCadPolyline::StartOf(std::size_t index) const {
    return index > 0 ? PointOf(m_vecNodes[index - 1]) : StartOfSegments();
}

// A node holds the end of its segment. Run the other way the segment ends where it started before, so the
// points move by one node against the bulges, and what was the start point becomes the last node.
void CCadPolyline::ReverseSegments() {
    std::vector<ARCNODE> reversed;
    reversed.reserve(m_vecNodes.size());
    for (std::size_t i = m_vecNodes.size(); i-- > 0;) {
        const math::DPOINT2 end = StartOf(i);
        reversed.push_back({end.x, end.y, m_vecNodes[i].bulge == 0 ? 0 : -m_vecNodes[i].bulge});
    }
    m_vecNodes = std::move(reversed);
}

void CCadPolyline::MoveSegments(const Similarity& similarity) {
    for (ARCNODE& node : m_vecNodes) {
        const math::DPOINT2 moved = similarity.Apply(PointOf(node));
        node = {moved.x, moved.y, node.bulge * similarity.BulgeSign()};
    }
}

math::DPOINT2 CCadPolyline::GetEndPoint() const {
    return m_vecNodes.empty() ? GetStartPoint() : PointOf(m_vecNodes.back());
}

SEGMENT CCadPolyline::GetSegment(int index) const {
    if (index < 0 || index >= GetNodeCount()) return {};
    const ARCNODE& node = m_vecNodes[index];
    return SEGMENT(StartOf(index), PointOf(node), node.bulge);
}

CCadObject* CCadPolyline::Clone(bool newId) const {
    return Cloned(new CCadPolyline(*this), newId);
}

} // namespace qev
