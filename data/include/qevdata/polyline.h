/// \file
/// Polylines of lines and arcs.
#pragma once

#include <vector>

#include <qevdata/polyline_base.h>

namespace qev {

/// A contour of lines and circular arcs. The start point is held apart from the nodes: node k is the end
/// point of segment k together with that segment's bulge.
class QEVDATA_API CCadPolyline : public CCadPolylineBase {
public:
    /// The end of a segment, and how the segment reaches it.
    struct ARCNODE {
        double x = 0;     ///< mm
        double y = 0;     ///< mm
        double bulge = 0; ///< tan(angle turned / 4), positive counter-clockwise; 0 for a line
    };

    /// Without nodes and without a start point, with a fresh id or with the id 0.
    explicit CCadPolyline(bool newId = true);

    /// Where the first segment starts, (0, 0) until it is set. Nodes that exist stay where they are.
    void SetStartPoint(const math::DPOINT2& start);
    /// Appends a line from the present end; one of no length is kept. Throws std::bad_alloc when memory is
    /// refused, and the contour is as before.
    void AddLine(const math::DPOINT2& end);
    /// Appends an arc from the present end; one of no chord is kept. bulge: the tangent of a quarter of the
    /// angle that the arc turns by, positive counter-clockwise (it then lies to the right of its chord), 1 a
    /// half circle; one below math::kZeroBulge (1e-9) either way makes a line. Throws std::bad_alloc when
    /// memory is refused, and the contour is as before.
    void AddArc(const math::DPOINT2& end, double bulge);
    /// Makes room for so many nodes in all; nothing for 0 and less. Throws std::bad_alloc when memory is
    /// refused.
    void Reserve(int nodes);

    /// Number of nodes, which is that of the segments.
    int GetNodeCount() const { return static_cast<int>(m_vecNodes.size()); }
    /// The node at an index; a node at math::NoPoint() when there is none. The reference lasts until the
    /// contour is changed.
    const ARCNODE& GetAt(int index) const;
    /// All nodes in order. The reference lasts as long as the contour; what it shows changes with it.
    const std::vector<ARCNODE>& GetNodes() const { return m_vecNodes; }

    cad_t GetType() const override { return kCadPolyline; }
    /// The last node's point; without nodes what GetStartPoint answers.
    math::DPOINT2 GetEndPoint() const override;
    int GetSegmentCount() const override { return GetNodeCount(); }
    SEGMENT GetSegment(int index) const override;
    CCadObject* Clone(bool newId) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadPolyline(const CCadPolyline&) = default;

private:
    // Where the segment at an index starts.
    math::DPOINT2 StartOf(std::size_t index) const;
    void ReverseSegments() override;
    void MoveSegments(const Similarity& similarity) override;

    std::vector<ARCNODE> m_vecNodes;
};

} // namespace qev
