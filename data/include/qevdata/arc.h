/// \file
/// Circles and circular arcs. Negative radii count as positive.
#pragma once

#include <qevdata/cad_object.h>

namespace qev {

/// A whole circle; it starts and ends at the angle 0.
class QEVDATA_API CCadCircle : public CCadObject {
public:
    /// Centre and radius in mm; they are not checked otherwise.
    CCadCircle(const math::DPOINT2& centre, double radius, bool counterClockwise = true, bool newId = true);

    const math::DPOINT2& GetCenterPoint() const { return m_ptCenter; } ///< mm
    double GetRadius() const { return m_dRadius; }                     ///< mm, never negative
    /// Which way the circle runs; GetPoint does not go by it.
    bool IsCounterClockwise() const { return m_bCounterClockwise; }
    /// The point at an absolute angle in radians, whichever way the circle runs.
    math::DPOINT2 GetPoint(double angle) const;

    cad_t GetType() const override { return kCadCircle; }
    bool IsClose() const override { return true; }
    math::DPOINT2 GetStartPoint() const override { return GetPoint(0); }
    math::DPOINT2 GetEndPoint() const override { return GetPoint(0); }
    double GetLength() const override;
    CadRect GetBoundRect() const override;
    CCadObject* Clone(bool newId) const override;
    /// Two half circles of bulge 1 or -1.
    int GetPieceCount() const override { return 2; }
    OutlinePiece GetPiece(int index) const override;
    CContourDirection::ContourDirection_T GetDirection() const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadCircle(const CCadCircle&) = default;

private:
    math::DPOINT2 m_ptCenter;
    double m_dRadius;
    bool m_bCounterClockwise;
};

/// A circular arc: from the start angle over the central angle, travelled in the direction of the flag.
class QEVDATA_API CCadArc : public CCadObject {
public:
    /// Centre and radius in mm; startAngle: any, in radians; newId: with a fresh id, else with the id 0.
    /// centralAngle: radians, at most 2*pi (more counts as 2*pi); a negative one is turned into [0, 2*pi).
    CCadArc(const math::DPOINT2& centre, double radius, double startAngle, double centralAngle,
            bool counterClockwise, bool newId = true);
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadArc(const CCadArc&) = default;

    const math::DPOINT2& GetCenterPoint() const { return m_ptCenter; } ///< mm; of the arc's circle
    double GetRadius() const { return m_dRadius; }                     ///< mm, never negative
    double GetStartAngle() const { return m_dStartAngle; }             ///< radians, as given: not reduced
    double GetCentralAngle() const { return m_dCentralAngle; }         ///< radians, in [0, 2*pi]
    /// Which way the arc runs from its start angle.
    bool IsCounterClockwise() const { return m_bCounterClockwise; }
    /// Takes an absolute angle in radians and sets the central angle to the turn from the start to it, in [0,
    /// 2*pi).
    void SetEndAngle(double angle);
    /// tan(central angle / 4), negative for a clockwise arc.
    double GetBulge() const;
    /// The point at an angle in radians, travelled from the start in the direction of the arc.
    math::DPOINT2 GetPoint(double travelled) const;

    cad_t GetType() const override { return kCadArc; }
    bool IsClose() const override { return EndsMeet(*this); }
    math::DPOINT2 GetStartPoint() const override { return GetPoint(0); }
    math::DPOINT2 GetEndPoint() const override { return GetPoint(m_dCentralAngle); }
    double GetLength() const override { return m_dRadius * m_dCentralAngle; }
    CadRect GetBoundRect() const override;
    CCadObject* Clone(bool newId) const override;
    /// One arc; two halves when the arc is so nearly a whole circle that its chord is too short for a bulge.
    int GetPieceCount() const override;
    OutlinePiece GetPiece(int index) const override;
    CContourDirection::ContourDirection_T GetDirection() const override;

private:
    double Sign() const { return m_bCounterClockwise ? 1 : -1; }

    math::DPOINT2 m_ptCenter;
    double m_dRadius;
    double m_dStartAngle;
    double m_dCentralAngle;
    bool m_bCounterClockwise;
};

} // namespace qev
