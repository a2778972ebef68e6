// Circles and arcs keep the centre form that drawings state, and hand out pieces in chord form. A chord that
// is short against its radius is a bad base for a nearly whole circle, so there an arc answers two pieces.
#include <algorithm>
#include <cmath>

#include <qevdata/arc.h>
#include <qevmath/angle.h>
#include <qevmath/elementary.h>

#include "central_angle.h"

namespace qev {
namespace {

// A bulge above this closes all but 0.04 radians of the circle; the rounding of the short chord is multiplied
// by half the bulge in the radius.
constexpr double kMaxPieceBulge = 100;

} // namespace

CCadCircle::CCadCircle(const math::DPOINT2& centre, double radius, bool counterClockwise, bool newId)
    : CCadObject(newId), m_ptCenter(centre), m_dRadius(std::abs(radius)),
      m_bCounterClockwise(counterClockwise) {}

math::DPOINT2 CCadCircle::GetPoint(double angle) const {
    return m_ptCenter + math::Rotated({m_dRadius, 0}, angle);
}

double CCadCircle::GetLength() const {
    return math::kTwoPi * m_dRadius;
}

CadRect CCadCircle::GetBoundRect() const {
    return {m_ptCenter.x - m_dRadius, m_ptCenter.y - m_dRadius, 2 * m_dRadius, 2 * m_dRadius};
}

CCadObject* CCadCircle::Clone(bool newId) const {
    return Cloned(new CCadCircle(*this), newId);
}

OutlinePiece CCadCircle::GetPiece(int index) const {
    const math::DPOINT2 toStart{index == 0 ? m_dRadius : -m_dRadius, 0};
    return SEGMENT(m_ptCenter + toStart, m_ptCenter - toStart, m_bCounterClockwise ? 1 : -1);
}

CContourDirection::ContourDirection_T CCadCircle::GetDirection() const {
    return DirectionOf(m_bCounterClockwise);
}

CCadArc::CCadArc(const math::DPOINT2& centre, double radius, double startAngle, double centralAngle,
                 bool counterClockwise, bool newId)
    : CCadObject(newId), m_ptCenter(centre), m_dRadius(std::abs(radius)), m_dStartAngle(startAngle),
      m_dCentralAngle(CentralAngle(centralAngle)), m_bCounterClockwise(counterClockwise) {}

void CCadArc::SetEndAngle(double angle) {
    m_dCentralAngle = math::RegularizeRadian(Sign() * (angle - m_dStartAngle));
}

double CCadArc::GetBulge() const {
    return Sign() * math::Tan(m_dCentralAngle / 4);
}

math::DPOINT2 CCadArc::GetPoint(double travelled) const {
    return m_ptCenter + math::Rotated({m_dRadius, 0}, m_dStartAngle + Sign() * travelled);
}

// The ends and those of the four axis points that the arc passes.
CadRect CCadArc::GetBoundRect() const {
    math::Bounds bounds;
    bounds.Add(GetStartPoint());
    bounds.Add(GetEndPoint());
    const math::DPOINT2 axes[] = {{m_dRadius, 0}, {0, m_dRadius}, {-m_dRadius, 0}, {0, -m_dRadius}};
    for (int quarter = 0; quarter < 4; ++quarter)
        if (math::RegularizeRadian(Sign() * (quarter * math::kHalfPi - m_dStartAngle)) <= m_dCentralAngle)
            bounds.Add(m_ptCenter + axes[quarter]);
    return ToRect(bounds);
}

CCadObject* CCadArc::Clone(bool newId) const {
    return Cloned(new CCadArc(*this), newId);
}

int CCadArc::GetPieceCount() const {
    return std::abs(GetBulge()) <= kMaxPieceBulge ? 1 : 2;
}

OutlinePiece CCadArc::GetPiece(int index) const {
    const double pieceAngle = m_dCentralAngle / GetPieceCount();
    return SEGMENT(GetPoint(index * pieceAngle), GetPoint((index + 1.0) * pieceAngle),
                   Sign() * math::Tan(pieceAngle / 4));
}

CContourDirection::ContourDirection_T CCadArc::GetDirection() const {
    return DirectionOf(m_bCounterClockwise);
}

} // namespace qev
