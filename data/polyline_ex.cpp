// Whole segments are held, each with its start, although that is the end of the one before: a Bezier piece is
// then handed out by reference, and only SetStartPoint has to keep the two equal.
#include <algorithm>

#include <qevdata/polyline_ex.h>

#include "similarity.h"

namespace qev {

CCadPolylineEx::CCadPolylineEx(bool newId) : CCadPolylineBase(newId) {}

void CCadPolylineEx::SetStartPoint(const math::DPOINT2& start) {
    MoveStart(start);
    if (!m_vecNodes.empty()) m_vecNodes.front().ptStart = start;
}

void CCadPolylineEx::AddLine(const math::DPOINT2& end) {
    DropIndex();
    m_vecNodes.emplace_back(PresentEnd(), end);
}

void CCadPolylineEx::AddArc(const math::DPOINT2& end, double bulge) {
    DropIndex();
    m_vecNodes.emplace_back(PresentEnd(), end, bulge);
}

void CCadPolylineEx::AddBezier(const math::DPOINT2& ctrl1, const math::DPOINT2& ctrl2,
                               const math::DPOINT2& end) {
    DropIndex();
    m_vecNodes.emplace_back(PresentEnd(), ctrl1, ctrl2, end);
}

const SEGMENT& CCadPolylineEx::GetAt(int index) const {
    static const SEGMENT kNoSegment;
    return index >= 0 && index < GetNodeCount() ? m_vecNodes[index] : kNoSegment;
}

// Where the next segment starts: (0, 0) when nothing was set, which GetEndPoint answers as no point.
math::DPOINT2 CCadPolylineEx::PresentEnd() const {
    return m_vecNodes.empty() ? StartOfSegments() : m_vecNodes.back().ptEnd;
}

void CCadPolylineEx::ReverseSegments() {
    std::reverse(m_vecNodes.begin(), m_vecNodes.end());
    for (SEGMENT& segment : m_vecNodes) segment = segment.Reversed();
}

void CCadPolylineEx::MoveSegments(const Similarity& similarity) {
    for (SEGMENT& segment : m_vecNodes) {
        for (math::DPOINT2* point : {&segment.ptStart, &segment.ptEnd, &segment.ptCtrl1, &segment.ptCtrl2})
            *point = similarity.Apply(*point);
        segment.dBulge *= similarity.BulgeSign();
    }
}

math::DPOINT2 CCadPolylineEx::GetEndPoint() const {
    return m_vecNodes.empty() ? GetStartPoint() : m_vecNodes.back().ptEnd;
}

CCadObject* CCadPolylineEx::Clone(bool newId) const {
    return Cloned(new CCadPolylineEx(*this), newId);
}

} // namespace qev
