// An ellipse answers lengths and boxes from its own equation. Positions on it go by a polyline of arcs
// instead, which is made once: for points at a length and lengths at a point the equation would have to be
// solved each time, and the machine cuts the polyline in any case.
#include <memory>

#include <qevdata/converter.h>
#include <qevdata/ellipse.h>
#include <qevdata/polyline.h>

#include "central_angle.h"
#include "lazy.h"

namespace qev {

CCadEllipseBase::CCadEllipseBase(const math::DPOINT2& centre, double semiAxisA, double semiAxisB,
                                 double rotation, double start, double sweep, bool counterClockwise,
                                 bool newId)
    : CCadObject(newId),
      m_outline(centre, semiAxisA, semiAxisB, rotation, start, counterClockwise ? sweep : -sweep),
      m_bCounterClockwise(counterClockwise) {}

CCadEllipseBase::CCadEllipseBase(const CCadEllipseBase& other)
    : CCadObject(other), m_outline(other.m_outline), m_bCounterClockwise(other.m_bCounterClockwise) {}

CCadEllipseBase::~CCadEllipseBase() {
    Drop(m_pPolyline);
}

const CCadPolyline* CCadEllipseBase::GetPolyline() const {
    return GetOrMake(m_pPolyline, [this] {
        CCadPolyline* polyline = nullptr;
        CConvertCadObjectToCadPolyline("SegmentType=Both;AbsoluteError=0.001;")(this, polyline);
        return std::unique_ptr<const CCadPolyline>(polyline);
    });
}

CContourDirection::ContourDirection_T CCadEllipseBase::GetDirection() const {
    return DirectionOf(IsCounterClockwise());
}

CCadEllipse::CCadEllipse(const math::DPOINT2& centre, double semiAxisA, double semiAxisB, double rotation,
                         bool counterClockwise, bool newId)
    : CCadEllipseBase(centre, semiAxisA, semiAxisB, rotation, 0, math::kTwoPi, counterClockwise, newId) {}

CCadObject* CCadEllipse::Clone(bool newId) const {
    return Cloned(new CCadEllipse(*this), newId);
}

CCadEllipseArc::CCadEllipseArc(const math::DPOINT2& centre, double semiAxisA, double semiAxisB,
                               double rotation, double startParameter, double sweepParameter,
                               bool counterClockwise, bool newId)
    : CCadEllipseBase(centre, semiAxisA, semiAxisB, rotation, startParameter, CentralAngle(sweepParameter),
                      counterClockwise, newId) {}

CCadObject* CCadEllipseArc::Clone(bool newId) const {
    return Cloned(new CCadEllipseArc(*this), newId);
}

} // namespace qev
