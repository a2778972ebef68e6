/// \file
/// Dots and lines.
#pragma once

#include <qevdata/cad_object.h>

namespace qev {

/// A single point.
class QEVDATA_API CCadDot : public CCadObject {
public:
    /// With a fresh id or with the id 0. The point is not checked.
    explicit CCadDot(const math::DPOINT2& point, bool newId = true);

    /// The point that the constructor was given, in mm.
    math::DPOINT2 GetPoint() const { return m_ptPoint; }

    cad_t GetType() const override { return kCadDot; }
    math::DPOINT2 GetStartPoint() const override { return m_ptPoint; }
    math::DPOINT2 GetEndPoint() const override { return m_ptPoint; }
    CadRect GetBoundRect() const override;
    CCadObject* Clone(bool newId) const override;
    int GetPieceCount() const override { return 1; }
    OutlinePiece GetPiece(int index) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadDot(const CCadDot&) = default;

private:
    math::DPOINT2 m_ptPoint;
};

/// A straight line.
class QEVDATA_API CCadLine : public CCadObject {
public:
    /// With a fresh id or with the id 0. The points are not checked and may be equal.
    CCadLine(const math::DPOINT2& start, const math::DPOINT2& end, bool newId = true);

    /// Moves the end, unchecked; the start stays.
    void SetEndPoint(const math::DPOINT2& end) { m_ptEnd = end; }

    cad_t GetType() const override { return kCadLine; }
    math::DPOINT2 GetStartPoint() const override { return m_ptStart; }
    math::DPOINT2 GetEndPoint() const override { return m_ptEnd; }
    double GetLength() const override;
    CadRect GetBoundRect() const override;
    CCadObject* Clone(bool newId) const override;
    int GetPieceCount() const override { return 1; }
    OutlinePiece GetPiece(int index) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadLine(const CCadLine&) = default;

private:
    math::DPOINT2 m_ptStart;
    math::DPOINT2 m_ptEnd;
};

} // namespace qev
