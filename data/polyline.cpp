#include <cmath>
#include <utility>

#include <qevdata/polyline.h>
#include <qevmath/tolerance.h>

#include "similarity.h"

namespace qev {

CCadPolyline::CCadPolyline(bool newId) : CCadMultiSegments(newId) {}

void CCadPolyline::SetStartPoint(const math::DPOINT2& start) {
    m_index.Drop();
    m_ptStart = start;
    m_bHasStart = true;
}

void CCadPolyline::AddLine(const math::DPOINT2& end) {
    m_index.Drop();
    m_vecNodes.push_back({end.x, end.y, 0});
}

void CCadPolyline::AddArc(const math::DPOINT2& end, double bulge) {
    m_index.Drop();
    m_vecNodes.push_back({end.x, end.y, std::abs(bulge) < math::kZeroBulge ? 0 : bulge});
}

void CCadPolyline::Reserve(int nodes) {
    if (nodes > 0) m_vecNodes.reserve(static_cast<std::size_t>(nodes));
}

const CCadPolyline::ARCNODE& CCadPolyline::GetAt(int index) const {
    static constexpr ARCNODE kNoNode{math::NoPoint().x, math::NoPoint().y, 0};
    return index >= 0 && index < GetNodeCount() ? m_vecNodes[index] : kNoNode;
}

// Each node takes the place of its successor's start, so points and bulges move by one against each other.
void CCadPolyline::ReverseDir(bool toggleNormalDir) {
    if (toggleNormalDir) m_bNormalDir = !m_bNormalDir;
    if (m_vecNodes.empty()) return;
    std::vector<ARCNODE> reversed;
    reversed.reserve(m_vecNodes.size());
    for (std::size_t i = m_vecNodes.size(); i-- > 0;) {
        const math::DPOINT2 end = i > 0 ? math::DPOINT2{m_vecNodes[i - 1].x, m_vecNodes[i - 1].y} : m_ptStart;
        reversed.push_back({end.x, end.y, m_vecNodes[i].bulge == 0 ? 0 : -m_vecNodes[i].bulge});
    }
    SetStartPoint(GetEndPoint());
    m_vecNodes = std::move(reversed);
}

void CCadPolyline::ApplyTransform(const gp_Trsf2d& transform) {
    m_index.Drop();
    const Similarity similarity(transform);
    m_ptStart = similarity.Apply(m_ptStart);
    for (ARCNODE& node : m_vecNodes) {
        const math::DPOINT2 moved = similarity.Apply({node.x, node.y});
        node = {moved.x, moved.y, node.bulge * similarity.BulgeSign()};
    }
}

void CCadPolyline::ApplyTransform2D(const gp_Trsf2d& transform) {
    ApplyTransform(transform);
}

math::DPOINT2 CCadPolyline::GetStartPoint() const {
    return m_bHasStart || !m_vecNodes.empty() ? m_ptStart : math::NoPoint();
}

math::DPOINT2 CCadPolyline::GetEndPoint() const {
    return m_vecNodes.empty() ? GetStartPoint() : math::DPOINT2{m_vecNodes.back().x, m_vecNodes.back().y};
}

SEGMENT CCadPolyline::GetSegment(int index) const {
    if (index < 0 || index >= GetNodeCount()) return {};
    const ARCNODE& node = m_vecNodes[index];
    const math::DPOINT2 start =
        index > 0 ? math::DPOINT2{m_vecNodes[index - 1].x, m_vecNodes[index - 1].y} : m_ptStart;
    return SEGMENT(start, {node.x, node.y}, node.bulge);
}

CCadObject* CCadPolyline::Clone(bool newId) const {
    return Cloned(new CCadPolyline(*this), newId);
}

} // namespace qev
