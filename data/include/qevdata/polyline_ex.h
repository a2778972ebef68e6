/// \file
/// Extended polylines: lines, arcs and Bezier pieces.
#pragma once

#include <vector>

#include <qevdata/polyline_base.h>

namespace qev {

/// A contour of lines, circular arcs and cubic Bezier pieces, held as segments that join end to start.
class QEVDATA_API CCadPolylineEx : public CCadPolylineBase {
public:
    /// Without segments and without a start point, with a fresh id or with the id 0.
    explicit CCadPolylineEx(bool newId = true);

    /// Where the first segment starts, (0, 0) until it is set. The segments' ends stay where they are.
    void SetStartPoint(const math::DPOINT2& start);
    /// Appends a line from the present end; one of no length is kept. Throws std::bad_alloc when memory is
    /// refused, and the contour is as before.
    void AddLine(const math::DPOINT2& end);
    /// Appends an arc from the present end; one of no chord is kept. bulge: the tangent of a quarter of the
    /// angle that the arc turns by, positive counter-clockwise (it then lies to the right of its chord), 1 a
    /// half circle; one below math::kZeroBulge (1e-9) either way makes a line. Throws std::bad_alloc when
    /// memory is refused, and the contour is as before.
    void AddArc(const math::DPOINT2& end, double bulge);
    /// Appends a Bezier piece from the present end; one whose points lie on a line is kept as it is. Throws
    /// std::bad_alloc when memory is refused, and the contour is as before.
    void AddBezier(const math::DPOINT2& ctrl1, const math::DPOINT2& ctrl2, const math::DPOINT2& end);

    /// Number of segments.
    int GetNodeCount() const { return static_cast<int>(m_vecNodes.size()); }
    /// The segment at an index; SEGMENT() when there is none. The reference lasts until the contour is
    /// changed.
    const SEGMENT& GetAt(int index) const;
    /// All segments in order. The reference lasts as long as the contour; what it shows changes with it.
    const std::vector<SEGMENT>& GetNodes() const { return m_vecNodes; }

    cad_t GetType() const override { return kCadPolylineEx; }
    /// The last segment's end; without segments what GetStartPoint answers.
    math::DPOINT2 GetEndPoint() const override;
    int GetSegmentCount() const override { return GetNodeCount(); }
    SEGMENT GetSegment(int index) const override { return GetAt(index); }
    CCadObject* Clone(bool newId) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadPolylineEx(const CCadPolylineEx&) = default;

private:
    math::DPOINT2 PresentEnd() const;
    void ReverseSegments() override;
    void MoveSegments(const Similarity& similarity) override;

    std::vector<SEGMENT> m_vecNodes;
};

} // namespace qev
