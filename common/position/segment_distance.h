/// \file
/// The distance from one line or arc and the foot on it, for those who know its centre form already. Private
/// to the positions.
#pragma once

#include <qevmath/arc.h>

namespace qev {

/// Distance in mm from p to the line or arc from a to b, which CPosCalculator::GetMinDistance answers.
/// `solved` is the centre form of the arc, or null where it is not known yet; a line needs none.
double SegmentDistance(const math::DPOINT2& p, const math::DPOINT2& a, const math::DPOINT2& b, double bulge,
                       const math::CentreArc* solved);

/// The ratio in [0, 1] of the place of the line or arc from a to b that is nearest to p, which
/// CPosCalculator::GetPerpendicularFootRatio answers. `solved` is the centre form of the arc, or null where
/// it is not known yet; a line needs none.
double SegmentFootRatio(const math::DPOINT2& p, const math::DPOINT2& a, const math::DPOINT2& b, double bulge,
                        const math::CentreArc* solved);

} // namespace qev
