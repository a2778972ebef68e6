/// \file
/// The stock (workpiece blank).
#pragma once

#include <qevdata/group.h>

namespace qev {

/// The blank that is machined: a kind, one scalar parameter and the section's contours.
class QEVDATA_API Adobe {
public:
    /// 0x1001 marks a rectangular plate.
    explicit Adobe(int kind);
    ~Adobe();
    Adobe(const Adobe&) = delete;
    Adobe& operator=(const Adobe&) = delete;

    int GetKind() const { return m_nKind; }
    double GetScalarParam() const { return m_dScalarParam; }
    void SetScalarParam(double value) { m_dScalarParam = value; }
    /// The group of outline contours, owned by the stock; never null.
    CCadGroup* GetSectionData() { return &m_section; }
    const CCadGroup* GetSectionData() const { return &m_section; }

private:
    int m_nKind;
    double m_dScalarParam = 0;
    CCadGroup m_section{false};
};

} // namespace qev
