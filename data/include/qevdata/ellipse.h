/// \file
/// Ellipses and elliptic arcs. Angles are parameters of the ellipse (centre + cos(t)*A + sin(t)*B), not polar
/// angles. Negative semi-axes count as positive; either axis may be the longer one.
#pragma once

#include <atomic>

#include <qevdata/cad_object.h>

namespace qev {

class CCadPolyline;

/// What whole ellipses and elliptic arcs have in common; neither changes once it is made.
class QEVDATA_API CCadEllipseBase : public CCadObject {
public:
    /// Deletes the polyline that GetPolyline answered.
    ~CCadEllipseBase() override;

    /// Which way the ellipse or its arc runs: the flag as the constructor was given it.
    bool IsCounterClockwise() const { return m_bCounterClockwise; }
    /// The point of the whole ellipse at an absolute parameter in radians, whichever way the outline runs.
    math::DPOINT2 GetPoint_XY(double parameter) const { return m_outline.PointAt(parameter); }
    /// The outline as the math library knows it.
    const math::EllipticArc& GetOutline() const { return m_outline; }
    /// The polyline of lines and arcs, nowhere farther than 0.001 mm from the outline, that the positions,
    /// points and directions on it go by: so they agree. It stays with the object. Null when the converter
    /// refuses the outline.
    const CCadPolyline* GetPolyline() const;

    double GetLength() const override { return m_outline.GetLength(); }
    CadRect GetBoundRect() const override { return ToRect(m_outline.GetBounds()); }
    int GetPieceCount() const override { return 1; }
    OutlinePiece GetPiece(int) const override { return m_outline; }
    CContourDirection::ContourDirection_T GetDirection() const override;

protected:
    /// An outline that turns with the flag; `sweep` is the parameter travelled, radians, not negative.
    CCadEllipseBase(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                    double start, double sweep, bool counterClockwise, bool newId);
    /// Copies everything but the polyline.
    CCadEllipseBase(const CCadEllipseBase& other);

private:
    math::EllipticArc m_outline;
    mutable std::atomic<const CCadPolyline*> m_pPolyline = nullptr; // owned
    bool m_bCounterClockwise;
};

/// A whole ellipse; it starts and ends at the parameter 0.
class QEVDATA_API CCadEllipse : public CCadEllipseBase {
public:
    /// Centre and semi-axes in mm; rotation is the angle in radians from the x axis to the axis A.
    CCadEllipse(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                bool counterClockwise = true, bool newId = true);

    cad_t GetType() const override { return kCadEllipse; }
    bool IsClose() const override { return true; }
    math::DPOINT2 GetStartPoint() const override { return GetPoint_XY(0); }
    math::DPOINT2 GetEndPoint() const override { return GetPoint_XY(0); }
    CCadObject* Clone(bool newId) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadEllipse(const CCadEllipse&) = default;
};

/// An arc of an ellipse: from the start parameter over the sweep, travelled in the direction of the flag.
class QEVDATA_API CCadEllipseArc : public CCadEllipseBase {
public:
    /// Centre and semi-axes in mm; rotation is the angle in radians from the x axis to the axis A.
    /// sweepParameter: radians, at most 2*pi (more counts as 2*pi); a negative one is turned into [0, 2*pi).
    CCadEllipseArc(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                   double startParameter, double sweepParameter, bool counterClockwise, bool newId = true);

    cad_t GetType() const override { return kCadEllipseArc; }
    bool IsClose() const override { return EndsMeet(*this); }
    math::DPOINT2 GetStartPoint() const override { return GetPoint_XY(GetOutline().GetStart()); }
    math::DPOINT2 GetEndPoint() const override { return GetPoint_XY(GetOutline().GetEnd()); }
    CCadObject* Clone(bool newId) const override;

protected:
    /// For Clone: copies the outline and what every object copies, the id included.
    CCadEllipseArc(const CCadEllipseArc&) = default;
};

} // namespace qev
