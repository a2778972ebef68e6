#include <qevdata/line.h>

namespace qev {

static_assert(sizeof(CCadLine) <= 96, "drawings hold a million lines");

CCadDot::CCadDot(const math::DPOINT2& point, bool newId) : CCadObject(newId), m_ptPoint(point) {}

CadRect CCadDot::GetBoundRect() const {
    return {m_ptPoint.x, m_ptPoint.y, 0, 0};
}

CCadObject* CCadDot::Clone(bool newId) const {
    return Cloned(new CCadDot(*this), newId);
}

OutlinePiece CCadDot::GetPiece(int) const {
    return SEGMENT(m_ptPoint, m_ptPoint);
}

CCadLine::CCadLine(const math::DPOINT2& start, const math::DPOINT2& end, bool newId)
    : CCadObject(newId), m_ptStart(start), m_ptEnd(end) {}

double CCadLine::GetLength() const {
    return math::D2GetDistance(m_ptStart, m_ptEnd);
}

CadRect CCadLine::GetBoundRect() const {
    return ToRect(SEGMENT(m_ptStart, m_ptEnd).GetBounds());
}

CCadObject* CCadLine::Clone(bool newId) const {
    return Cloned(new CCadLine(*this), newId);
}

OutlinePiece CCadLine::GetPiece(int) const {
    return SEGMENT(m_ptStart, m_ptEnd);
}

} // namespace qev
