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
    /// Without segments and without a start point, with a fresh id or with the id 0.
    explicit CCadPolylineEx(bool newId = true);

    /// Where the first segment starts, (0, 0) until it is set. The segments' ends stay where they are.
    void SetStartPoint(const math::DPOINT2& start);
    /// Appends a line from the present end; one of no length is kept.
    void AddLine(const math::DPOINT2& end);
    /// The same for an arc; with |bulge| below math::kZeroBulge it becomes a line.
    void AddArc(const math::DPOINT2& end, double bulge);
    /// The same for a Bezier piece.
    void AddBezier(const math::DPOINT2& ctrl1, const math::DPOINT2& ctrl2, const math::DPOINT2& end);

    /// Number of segments.
    int GetNodeCount() const { return static_cast<int>(m_vecNodes.size()); }
    /// The segment at an index; SEGMENT() when there is none. The reference lasts until the contour is
    /// changed.
    const SEGMENT& GetAt(int index) const;
    /// All segments in order. The reference lasts as long as the contour; what it shows changes with it.
    const std::vector<SEGMENT>& GetNodes() const { return m_vecNodes; }

    /// Runs the contour the other way; with the flag, IsNormalDir toggles too.
    void ReverseDir(bool toggleNormalDir);
    /// Whether the contour still runs the way it was drawn; true at first.
    bool IsNormalDir() const { return m_bNormalDir; }
    /// Moves the contour by a similarity; a mirror turns its arcs.
    void ApplyTransform(const gp_Trsf2d& transform);
    /// The same under its other name.
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
