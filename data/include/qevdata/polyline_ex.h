/// \file
/// Extended polylines: lines, arcs and Bezier pieces.
#pragma once

#include <vector>

#include <qevdata/contour_index.h>
#include <qevdata/multi_segments.h>

class gp_Trsf2d;

namespace qev {

/// A contour of lines, circular arcs and cubic Bezier pieces, held as segments that join end to start. What
/// it shares with CCadPolyline behaves the same.
class QEVDATA_API CCadPolylineEx : public CCadMultiSegments {
public:
    explicit CCadPolylineEx(bool newId = true);

    /// Where the first segment starts, (0, 0) until it is set. The segments' ends stay where they are.
    void SetStartPoint(const math::DPOINT2& start);
    /// Append a segment from the present end.
    void AddLine(const math::DPOINT2& end);
    void AddArc(const math::DPOINT2& end, double bulge);
    void AddBezier(const math::DPOINT2& ctrl1, const math::DPOINT2& ctrl2, const math::DPOINT2& end);

    int GetNodeCount() const { return static_cast<int>(m_vecNodes.size()); }
    /// The segment at an index; SEGMENT() when there is none. The reference lasts until the contour is
    /// changed.
    const SEGMENT& GetAt(int index) const;
    const std::vector<SEGMENT>& GetNodes() const { return m_vecNodes; }

    void ReverseDir(bool toggleNormalDir);
    bool IsNormalDir() const { return m_bNormalDir; }
    void ApplyTransform(const gp_Trsf2d& transform);
    void ApplyTransform2D(const gp_Trsf2d& transform);

    cad_t GetType() const override { return kCadPolylineEx; }
    math::DPOINT2 GetStartPoint() const override;
    math::DPOINT2 GetEndPoint() const override;
    int GetSegmentCount() const override { return GetNodeCount(); }
    SEGMENT GetSegment(int index) const override { return GetAt(index); }
    CCadObject* Clone(bool newId) const override;
    const ContourIndex* GetIndex() const override { return m_index.Of(*this); }

protected:
    CCadPolylineEx(const CCadPolylineEx&) = default;

private:
    math::DPOINT2 PresentEnd() const { return m_vecNodes.empty() ? m_ptStart : m_vecNodes.back().ptEnd; }

    math::DPOINT2 m_ptStart;
    std::vector<SEGMENT> m_vecNodes;
    bool m_bHasStart = false;
    bool m_bNormalDir = true;
    LazyIndex m_index; // every change drops it
};

} // namespace qev
