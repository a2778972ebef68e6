/// \file
/// How far two pieces of outlines are apart, and where they meet. Private to the room.
#pragma once

#include <limits>
#include <memory>
#include <vector>

#include <qevdata/cad_object.h>
#include <qevdata/polyline.h>

namespace qev {

/// Whether a piece is a line or an arc.
inline bool IsLineOrArc(const OutlinePiece& piece) {
    const auto* segment = std::get_if<SEGMENT>(&piece);
    return segment && segment->nType != SEGMENT::kBezier;
}

/// Two points, one of each of two pieces.
struct Gap {
    double distance = std::numeric_limits<double>::infinity(); ///< mm; from one to the other
    math::DPOINT2 onFirst = math::NoPoint();                   ///< mm
};

/// The least gap between a measurable piece and a line or an arc, exact but for rounding, some 1e-15 of the
/// coordinates: so it is hardly ever exactly 0 where they cross.
Gap LeastGap(const OutlinePiece& piece, const SEGMENT& lineOrArc);

/// Appends the shares of a measurable piece's parameter, in [0, 1], at which it crosses a line or an arc or
/// passes one of its ends, within `reach` mm. Where the piece runs along it these are the ends of that.
void AppendMeetings(const OutlinePiece& piece, const SEGMENT& lineOrArc, double reach,
                    std::vector<double>& shares);

/// How far in mm the arcs of ArcsOf may be from their curve: math::kOnCurve, or 1e-9 of the coordinates where
/// that is more, since arcs cannot be laid closer than the coordinates are rounded.
double FitOf(const OutlinePiece& curve);
/// A measurable ellipse or Bezier piece laid out in lines and arcs within FitOf; null for one that is as good
/// as a point. Throws std::bad_alloc when memory is refused.
std::unique_ptr<const CCadPolyline> ArcsOf(const OutlinePiece& curve);

/// The point of a piece at a share of its parameter: exactly the ends at 0 and 1.
math::DPOINT2 PointAtShare(const OutlinePiece& piece, double share);

} // namespace qev
