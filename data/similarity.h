/// \file
/// The geometry kernel's transform as contours use it. Private to the data library.
#pragma once

#include <qevmath/point.h>

#include <gp_Trsf2d.hxx>

namespace qev {

/// Rotation, uniform scale, mirror and translation.
class Similarity {
public:
    explicit Similarity(const gp_Trsf2d& transform)
        : m_vX{transform.Value(1, 1), transform.Value(2, 1)},
          m_vY{transform.Value(1, 2), transform.Value(2, 2)}, m_vShift{transform.Value(1, 3),
                                                                       transform.Value(2, 3)} {}

    math::DPOINT2 Apply(const math::DPOINT2& p) const { return m_vX * p.x + m_vY * p.y + m_vShift; }
    /// What a bulge is multiplied with: a mirror turns the arcs round.
    double BulgeSign() const { return math::Cross(m_vX, m_vY) < 0 ? -1 : 1; }

private:
    math::DPOINT2 m_vX;
    math::DPOINT2 m_vY;
    math::DPOINT2 m_vShift;
};

} // namespace qev
