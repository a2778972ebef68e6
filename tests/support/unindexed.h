/// \file
/// A contour without an index, beside which one with an index is asked.
#pragma once

#include <qev/qev.h>

namespace test {

/// A host's kind with the segments of another contour, which has to outlive it. No index is kept of it, so
/// that it is searched in full.
class Unindexed : public qev::CCadMultiSegments {
public:
    explicit Unindexed(const qev::CCadObject& contour) : CCadMultiSegments(false), m_contour(contour) {}
    qev::cad_t GetType() const override { return m_contour.GetType(); }
    int GetSegmentCount() const override { return m_contour.GetSegmentCount(); }
    qev::SEGMENT GetSegment(int index) const override { return m_contour.GetSegment(index); }

private:
    const qev::CCadObject& m_contour;
};

} // namespace test
