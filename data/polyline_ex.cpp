#include <algorithm>

#include <qevdata/polyline_ex.h>

#include "similarity.h"

namespace qev {

CCadPolylineEx::CCadPolylineEx(bool newId) : CCadMultiSegments(newId) {}

void CCadPolylineEx::SetStartPoint(const math::DPOINT2& start) {
    m_index.Drop();
    m_ptStart = start;
    m_bHasStart = true;
    if (!m_vecNodes.empty()) m_vecNodes.front().ptStart = start;
}

void CCadPolylineEx::AddLine(const math::DPOINT2& end) {
    m_index.Drop();
    m_vecNodes.emplace_back(PresentEnd(), end);
}

void CCadPolylineEx::AddArc(const math::DPOINT2& end, double bulge) {
    m_index.Drop();
    m_vecNodes.emplace_back(PresentEnd(), end, bulge);
}

void CCadPolylineEx::AddBezier(const math::DPOINT2& ctrl1, const math::DPOINT2& ctrl2,
                               const math::DPOINT2& end) {
    m_index.Drop();
    m_vecNodes.emplace_back(PresentEnd(), ctrl1, ctrl2, end);
}

const SEGMENT& CCadPolylineEx::GetAt(int index) const {
    static const SEGMENT kNoSegment;
    return index >= 0 && index < GetNodeCount() ? m_vecNodes[index] : kNoSegment;
}

void CCadPolylineEx::ReverseDir(bool toggleNormalDir) {
    if (toggleNormalDir) m_bNormalDir = !m_bNormalDir;
    std::reverse(m_vecNodes.begin(), m_vecNodes.end());
    for (SEGMENT& segment : m_vecNodes) segment = segment.Reversed();
    if (!m_vecNodes.empty()) SetStartPoint(m_vecNodes.front().ptStart);
}

void CCadPolylineEx::ApplyTransform(const gp_Trsf2d& transform) {
    m_index.Drop();
    const Similarity similarity(transform);
    m_ptStart = similarity.Apply(m_ptStart);
    for (SEGMENT& segment : m_vecNodes) {
        for (math::DPOINT2* point : {&segment.ptStart, &segment.ptEnd, &segment.ptCtrl1, &segment.ptCtrl2})
            *point = similarity.Apply(*point);
        segment.dBulge *= similarity.BulgeSign();
    }
}

void CCadPolylineEx::ApplyTransform2D(const gp_Trsf2d& transform) {
    ApplyTransform(transform);
}

math::DPOINT2 CCadPolylineEx::GetStartPoint() const {
    return m_bHasStart || !m_vecNodes.empty() ? m_ptStart : math::NoPoint();
}

math::DPOINT2 CCadPolylineEx::GetEndPoint() const {
    return m_vecNodes.empty() ? GetStartPoint() : m_vecNodes.back().ptEnd;
}

CCadObject* CCadPolylineEx::Clone(bool newId) const {
    return Cloned(new CCadPolylineEx(*this), newId);
}

} // namespace qev
