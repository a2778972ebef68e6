// Lengths, walks and searches ask a contour the same questions again and again. The index answers a length in
// one step, and lets a search pass over runs of segments whose box is too far away to matter.
//
// What it holds is computed by the very operations that a search without it runs, in the same order: so an
// answer is equal to the bit whether an index is there or not, and there is nothing to tune and no error to
// bound.
//
// Runs of eight segments stand in a plain list. A tree of boxes was rejected: up to some thousand segments,
// which drawings rarely pass, the list is searched as fast, and it is made in one pass in the order of the
// segments. An index is made on the second question only, since most contours of a drawing are asked once,
// when it would cost more than it saves.
#include "contour_index.h"

#include <cmath>
#include <memory>
#include <typeinfo>

#include <qevdata/polyline.h>
#include <qevdata/polyline_ex.h>

#include "lazy.h"

namespace qev {

ContourIndex::ContourIndex(const CCadObject& contour) {
    const int count = contour.GetSegmentCount();
    m_vecLengths.reserve(count);
    m_vecRuns.resize((count + kRun - 1) / kRun);
    for (int i = 0; i < count; ++i) {
        const SEGMENT segment = contour.GetSegment(i);
        m_vecLengths.push_back(segment.GetLength());
        m_dLength += m_vecLengths.back();
        m_vecRuns[i / kRun].Add(segment.GetBounds());
        m_bHasBezier = m_bHasBezier || segment.nType == SEGMENT::kBezier;
    }
    for (const math::Bounds& run : m_vecRuns) m_bounds.Add(run);
}

double ContourIndex::GetExtent(const math::DPOINT2& p) const {
    double extent = 0;
    for (const math::DPOINT2& corner : {m_bounds.lower, m_bounds.upper, p})
        extent = std::max({extent, std::abs(corner.x), std::abs(corner.y)});
    return extent;
}

bool ContourIndex::IsForSearch() const {
    constexpr int kFewRuns = 4; // up to here the boxes cost as much as the segments that they save
    return GetRunCount() > kFewRuns;
}

const ContourIndex* CCadPolylineBase::Index() const {
    if (const ContourIndex* made = m_pIndex.load(std::memory_order_acquire)) return made;
    const bool isFirst = !m_bAsked.exchange(true, std::memory_order_relaxed);
    if (isFirst || GetSegmentCount() <= 0) return nullptr;
    return GetOrMake(m_pIndex, [this] { return std::make_unique<const ContourIndex>(*this); });
}

const ContourIndex* ContourIndex::KeptBy(const CCadPolylineBase& polyline) {
    return polyline.Index();
}

void CCadPolylineBase::DropIndex() {
    Drop(m_pIndex);
    m_bAsked.store(false, std::memory_order_relaxed);
}

// The class itself is asked for, not what it derives from: a cast would be slower, and would hand out the
// index of a derived class whose own segments the polyline knows nothing of.
const ContourIndex* IndexOf(const CCadObject& object) {
    const std::type_info& type = typeid(object);
    if (type != typeid(CCadPolyline) && type != typeid(CCadPolylineEx)) return nullptr;
    return ContourIndex::KeptBy(static_cast<const CCadPolylineBase&>(object));
}

} // namespace qev
