/// \file
/// One elementary piece of a contour.
#pragma once

#include <qev/export.h>
#include <qevmath/arc.h>
#include <qevmath/bezier.h>
#include <qevmath/bounds.h>
#include <qevmath/point.h>

namespace qev {

/// A straight line, a circular arc or a cubic Bezier piece; a value. The bulge is that of `math::BulgeArc`.
class SEGMENT {
public:
    /// What a segment is, as nType holds it.
    enum Type {
        kLine = 1,  ///< straight
        kArc = 2,   ///< circular, by its bulge
        kBezier = 3 ///< cubic, by its control points
    };

    int nType = kLine;     ///< one of Type
    math::DPOINT2 ptStart; ///< mm
    math::DPOINT2 ptEnd;   ///< mm
    double dBulge = 0;     ///< arcs only, 0 for the others: tan(angle turned / 4), positive counter-clockwise
    math::DPOINT2 ptCtrl1; ///< Bezier pieces only
    math::DPOINT2 ptCtrl2; ///< Bezier pieces only

    /// A line of no length at the origin.
    SEGMENT() = default;
    /// A line, of any length.
    SEGMENT(const math::DPOINT2& start, const math::DPOINT2& end) : ptStart(start), ptEnd(end) {}
    /// An arc that turns by four times the arctangent of the bulge, counter-clockwise when that is positive;
    /// a line when |bulge| is below math::kZeroBulge (1e-9).
    QEVDATA_API SEGMENT(const math::DPOINT2& start, const math::DPOINT2& end, double bulge);
    /// A Bezier piece, also when its points lie on a line.
    SEGMENT(const math::DPOINT2& start, const math::DPOINT2& ctrl1, const math::DPOINT2& ctrl2,
            const math::DPOINT2& end)
        : nType(kBezier), ptStart(start), ptEnd(end), ptCtrl1(ctrl1), ptCtrl2(ctrl2) {}

    /// The point at a fraction of the length, 0 the start and 1 the end (exactly). Beyond the ends a line and
    /// an arc go on, a Bezier piece stops.
    QEVDATA_API math::DPOINT2 GetPoint(double ratio) const;
    /// Length in mm, to 1e-10 relative for Bezier pieces.
    QEVDATA_API double GetLength() const;
    /// The point of the segment, ends included, that is nearest to p.
    QEVDATA_API math::DPOINT2 GetNearest(const math::DPOINT2& p) const;
    /// The exact bounding box.
    QEVDATA_API math::Bounds GetBounds() const;
    /// Area between the segment and its chord in mm^2, positive when a counter-clockwise contour gains it.
    QEVDATA_API double GetChordArea() const;
    /// The piece run from its end to its start: control points change places, a bulge its sign.
    QEVDATA_API SEGMENT Reversed() const;

    /// The line or arc; of a Bezier piece the chord.
    math::BulgeArc GetArc() const { return {ptStart, ptEnd, nType == kArc ? dBulge : 0}; }
    /// The Bezier piece; without meaning for a line and an arc, which have no control points.
    math::CubicBezier GetBezier() const { return {ptStart, ptCtrl1, ptCtrl2, ptEnd}; }
};

} // namespace qev
