/// \file
/// A contour of a letter as an object of a drawing.
#pragma once

#include <memory>

#include <qevdata/qevdata.h>

#include "affine.h"
#include "font.h"

namespace host {

/// A closed contour of a letter, placed by an affine map. It shares the font's outline, so that a letter
/// costs the memory of its place, and its segments are made when they are asked for. A kind of the host's
/// own, served as a contour of segments.
class GlyphContour : public qev::CCadObject {
public:
    /// The outline, which is not null and has segments, where a map puts it.
    GlyphContour(std::shared_ptr<const GlyphOutline> outline, const Affine& map);

    qev::cad_t GetType() const override { return qev::kCad1820; }
    bool IsClose() const override { return true; }
    math::DPOINT2 GetStartPoint() const override;
    math::DPOINT2 GetEndPoint() const override { return GetStartPoint(); }
    int GetSegmentCount() const override { return static_cast<int>(m_pOutline->segments.size()); }
    qev::SEGMENT GetSegment(int index) const override;
    double GetLength() const override;
    qev::CadRect GetBoundRect() const override;
    qev::CCadObject* Clone(bool newId) const override;
    qev::CContourDirection::ContourDirection_T GetDirection() const override;

    /// The outline that is placed.
    const GlyphOutline& Outline() const { return *m_pOutline; }
    /// Where it is placed.
    const Affine& Place() const { return m_place; }

private:
    std::shared_ptr<const GlyphOutline> m_pOutline;
    Affine m_place;
};

} // namespace host
