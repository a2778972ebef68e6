/// \file
/// Polylines of lines and arcs.
#pragma once

#include <vector>

#include <qevdata/contour_index.h>
#include <qevdata/multi_segments.h>

class gp_Trsf2d;

namespace qev {

/// A contour of lines and circular arcs. The start point is held apart from the nodes: node k is the end
/// point of segment k together with that segment's bulge.
class QEVDATA_API CCadPolyline : public CCadMultiSegments {
public:
    struct ARCNODE {
        double x = 0;
        double y = 0;
        double bulge = 0;
    };

    explicit CCadPolyline(bool newId = true);

    /// Where the first segment starts, (0, 0) until it is set. Nodes that exist stay where they are.
    void SetStartPoint(const math::DPOINT2& start);
    /// Appends a segment from the present end; segments of no length are kept. An arc with |bulge| below
    /// math::kZeroBulge becomes a line.
    void AddLine(const math::DPOINT2& end);
    void AddArc(const math::DPOINT2& end, double bulge);
    /// Makes room for so many nodes in all.
    void Reserve(int nodes);

    int GetNodeCount() const { return static_cast<int>(m_vecNodes.size()); }
    /// The node at an index; a node at math::NoPoint() when there is none. The reference lasts until the
    /// contour is changed.
    const ARCNODE& GetAt(int index) const;
    const std::vector<ARCNODE>& GetNodes() const { return m_vecNodes; }

    /// Runs the contour the other way; with the flag, IsNormalDir toggles too.
    void ReverseDir(bool toggleNormalDir);
    /// Whether the contour still runs the way it was drawn; true at first.
    bool IsNormalDir() const { return m_bNormalDir; }
    /// Moves the contour by a similarity; a mirror turns its arcs. Both spellings do the same.
    void ApplyTransform(const gp_Trsf2d& transform);
    void ApplyTransform2D(const gp_Trsf2d& transform);

    cad_t GetType() const override { return kCadPolyline; }
    /// Without nodes: the start point if one was set, else no point.
    math::DPOINT2 GetStartPoint() const override;
    math::DPOINT2 GetEndPoint() const override;
    int GetSegmentCount() const override { return GetNodeCount(); }
    SEGMENT GetSegment(int index) const override;
    CCadObject* Clone(bool newId) const override;
    const ContourIndex* GetIndex() const override { return m_index.Of(*this); }

protected:
    CCadPolyline(const CCadPolyline&) = default;

private:
    math::DPOINT2 m_ptStart;
    std::vector<ARCNODE> m_vecNodes;
    bool m_bHasStart = false;
    bool m_bNormalDir = true;
    LazyIndex m_index; // every change drops it
};

} // namespace qev
