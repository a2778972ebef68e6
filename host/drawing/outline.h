/// \file
/// Objects from pieces that an affine map may have bent.
#pragma once

#include <memory>
#include <vector>

#include <qevdata/qevdata.h>

#include "affine.h"

namespace host {

/// An ellipse or a part of it, by any pair of conjugate half diameters: centre + cos(t)*u + sin(t)*v.
struct ConjugateArc {
    math::DPOINT2 centre;
    math::DPOINT2 u;
    math::DPOINT2 v;
    double start = 0;
    double sweep = math::kTwoPi; ///< signed
};

/// The map of the arc as an object: a circle or an arc where it has become round, else an ellipse or an
/// elliptic arc.
std::unique_ptr<qev::CCadObject> MakeArc(const ConjugateArc& arc, const Affine& map);

/// The map of segments that join end to start: a polyline, or an extended one when a Bezier piece is among
/// them. An arc that the map squeezes into an elliptic one is given as Bezier pieces.
std::unique_ptr<qev::CCadMultiSegments> MakeContour(const std::vector<qev::SEGMENT>& segments,
                                                    const Affine& map);

/// Appends an elliptic arc as Bezier pieces that deviate by less than 1e-7 of its size.
void AppendBeziers(const math::EllipticArc& arc, std::vector<qev::SEGMENT>& segments);

} // namespace host
