/// \file
/// The pieces of an outline under boxes, whatever object they belong to. Private to the room.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <qevdata/cad_object.h>

#include "data/box_tree.h"
#include "data/contour_index.h"

namespace qev {

/// mm. Pieces with a coordinate beyond are left out: the products of their coordinates would leave the range
/// of numbers, in the conversion of a curve first.
inline constexpr double kFarthestOutline = 1e70;

/// Whether all coordinates of a point are numbers within kFarthestOutline.
inline bool IsMeasurable(const math::DPOINT2& p) {
    return std::abs(p.x) <= kFarthestOutline && std::abs(p.y) <= kFarthestOutline;
}
/// Whether a piece has a bulge, axes and parameters that are numbers, and lies within kFarthestOutline.
bool IsMeasurable(const OutlinePiece& piece);

/// The index of a contour, when it has one that can be searched and lies within kFarthestOutline; else null,
/// and for contours of a few segments, over which to go is as fast.
const ContourIndex* UsableIndexOf(const CCadObject& contour);

/// A box that holds a measurable piece, a little larger than need be, without a root or an angle: round a
/// line or arc the box of the chord, widened by the arc's height, from which no point of it is farther; round
/// a Bezier piece that of the control points; round an elliptic arc that of the whole ellipse or larger.
math::Bounds LooseBoxOf(const OutlinePiece& piece);

/// The largest magnitude of a box's coordinates in mm.
inline double ExtentOf(const math::Bounds& box) {
    return std::max(
        {std::abs(box.lower.x), std::abs(box.lower.y), std::abs(box.upper.x), std::abs(box.upper.y)});
}
/// Whether two boxes come within `reach` mm of each other along both axes.
inline bool AreNear(const math::Bounds& a, const math::Bounds& b, double reach) {
    return a.lower.x - b.upper.x <= reach && b.lower.x - a.upper.x <= reach && a.lower.y - b.upper.y <= reach
           && b.lower.y - a.upper.y <= reach;
}

/// How far in mm the points of a measurable piece may be from the line between its ends; infinite for an
/// elliptic arc.
double WidthOf(const OutlinePiece& piece);

/// Where a piece begins.
math::DPOINT2 StartOf(const OutlinePiece& piece);
/// Where a piece ends.
math::DPOINT2 EndOf(const OutlinePiece& piece);

/// The segments of an index that share a box of its tree: from the first to the one before the end.
struct Run {
    int first, end;
};
inline Run RunOf(const ContourIndex& index, int level, int place) {
    const int size = ContourIndex::kRun << 3 * level; // 3: eight boxes in one
    return {place * size, std::min((place + 1) * size, index.GetSegmentCount())};
}

/// Calls visit(box, place) for each box of a tree on a level that lies below the box `place` of the level
/// above; on the highest level `place` is 0.
template <class Visit>
void VisitBoxesBelow(const BoxTree& tree, int level, int place, const Visit& visit) {
    for (int i = place * BoxTree::kFan; i < (place + 1) * BoxTree::kFan; ++i)
        if (const math::Bounds box = tree.BoxAt(level, static_cast<std::size_t>(i)); !box.IsEmpty())
            visit(box, i);
}

/// The measurable pieces of an object and of all that it holds, under a tree of boxes: a contour's own index
/// where it has one, else one that is made for this question. The object has to outlive it, unchanged.
class Outline {
public:
    /// Goes over the pieces, unless the object keeps an index. Throws std::bad_alloc when memory is refused.
    explicit Outline(const CCadObject& object);
    Outline(const Outline&) = delete;
    Outline& operator=(const Outline&) = delete;

    /// A box of the tree, or a piece, which stands on level -1. What it holds lies within `width` of the
    /// chord between two points, too.
    struct Node {
        math::Bounds box;
        int level;
        int place; ///< among those of its level; the number of a piece
        math::DPOINT2 from, to;
        double width; ///< mm; infinite where no chord is known
    };

    /// The node over all others; nothing is known of where it lies.
    Node GetRoot() const {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        const math::Bounds everywhere{{-kInfinity, -kInfinity}, {kInfinity, kInfinity}};
        return {everywhere, m_pTree->GetLevelCount(), 0, {}, {}, kInfinity};
    }
    /// Calls visit(node) for what is directly below a node that is no piece, in the order of the outline:
    /// eight at most.
    template <class Visit>
    void VisitBelow(const Node& node, const Visit& visit) const {
        if (node.level > 0)
            return VisitBoxesBelow(*m_pTree, node.level - 1, node.place, [&](const math::Bounds& box, int i) {
                visit(NodeOf(box, node.level - 1, i));
            });
        const int first = node.place * BoxTree::kFan, end = std::min(first + BoxTree::kFan, m_nCount);
        for (int i = first; i < end; ++i) visit(NodeOf(i));
    }
    /// The piece of a number, from 0 in drawing order.
    OutlinePiece GetPiece(int number) const {
        return m_pIndex ? m_pContour->GetPiece(number)
                        : m_vecRefs[number].object->GetPiece(m_vecRefs[number].piece);
    }

private:
    struct Ref {
        const CCadObject* object;
        int piece;
    };
    Node NodeOf(const math::Bounds& box, int level, int place) const;
    Node NodeOf(int piece) const;
    void GoOver(const CCadObject& object);

    const CCadObject* m_pContour;
    const ContourIndex* m_pIndex;     // the contour's, or null
    const BoxTree* m_pTree = &m_tree; // its own, or the contour's
    BoxTree m_tree;
    std::vector<Ref> m_vecRefs; // none for a contour with an index
    int m_nCount = 0;
};

} // namespace qev
