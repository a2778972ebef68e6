/// \file
/// The base of the segment contours.
#pragma once

#include <qevdata/cad_object.h>

namespace qev {

/// A contour made of segments. What it answers it computes from GetSegmentCount and GetSegment, so a host's
/// own kind needs to override only those and GetType.
class QEVDATA_API CCadMultiSegments : public CCadObject {
public:
    bool IsClose() const override { return EndsMeet(*this); }
    math::DPOINT2 GetStartPoint() const override;
    math::DPOINT2 GetEndPoint() const override;
    double GetLength() const override;
    CadRect GetBoundRect() const override;
    CContourDirection::ContourDirection_T GetDirection() const override;

protected:
    /// With a fresh id or with the id 0.
    explicit CCadMultiSegments(bool newId = true) : CCadObject(newId) {}
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadMultiSegments(const CCadMultiSegments&) = default;
};

} // namespace qev
