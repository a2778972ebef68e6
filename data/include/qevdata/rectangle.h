/// \file
/// Rectangles.
#pragma once

#include <array>

#include <qevdata/multi_segments.h>

namespace qev {

/// A rectangle as a closed contour of four lines, counter-clockwise from its corner.
class QEVDATA_API CCadRectangle : public CCadMultiSegments {
public:
    /// Corner, width and height in mm, rotation in radians counter-clockwise; newId: with a fresh id, else
    /// with the id 0. The corner is the lower left one before the rectangle is turned by `rotation` round it.
    /// A negative width or height extends to the other side; the vertices stay counter-clockwise.
    CCadRectangle(const math::DPOINT2& corner, double width, double height, double rotation = 0,
                  bool newId = true);

    /// Vertices 0 to 3, counter-clockwise; math::NoPoint() for any other index.
    math::DPOINT2 GetVertex(int index) const;

    cad_t GetType() const override { return kCadRectangle; }
    bool IsClose() const override { return true; }
    int GetSegmentCount() const override { return 4; }
    SEGMENT GetSegment(int index) const override;
    CCadObject* Clone(bool newId) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadRectangle(const CCadRectangle&) = default;

private:
    std::array<math::DPOINT2, 4> m_ptVertices;
};

} // namespace qev
