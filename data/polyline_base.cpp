// The two kinds of polylines differ in how they hold their segments: as their ends and bulges, which is all
// that lines and arcs need, or as whole segments with control points, which takes three times the memory.
// Everything else is here: the start point, the direction of drawing, and the rule that every change forgets
// the index.
#include <qevdata/polyline_base.h>

#include "contour_index.h"
#include "similarity.h"

namespace qev {

CCadPolylineBase::CCadPolylineBase(bool newId) : CCadMultiSegments(newId) {}

CCadPolylineBase::CCadPolylineBase(const CCadPolylineBase& other)
    : CCadMultiSegments(other), m_ptStart(other.m_ptStart), m_bHasStart(other.m_bHasStart),
      m_bNormalDir(other.m_bNormalDir) {}

CCadPolylineBase::~CCadPolylineBase() {
    DropIndex();
}

void CCadPolylineBase::MoveStart(const math::DPOINT2& start) {
    DropIndex();
    m_ptStart = start;
    m_bHasStart = true;
}

void CCadPolylineBase::ReverseDir(bool toggleNormalDir) {
    if (GetSegmentCount() > 0) {
        const math::DPOINT2 end = GetEndPoint();
        ReverseSegments(); // which may throw, so it comes first
        MoveStart(end);
    }
    if (toggleNormalDir) m_bNormalDir = !m_bNormalDir;
}

void CCadPolylineBase::ApplyTransform(const gp_Trsf2d& transform) {
    DropIndex();
    const Similarity similarity(transform);
    if (m_bHasStart || GetSegmentCount() > 0) m_ptStart = similarity.Apply(m_ptStart);
    MoveSegments(similarity);
}

void CCadPolylineBase::ApplyTransform2D(const gp_Trsf2d& transform) {
    ApplyTransform(transform);
}

bool CCadPolylineBase::IsClose() const {
    const ContourIndex* const index = ContourIndex::KeptBy(*this);
    return index ? index->IsClosed() : EndsMeet(*this);
}

math::DPOINT2 CCadPolylineBase::GetStartPoint() const {
    return m_bHasStart || GetSegmentCount() > 0 ? m_ptStart : math::NoPoint();
}

} // namespace qev
