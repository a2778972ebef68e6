#include <cmath>
#include <memory>
#include <new>

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
    return GetRunCount() > kFewRuns && std::isfinite(m_dLength);
}

LazyIndex& LazyIndex::operator=(const LazyIndex& other) {
    if (this != &other) Drop();
    return *this;
}

const ContourIndex* LazyIndex::Of(const CCadObject& contour) const {
    if (const ContourIndex* made = m_pIndex.load(std::memory_order_acquire)) return made;
    return m_bAsked.exchange(true, std::memory_order_relaxed) ? Make(contour) : nullptr;
}

// Two threads may make one each; the first that is ready is kept.
const ContourIndex* LazyIndex::Make(const CCadObject& contour) const try {
    if (contour.GetSegmentCount() <= 0) return nullptr;
    auto made = std::make_unique<const ContourIndex>(contour);
    const ContourIndex* kept = nullptr;
    return m_pIndex.compare_exchange_strong(kept, made.get(), std::memory_order_acq_rel) ? made.release()
                                                                                         : kept;
} catch (const std::bad_alloc&) {
    return nullptr;
}

void LazyIndex::Drop() {
    if (m_pIndex.load(std::memory_order_relaxed))
        delete m_pIndex.exchange(nullptr, std::memory_order_relaxed);
    m_bAsked.store(false, std::memory_order_relaxed);
}

} // namespace qev
