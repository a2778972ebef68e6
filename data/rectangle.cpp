// The four vertices are worked out once. Where the rectangle is not turned they are sums of what was given,
// without a sine or cosine, so that an upright rectangle has upright sides to the bit.
#include <cmath>

#include <qevdata/rectangle.h>
#include <qevmath/angle.h>

namespace qev {

CCadRectangle::CCadRectangle(const math::DPOINT2& corner, double width, double height, double rotation,
                             bool newId)
    : CCadMultiSegments(newId) {
    const double left = width < 0 ? width : 0;
    const double bottom = height < 0 ? height : 0;
    const double right = left + std::abs(width);
    const double top = bottom + std::abs(height);
    m_ptVertices = {{{left, bottom}, {right, bottom}, {right, top}, {left, top}}};
    for (math::DPOINT2& vertex : m_ptVertices)
        vertex = corner + (rotation == 0 ? vertex : math::Rotated(vertex, rotation));
}

math::DPOINT2 CCadRectangle::GetVertex(int index) const {
    return index >= 0 && index < 4 ? m_ptVertices[index] : math::NoPoint();
}

SEGMENT CCadRectangle::GetSegment(int index) const {
    if (index < 0 || index >= 4) return {};
    return SEGMENT(m_ptVertices[index], m_ptVertices[(index + 1) % 4]);
}

CCadObject* CCadRectangle::Clone(bool newId) const {
    return Cloned(new CCadRectangle(*this), newId);
}

} // namespace qev
