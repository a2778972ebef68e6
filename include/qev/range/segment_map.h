/// \file
/// Segment maps: for each segment of a derived contour, the index of the source segment that it came from, or
/// -1.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadMultiSegments;
class CCadObject;

/// Fills a map by relative length: the source segment at the middle of each destination segment. It is
/// resized to the destination's segments (new entries are -1; 0 where either side is a single piece, and one
/// entry for a single-piece destination); as many entries are computed as the source has segments, the others
/// keep their values. Nothing for null and kinds without segments.
QEVCOMMON_API void GetSegMap(const CCadObject* source, const CCadObject* destination, std::vector<int>& map);

/// The segment in which a fraction of the whole length lies, searched from a segment on; dLengthBefore is the
/// length of the contour before it, dFoundBefore gets the length before the segment found. A boundary belongs
/// to the earlier segment. -1 with a length of 0 when the fraction lies before the first segment searched or
/// behind the end; -1 with nothing written for null and for a contour without length.
QEVCOMMON_API int FindSegmentIndexByRate(const CCadMultiSegments* contour, double dRate, int nFirst,
                                         double dLengthBefore, double& dFoundBefore);

/// Carries a position to the destination segment of the same source segment that its point lies on. In: the
/// segment to try first and the least ratio there; out: the position. The ratio is only a preference: when no
/// other segment takes the point, the first answers with a smaller one. False with nothing written when none
/// does.
QEVCOMMON_API bool MapPos(const CCadObject* source, const CCadObject* destination,
                          const std::vector<int>* map, int nSegIndex, double dRatio, int* pSegIndex,
                          double* pRatio);

/// Carries a position by the lengths of the destination segments of its source segment; of one, with the
/// ratio kept. A source segment without any passes the position on to the start of the next one. Nothing is
/// written for null, kinds without segments, an invalid position or an empty map; a map that never leads to a
/// segment ends at a position of the source.
QEVCOMMON_API void GetMapPos(const CCadObject* source, math::POLYPOS pos, const CCadObject* destination,
                             math::POLYPOS& out, const std::vector<int>& map);

} // namespace qev
