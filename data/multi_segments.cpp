// What every contour of segments answers, computed from GetSegmentCount and GetSegment alone: a host's own
// kind gets it without writing more. Where an index is there, lengths and boxes come from it; the loops below
// sum in its order, so that both ways give equal bits.
#include <cmath>

#include <qevdata/multi_segments.h>

#include "contour_index.h"

namespace qev {

math::DPOINT2 CCadMultiSegments::GetStartPoint() const {
    return GetSegmentCount() > 0 ? GetSegment(0).ptStart : math::NoPoint();
}

math::DPOINT2 CCadMultiSegments::GetEndPoint() const {
    const int count = GetSegmentCount();
    return count > 0 ? GetSegment(count - 1).ptEnd : math::NoPoint();
}

double CCadMultiSegments::GetLength() const {
    if (const ContourIndex* index = IndexOf(*this)) return index->GetTotal();
    double length = 0;
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) length += GetSegment(i).GetLength();
    return length;
}

CadRect CCadMultiSegments::GetBoundRect() const {
    if (const math::Bounds* kept = KeptBoxOf(*this)) return ToRect(*kept);
    math::Bounds bounds;
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) bounds.Add(GetSegment(i).GetBounds());
    return ToRect(bounds);
}

// The sign of the enclosed area, which is put together from one triangle for each segment, between its chord
// and the start point, and from what the segment adds to its chord. The closing chord adds nothing, since it
// ends in the start point; and measured from there, a contour far from the origin loses no digits.
CContourDirection::ContourDirection_T CCadMultiSegments::GetDirection() const {
    // mm^2: a contour that encloses less, as a line there and back, runs neither way.
    constexpr double kNoArea = 1e-9;
    const math::DPOINT2 start = GetStartPoint();
    double area = 0;
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) {
        const SEGMENT segment = GetSegment(i);
        area += math::Cross(segment.ptStart - start, segment.ptEnd - start) / 2 + segment.GetChordArea();
    }
    if (!(std::abs(area) > kNoArea)) return CContourDirection::NONE;
    return DirectionOf(area > 0);
}

} // namespace qev
