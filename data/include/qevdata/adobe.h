/// \file
/// The stock (workpiece blank).
#pragma once

#include <qevdata/group.h>

namespace qev {

/// The blank that is machined: a kind, one scalar parameter and the section's contours.
class QEVDATA_API Adobe {
public:
    /// A stock without contours. Any kind is taken; 0x1001 marks a rectangular plate.
    explicit Adobe(int kind);
    /// Deletes the section with its contours.
    ~Adobe();
    Adobe(const Adobe&) = delete;
    Adobe& operator=(const Adobe&) = delete;

    /// The kind that the constructor was given.
    int GetKind() const { return m_nKind; }
    /// A rectangular plate's thickness in mm; what other kinds keep here is the host's matter. 0 at first.
    double GetScalarParam() const { return m_dScalarParam; }
    /// Takes any value, unchecked.
    void SetScalarParam(double value) { m_dScalarParam = value; }
    /// The group of outline contours, owned by the stock; never null.
    CCadGroup* GetSectionData() { return &m_section; }
    /// The group of outline contours of a constant stock; never null.
    const CCadGroup* GetSectionData() const { return &m_section; }

private:
    int m_nKind;
    double m_dScalarParam = 0;
    CCadGroup m_section{false};
};

} // namespace qev
