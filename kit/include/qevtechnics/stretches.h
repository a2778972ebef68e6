/// \file
/// Stretches of contours away from their sharp corners: where a tool may enter, and where bridges may stay.
#pragma once

#include <memory>
#include <vector>

#include <qev/qev.h>

namespace qev::kit {

/// How far, in mm, the polyline that stands for a curve may lie from it: small against every machining
/// tolerance, so that areas, corners and positions are those of the curve.
inline constexpr double kConversionError = 0.001;

/// The least turn, in degrees, of what is called a sharp corner when nobody says otherwise.
inline constexpr double kSharpCornerDegrees = 30;

/// The contour that positions on an object refer to. Of a polyline of lines and arcs this is a copy, of every
/// other object the polyline that it converts to within kConversionError. The caller owns it. Null for an
/// object that converts to none, such as a dot or a text.
std::unique_ptr<CCadMultiSegments> ContourOf(const CCadObject& object);

/// A part of a contour and how long it is.
struct Stretch {
    math::PosRange range; ///< on the contour that was asked, normalised
    double length = 0;    ///< mm, above 0
};

/// What lies between ranges of a contour, which may be in any order and overlap, in the order of the contour.
/// On a closed contour the last stretch leads round to the first range; on an open one the first stretch
/// begins at its start and the last ends at its end, where no range holds these. Without ranges the whole
/// contour is one stretch. Where two ranges touch there is no stretch.
std::vector<Stretch> StretchesBetween(const CCadMultiSegments& contour,
                                      const std::vector<math::PosRange>& ranges);

/// The zones round the sharp corners of a contour, and the stretches left between them.
struct StartZones {
    std::vector<math::PosRange> zones;  ///< sorted and disjoint
    std::vector<Stretch> freeStretches; ///< in the order of the contour; none where the zones cover it
    double longest = 0;                 ///< mm, length of the longest free stretch; 0 when there is none
    math::POLYPOS chosen;               ///< the middle of the longest free stretch, the first of equal ones
};

/// Finds the zones of `length` mm (above 0) before and after each joint of a contour that turns by
/// `cornerDegrees` or more, and where a tool may start between them. A contour without such a joint is one
/// free stretch. Where a zone cannot be made there is no free stretch: a length of 0 does that at every
/// corner.
StartZones FindStartZones(const CCadMultiSegments& contour, double length, double cornerDegrees);

} // namespace qev::kit
