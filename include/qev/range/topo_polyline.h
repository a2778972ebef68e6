/// \file
/// A polyline regrouped into lines, arcs, runs of either, and curves.
#pragma once

#include <memory>
#include <vector>

#include <qev/export.h>
#include <qevdata/polyline.h>

class gp_Vec2d;

namespace qev {

/// The segments of a polyline in groups that a machine treats as one. The shape is the source's: a group
/// keeps the polyline's own nodes. It owns its groups; copies are deep.
class QEVCOMMON_API CTopoMultiPolyline {
public:
    /// What a group is.
    enum Kind {
        kLine = 0,  ///< one line
        kArc = 1,   ///< one arc
        kLines = 2, ///< collinear lines
        kArcs = 3,  ///< arcs on one circle
        kCurve = 4  ///< short lines that turn gently, as a flattened spline leaves them
    };

    /// A group: the segments from the end of the group before it on.
    struct CompoundNode {
        int nKind = kLine;                           ///< one of Kind
        std::vector<CCadPolyline::ARCNODE> vecNodes; ///< end point and bulge of each segment
        math::DPOINT2 ptEnd;                         ///< the last node's point
    };

    /// Where a group came from. Its kind may differ from the node's: a run merged over the start of a closed
    /// source gives its kind to the record, and the node keeps its own.
    struct TopoInfo {
        int nKind = kLine;  ///< one of Kind
        int nFirst = 0;     ///< first source segment; behind nLast in a group merged over the start
        int nLast = 0;      ///< last source segment
        double dLength = 0; ///< mm; of the source segments
    };

    /// Groups the segments of a polyline; the caller owns the answer. Null for null. A line or an arc of no
    /// length (ends within 1e-9 mm) that stands alone gets a record but no group. When the first segment is
    /// one, the last group is not joined with the first over the start. Throws std::bad_alloc without memory.
    static CTopoMultiPolyline* CreateTopoMultiPolyline(const CCadPolyline* source);

    /// A copy with groups of its own: changing them leaves the other's as they are. Throws std::bad_alloc
    /// without memory.
    CTopoMultiPolyline(const CTopoMultiPolyline& other);
    /// Becomes a copy of the other with groups of its own; the groups held before are deleted, and pointers
    /// to them end. Throws std::bad_alloc without memory, everything as it was.
    CTopoMultiPolyline& operator=(const CTopoMultiPolyline& other);
    /// Deletes the groups.
    virtual ~CTopoMultiPolyline();

    /// The group at an index, null when there is none. It stays with the polyline. It may be changed through
    /// the pointer, so that from now on GetPoint measures it anew with every question.
    CompoundNode* GetAt(int index) const;
    /// Number of groups.
    int GetNodeCount() const { return static_cast<int>(m_vecNodes.size()); }
    /// One record for each group as it was made, in the source's order, those left out included. The records
    /// are not changed by what is done to the groups later.
    const std::vector<TopoInfo>& GetTopoInfo() const { return m_vecTopoInfo; }

    /// Where the first group starts. Without groups the source's start, math::NoPoint() if it had none.
    math::DPOINT2 GetStartPoint() const { return m_ptStart; }
    /// Moves the start of the first group alone.
    void SetStartPoint(const math::DPOINT2& start);
    /// The last group's end, or the start point without groups.
    math::DPOINT2 GetEndPoint() const;
    /// The point at a fraction of a group's length, 0 its start and 1 its end. Below 0 the line or arc that
    /// the group begins with is gone on backwards, above 1 a single line or arc goes on, and a run or curve
    /// gives (0, 0). An index without a group gives (0, 0). The lengths of a group that GetAt has not handed
    /// out are kept from the second question on. Throws std::bad_alloc without memory.
    math::DPOINT2 GetPoint(int node, double ratio) const;

    /// Turns the direction round: the order of the groups, and of the nodes in each. The records keep theirs.
    void ReverseDir();
    /// Moves everything by a vector in mm.
    void Translate(const gp_Vec2d& offset);
    /// Turns everything about a centre, which may be a point of a group, by an angle in radians,
    /// counter-clockwise; nothing for 0 and 2*pi (within 1e-9).
    void Rotate(const math::DPOINT2& centre, double angle);
    /// Mirrors about the line through a point, which may be one of a group, at an angle in [0, pi). False
    /// with nothing changed for other angles and for a point that is no number.
    bool Mirror(const math::DPOINT2& onLine, double angle);

private:
    struct Run;
    struct Group; // a CompoundNode, and what is kept of it

    CTopoMultiPolyline();
    math::DPOINT2 BeginOf(int node) const;
    std::unique_ptr<const CCadPolyline> ContourOf(int node) const;
    void Forget();
    void AddLine(const math::DPOINT2& end);
    void AddArc(const math::DPOINT2& end, double bulge);
    void AddLines(const std::vector<CCadPolyline::ARCNODE>& nodes);
    void AddArcs(const std::vector<CCadPolyline::ARCNODE>& nodes);
    void AddCurve(const std::vector<CCadPolyline::ARCNODE>& nodes);
    void Append(int kind, const std::vector<CCadPolyline::ARCNODE>& nodes);
    Run EmitAllButLast(const CCadPolyline& source);
    void EmitLast(const Run& run, const CCadPolyline& source);
    void Emit(const Run& run);
    void MergeIntoFirst(const Run& run);
    template <class Map>
    void MapPoints(const Map& map);

    std::vector<std::unique_ptr<Group>> m_vecNodes;
    std::vector<TopoInfo> m_vecTopoInfo;
    math::DPOINT2 m_ptStart;
};

} // namespace qev
