// An affine map takes a Bezier piece to that of the mapped points and an area to its multiple by the map's
// determinant. It takes the box of an outline to a box only when it leaves the axes parallel, as it does for
// almost every text; else the box is that of the mapped segments. A length is that of the outline where the
// map is a similarity.

#include "glyph_contour.h"

namespace host {

GlyphContour::GlyphContour(std::shared_ptr<const GlyphOutline> outline, const Affine& map)
    : m_pOutline(std::move(outline)), m_place(map) {}

math::DPOINT2 GlyphContour::GetStartPoint() const {
    return m_place.Point(m_pOutline->segments.front().ptStart);
}

qev::SEGMENT GlyphContour::GetSegment(int index) const {
    if (index < 0 || index >= GetSegmentCount()) return {};
    const qev::SEGMENT& segment = m_pOutline->segments[static_cast<std::size_t>(index)];
    const auto point = [this](const math::DPOINT2& p) { return m_place.Point(p); };
    if (segment.nType == qev::SEGMENT::kLine) return {point(segment.ptStart), point(segment.ptEnd)};
    return {point(segment.ptStart), point(segment.ptCtrl1), point(segment.ptCtrl2), point(segment.ptEnd)};
}

double GlyphContour::GetLength() const {
    if (m_place.IsSimilarity()) return m_pOutline->length * math::Norm(m_place.x);
    double length = 0;
    for (int i = 0; i < GetSegmentCount(); ++i) length += GetSegment(i).GetLength();
    return length;
}

qev::CadRect GlyphContour::GetBoundRect() const {
    const bool isUpright = m_place.x.y == 0 && m_place.y.x == 0;
    if (!isUpright) return CCadObject::GetBoundRect();
    math::Bounds bounds;
    bounds.Add(m_place.Point(m_pOutline->bounds.lower));
    bounds.Add(m_place.Point(m_pOutline->bounds.upper));
    return qev::ToRect(bounds);
}

qev::CCadObject* GlyphContour::Clone(bool newId) const {
    return Cloned(new GlyphContour(*this), newId);
}

qev::CContourDirection::ContourDirection_T GlyphContour::GetDirection() const {
    const double area = m_pOutline->area * math::Cross(m_place.x, m_place.y);
    return area == 0 ? qev::CContourDirection::NONE : qev::DirectionOf(area > 0);
}

} // namespace host
