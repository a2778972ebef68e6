/// \file
/// A stretch of a Bezier piece, seen from its middle. Private to the math library.
#pragma once

#include <cmath>

#include <qevmath/bezier.h>

namespace math {

/// The piece between two of its parameters as C(m + s) = middle + v s + e s^2 + d s^3 with |s| <= half. Seen
/// from the middle its ends are alike, which keeps the formulas of deviations short.
struct CubicStretch {
    DPOINT2 middle;
    DPOINT2 v;
    DPOINT2 e;
    DPOINT2 d;
    double half;

    /// A vector along the chord: a unit of `half` of it for a chord of the length 2 * half * |Along()|.
    DPOINT2 Along() const { return v + d * (half * half); }

    /// Whether the stretch advances along its chord all the way, so that it has no loop or cusp. Its
    /// derivative is a mean, with weights that are not negative, of the legs of its control polygon, v + 3 d
    /// half^2 -+ 2 e half at the ends and v - 3 d half^2 between.
    bool Advances() const {
        const DPOINT2 along = Along();
        const double straight = Dot(v, along);
        const double bend = 3 * half * half * Dot(d, along);
        return Dot(along, along) > 0 && straight >= bend
               && straight + bend >= 2 * half * std::abs(Dot(e, along));
    }

    /// The length of the control polygon in mm, which the stretch does not exceed.
    double GetLengthBound() const {
        const DPOINT2 outer = v + d * (3 * half * half);
        const DPOINT2 turn = e * (2 * half);
        const DPOINT2 inner = v - d * (3 * half * half);
        return 2 * half / 3 * (Norm(outer - turn) + Norm(inner) + Norm(outer + turn));
    }
};

/// A Bezier piece in powers of its parameter.
class CubicPowers {
public:
    explicit CubicPowers(const CubicBezier& b)
        : m_start(b.start), m_v(3 * (b.ctrl1 - b.start)), m_e(3 * (b.start - 2 * b.ctrl1 + b.ctrl2)),
          m_d(b.end - b.start + 3 * (b.ctrl1 - b.ctrl2)) {}

    /// The stretch between two parameters.
    CubicStretch Between(double from, double to) const {
        const double t = 0.5 * (from + to);
        return {m_start + (m_v + (m_e + m_d * t) * t) * t, m_v + (2 * m_e + m_d * (3 * t)) * t,
                m_e + m_d * (3 * t), m_d, 0.5 * (to - from)};
    }

private:
    DPOINT2 m_start;
    DPOINT2 m_v;
    DPOINT2 m_e;
    DPOINT2 m_d;
};

} // namespace math
