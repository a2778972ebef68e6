/// \file
/// Objects from pieces that an affine map may have bent.
#pragma once

#include <memory>
#include <vector>

#include <qevdata/qevdata.h>

#include "affine.h"

namespace host {

/// Up to this length in mm, a nanometre, a segment or an object has none: it is what rounding leaves of two
/// equal points, and far below what any machine resolves.
inline constexpr double kNoLength = 1e-6;

/// An ellipse or a part of it, by any pair of conjugate half diameters: the points centre + cos(t)*u +
/// sin(t)*v. Unlike half axes, conjugate half diameters stay conjugate under every affine map.
struct ConjugateArc {
    math::DPOINT2 centre;
    math::DPOINT2 u;             ///< mm, from the centre to the point at t = 0
    math::DPOINT2 v;             ///< mm, from the centre to the point at t = pi/2
    double start = 0;            ///< t of the start, in radians
    double sweep = math::kTwoPi; ///< how far t goes, signed; two pi and more is the whole ellipse
};

/// What an affine map makes of an elliptic arc: a circle or an arc where it is round, else an ellipse or an
/// elliptic arc.
std::unique_ptr<qev::CCadObject> MakeArc(const ConjugateArc& arc, const Affine& map);

/// What an affine map makes of segments that join end to start: a polyline of lines and arcs, or an extended
/// one when a Bezier piece is among them. Arcs that the map squeezes are given as Bezier pieces that deviate
/// by less than 1e-7 of their size. Segments that have no length then (repeated points) are left out, and
/// their number is added to `dropped`, which may be null. No segments give a contour without segments.
std::unique_ptr<qev::CCadMultiSegments> MakeContour(const std::vector<qev::SEGMENT>& segments,
                                                    const Affine& map, int* dropped = nullptr);

/// Appends an elliptic arc as Bezier pieces of equal sweep that deviate by less than 1e-7 of its size.
void AppendBeziers(const math::EllipticArc& arc, std::vector<qev::SEGMENT>& segments);

} // namespace host
