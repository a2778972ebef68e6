// A segment answers through the math library: as an arc, which a straight line is a case of, or as a Bezier
// piece. The type is decided when the segment is made, so that a bulge too small to matter cannot make an arc
// later.
#include <cmath>

#include <qevdata/segment.h>
#include <qevmath/tolerance.h>

namespace qev {

SEGMENT::SEGMENT(const math::DPOINT2& start, const math::DPOINT2& end, double bulge)
    : nType(std::abs(bulge) < math::kZeroBulge ? kLine : kArc), ptStart(start), ptEnd(end),
      dBulge(nType == kLine ? 0 : bulge) {}

math::DPOINT2 SEGMENT::GetPoint(double ratio) const {
    if (nType != kBezier) return GetArc().PointAt(ratio);
    const math::CubicBezier bezier = GetBezier();
    return bezier.PointAt(bezier.ParameterAt(ratio));
}

double SEGMENT::GetLength() const {
    return nType == kBezier ? GetBezier().GetLength() : GetArc().GetLength();
}

math::DPOINT2 SEGMENT::GetNearest(const math::DPOINT2& p) const {
    if (nType == kBezier) return GetBezier().GetNearest(p);
    const math::BulgeArc arc = GetArc();
    return arc.PointAt(arc.GetFootRatio(p));
}

math::Bounds SEGMENT::GetBounds() const {
    return nType == kBezier ? GetBezier().GetBounds() : GetArc().GetBounds();
}

double SEGMENT::GetChordArea() const {
    return nType == kBezier ? GetBezier().GetChordArea() : GetArc().GetChordArea();
}

SEGMENT SEGMENT::Reversed() const {
    SEGMENT other = *this;
    other.ptStart = ptEnd;
    other.ptEnd = ptStart;
    other.dBulge = dBulge == 0 ? 0 : -dBulge;
    other.ptCtrl1 = ptCtrl2;
    other.ptCtrl2 = ptCtrl1;
    return other;
}

} // namespace qev
