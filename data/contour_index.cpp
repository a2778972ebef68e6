#include <cmath>
#include <memory>

#include <qevdata/cad_object.h>
#include <qevdata/contour_index.h>

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
    constexpr int kFewRuns = 4; // the boxes cost as much as the segments that they save
    return GetRunCount() > kFewRuns;
}

LazyIndex& LazyIndex::operator=(const LazyIndex& other) {
    if (this != &other) Drop();
    return *this;
}

const ContourIndex* LazyIndex::Of(const CCadObject& contour) const {
    if (const ContourIndex* made = m_index.Get()) return made;
    if (!m_bAsked.exchange(true, std::memory_order_relaxed) || contour.GetSegmentCount() <= 0) return nullptr;
    return m_index.GetOr([&] { return std::make_unique<const ContourIndex>(contour); });
}

void LazyIndex::Drop() {
    m_index.Drop();
    m_bAsked.store(false, std::memory_order_relaxed);
}

} // namespace qev
