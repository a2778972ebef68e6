#include <qevdata/converter.h>
#include <qevdata/ellipse.h>

#include "central_angle.h"

namespace qev {
namespace {

double Directed(double sweep, bool counterClockwise) {
    return counterClockwise ? sweep : -sweep;
}

std::unique_ptr<const CCadPolyline> Converted(const CCadObject& ellipse) {
    CCadPolyline* polyline = nullptr;
    CConvertCadObjectToCadPolyline("SegmentType=Both;AbsoluteError=0.001;")(&ellipse, polyline);
    return std::unique_ptr<const CCadPolyline>(polyline);
}

} // namespace

CCadEllipse::CCadEllipse(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                         bool counterClockwise, bool newId)
    : CCadObject(newId),
      m_outline(centre, semiAxisA, semiAxisB, rotation, 0, Directed(math::kTwoPi, counterClockwise)) {}

CCadObject* CCadEllipse::Clone(bool newId) const {
    return Cloned(new CCadEllipse(*this), newId);
}

const CCadPolyline* CCadEllipse::GetPolyline() const {
    return m_polyline.GetOr([this] { return Converted(*this); });
}

CContourDirection::ContourDirection_T CCadEllipse::GetDirection() const {
    return IsCounterClockwise() ? CContourDirection::COUNTERCLOCKWISE : CContourDirection::CLOCKWISE;
}

CCadEllipseArc::CCadEllipseArc(const math::DPOINT2& centre, double semiAxisA, double semiAxisB,
                               double rotation, double startParameter, double sweepParameter,
                               bool counterClockwise, bool newId)
    : CCadObject(newId), m_outline(centre, semiAxisA, semiAxisB, rotation, startParameter,
                                   Directed(CentralAngle(sweepParameter), counterClockwise)),
      m_bCounterClockwise(counterClockwise) {}

CCadObject* CCadEllipseArc::Clone(bool newId) const {
    return Cloned(new CCadEllipseArc(*this), newId);
}

const CCadPolyline* CCadEllipseArc::GetPolyline() const {
    return m_polyline.GetOr([this] { return Converted(*this); });
}

CContourDirection::ContourDirection_T CCadEllipseArc::GetDirection() const {
    return IsCounterClockwise() ? CContourDirection::COUNTERCLOCKWISE : CContourDirection::CLOCKWISE;
}

} // namespace qev
