/// \file
/// Ellipses and elliptic arcs. Angles are parameters of the ellipse (centre + cos(t)*A + sin(t)*B), not polar
/// angles. Negative semi-axes count as positive; either axis may be the longer one.
#pragma once

#include <qevdata/lazy.h>
#include <qevdata/polyline.h>

namespace qev {

/// A whole ellipse; it starts and ends at the parameter 0.
class QEVDATA_API CCadEllipse : public CCadObject {
public:
    /// rotation: angle from the x axis to the axis A.
    CCadEllipse(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                bool counterClockwise = true, bool newId = true);

    /// Which way the ellipse runs; GetPoint_XY does not go by it.
    bool IsCounterClockwise() const { return m_outline.GetSweep() > 0; }
    /// The point at an absolute parameter, whichever way the ellipse runs.
    math::DPOINT2 GetPoint_XY(double parameter) const { return m_outline.PointAt(parameter); }
    /// The outline as the math library knows it.
    const math::EllipticArc& GetOutline() const { return m_outline; }
    /// The polyline of lines and arcs, nowhere farther than 0.001 mm from the ellipse, that its positions,
    /// points and directions go by: so they agree. It stays with the ellipse. Null when the converter refuses
    /// the ellipse.
    const CCadPolyline* GetPolyline() const;

    cad_t GetType() const override { return kCadEllipse; }
    bool IsClose() const override { return true; }
    math::DPOINT2 GetStartPoint() const override { return GetPoint_XY(0); }
    math::DPOINT2 GetEndPoint() const override { return GetPoint_XY(0); }
    double GetLength() const override { return m_outline.GetLength(); }
    CadRect GetBoundRect() const override { return ToRect(m_outline.GetBounds()); }
    CCadObject* Clone(bool newId) const override;
    int GetPieceCount() const override { return 1; }
    OutlinePiece GetPiece(int) const override { return m_outline; }
    CContourDirection::ContourDirection_T GetDirection() const override;

protected:
    CCadEllipse(const CCadEllipse&) = default;

private:
    math::EllipticArc m_outline;
    Lazy<CCadPolyline> m_polyline;
};

/// An arc of an ellipse: from the start parameter over the sweep, travelled in the direction of the flag.
class QEVDATA_API CCadEllipseArc : public CCadObject {
public:
    /// sweepParameter: radians, at most 2*pi (more counts as 2*pi); a negative one is turned into [0, 2*pi).
    CCadEllipseArc(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                   double startParameter, double sweepParameter, bool counterClockwise, bool newId = true);

    /// The flag as given, also when the sweep is 0.
    bool IsCounterClockwise() const { return m_bCounterClockwise; }
    /// The point at an absolute parameter.
    math::DPOINT2 GetPoint_XY(double parameter) const { return m_outline.PointAt(parameter); }
    /// The outline as the math library knows it.
    const math::EllipticArc& GetOutline() const { return m_outline; }
    /// As that of CCadEllipse.
    const CCadPolyline* GetPolyline() const;

    cad_t GetType() const override { return kCadEllipseArc; }
    bool IsClose() const override { return EndsMeet(*this); }
    math::DPOINT2 GetStartPoint() const override { return m_outline.PointAt(m_outline.GetStart()); }
    math::DPOINT2 GetEndPoint() const override { return m_outline.PointAt(m_outline.GetEnd()); }
    double GetLength() const override { return m_outline.GetLength(); }
    CadRect GetBoundRect() const override { return ToRect(m_outline.GetBounds()); }
    CCadObject* Clone(bool newId) const override;
    int GetPieceCount() const override { return 1; }
    OutlinePiece GetPiece(int) const override { return m_outline; }
    CContourDirection::ContourDirection_T GetDirection() const override;

protected:
    CCadEllipseArc(const CCadEllipseArc&) = default;

private:
    math::EllipticArc m_outline;
    Lazy<CCadPolyline> m_polyline;
    bool m_bCounterClockwise;
};

} // namespace qev
