#include <cmath>

#include <qevdata/contour_index.h>
#include <qevdata/multi_segments.h>

namespace qev {

math::DPOINT2 CCadMultiSegments::GetStartPoint() const {
    return GetSegmentCount() > 0 ? GetSegment(0).ptStart : math::NoPoint();
}

math::DPOINT2 CCadMultiSegments::GetEndPoint() const {
    const int count = GetSegmentCount();
    return count > 0 ? GetSegment(count - 1).ptEnd : math::NoPoint();
}

double CCadMultiSegments::GetLength() const {
    if (const ContourIndex* index = GetIndex()) return index->GetLength();
    double length = 0;
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) length += GetSegment(i).GetLength();
    return length;
}

CadRect CCadMultiSegments::GetBoundRect() const {
    if (const ContourIndex* index = GetIndex()) return ToRect(index->GetBounds());
    math::Bounds bounds;
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) bounds.Add(GetSegment(i).GetBounds());
    return ToRect(bounds);
}

// Triangles from the start point, which the closing chord meets in, and what the segments add to their
// chords.
CContourDirection::ContourDirection_T CCadMultiSegments::GetDirection() const {
    constexpr double kNoArea = 1e-9; // mm^2: a contour that encloses less runs neither way
    const math::DPOINT2 start = GetStartPoint();
    double area = 0;
    for (int i = 0, count = GetSegmentCount(); i < count; ++i) {
        const SEGMENT segment = GetSegment(i);
        area += math::Cross(segment.ptStart - start, segment.ptEnd - start) / 2 + segment.GetChordArea();
    }
    if (!(std::abs(area) > kNoArea)) return CContourDirection::NONE;
    return area > 0 ? CContourDirection::COUNTERCLOCKWISE : CContourDirection::CLOCKWISE;
}

} // namespace qev
