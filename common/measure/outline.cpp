// A contour that is asked again has a tree of boxes over its segments. For what has none, a circle, a group,
// a contour that is asked once, a tree is made for the one question: that takes one pass with a few additions
// a piece, which the question would need anyway.
#include "outline.h"

#include <cmath>

#include <qevdata/tree_walk.h>

namespace qev {
namespace {

using math::DPOINT2;
using math::EllipticArc;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The height of an arc over its chord, from which no point of it is farther; 0 for what is no arc.
double HeightOf(const SEGMENT& segment) {
    const double bulge = segment.GetArc().bulge;
    return bulge == 0 ? 0 : math::Norm(segment.ptEnd - segment.ptStart) * std::abs(bulge) / 2;
}

double Extent(const DPOINT2& p) {
    return std::abs(p.x) + std::abs(p.y);
}
double Extent(const SEGMENT& segment) {
    return Extent(segment.ptStart) + Extent(segment.ptEnd) + Extent(segment.ptCtrl1) + Extent(segment.ptCtrl2)
           + HeightOf(segment);
}
double Extent(const EllipticArc& arc) {
    return Extent(arc.GetCenter()) + Extent(arc.GetAxisA()) + Extent(arc.GetAxisB()) + std::abs(arc.GetEnd());
}

math::Bounds LooseBox(const SEGMENT& segment) {
    math::Bounds box;
    box.Add(segment.ptStart);
    box.Add(segment.ptEnd);
    if (segment.nType == SEGMENT::kBezier) {
        box.Add(segment.ptCtrl1);
        box.Add(segment.ptCtrl2);
    }
    const double height = HeightOf(segment);
    return {box.lower - DPOINT2{height, height}, box.upper + DPOINT2{height, height}};
}
math::Bounds LooseBox(const EllipticArc& arc) {
    const DPOINT2 &a = arc.GetAxisA(), &b = arc.GetAxisB();
    const DPOINT2 reach{std::abs(a.x) + std::abs(b.x), std::abs(a.y) + std::abs(b.y)};
    return {arc.GetCenter() - reach, arc.GetCenter() + reach};
}

double Width(const SEGMENT& segment) {
    if (segment.nType != SEGMENT::kBezier) return HeightOf(segment);
    return std::sqrt(std::max(SquareFromLine(segment.ptCtrl1, segment.ptStart, segment.ptEnd),
                              SquareFromLine(segment.ptCtrl2, segment.ptStart, segment.ptEnd)));
}
double Width(const EllipticArc&) {
    return kInfinity;
}

DPOINT2 Start(const SEGMENT& segment) {
    return segment.ptStart;
}
DPOINT2 Start(const EllipticArc& arc) {
    return arc.PointAt(arc.GetStart());
}
DPOINT2 End(const SEGMENT& segment) {
    return segment.ptEnd;
}
DPOINT2 End(const EllipticArc& arc) {
    return arc.PointAt(arc.GetEnd());
}

} // namespace

bool IsMeasurable(const OutlinePiece& piece) {
    return std::visit([](const auto& of) { return Extent(of) <= kFarthestOutline; }, piece);
}

const ContourIndex* UsableIndexOf(const CCadObject& contour) {
    if (contour.GetSegmentCount() <= ContourIndex::kFew) return nullptr;
    const ContourIndex* index = IndexOf(contour);
    const bool isUsable = index && index->IsMeasured() && IsMeasurable(index->GetBounds().lower)
                          && IsMeasurable(index->GetBounds().upper);
    return isUsable ? index : nullptr;
}

math::Bounds LooseBoxOf(const OutlinePiece& piece) {
    return std::visit([](const auto& of) { return LooseBox(of); }, piece);
}

double WidthOf(const OutlinePiece& piece) {
    return std::visit([](const auto& of) { return Width(of); }, piece);
}

DPOINT2 StartOf(const OutlinePiece& piece) {
    return std::visit([](const auto& of) { return Start(of); }, piece);
}

DPOINT2 EndOf(const OutlinePiece& piece) {
    return std::visit([](const auto& of) { return End(of); }, piece);
}

Outline::Outline(const CCadObject& object) : m_pContour(&object), m_pIndex(UsableIndexOf(object)) {
    if (m_pIndex) {
        m_pTree = &m_pIndex->GetTree();
        m_nCount = m_pIndex->GetSegmentCount();
        return;
    }
    TreeWalk walk(&object, TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf) GoOver(*walk.Object());
    m_nCount = static_cast<int>(m_vecRefs.size());
    std::vector<math::Bounds> runs((m_vecRefs.size() + BoxTree::kFan - 1) / BoxTree::kFan);
    for (int i = 0; i < m_nCount; ++i) runs[i / BoxTree::kFan].Add(LooseBoxOf(GetPiece(i)));
    m_tree = BoxTree(runs);
}

Outline::Node Outline::NodeOf(const math::Bounds& box, int level, int place) const {
    if (!m_pIndex) return {box, level, place, {}, {}, kInfinity};
    const auto [first, end] = RunOf(*m_pIndex, level, place);
    return {box,
            level,
            place,
            m_pIndex->GetJoint(first),
            m_pIndex->GetJoint(end),
            m_pIndex->GetStripWidth(level, place)};
}

Outline::Node Outline::NodeOf(int piece) const {
    const OutlinePiece of = GetPiece(piece);
    return {LooseBoxOf(of), -1, piece, StartOf(of), EndOf(of), WidthOf(of)};
}

void Outline::GoOver(const CCadObject& object) {
    for (int i = 0, count = object.GetPieceCount(); i < count; ++i)
        if (IsMeasurable(object.GetPiece(i))) m_vecRefs.push_back({&object, i});
}

} // namespace qev
