/// \file
/// Segment maps: for each segment of a contour that was made from another, the index of the source segment
/// that it came from, or -1.
#pragma once

#include <vector>

#include <qev/export.h>
#include <qev/types.h>

namespace qev {

class CCadMultiSegments;
class CCadObject;

/// Fills a segment map by relative length: the entry of a destination segment is the source segment that lies
/// at its middle, by the fraction of the whole length. The map is resized to the destination's segments; new
/// entries are -1, or 0 where source or destination is a single piece, and then nothing more is computed.
/// Between contours as many entries are computed as the source has segments, the others keep their values.
/// Nothing is done for null and for known kinds without segments. A kind that the library does not know makes
/// no map, but a destination of a single piece gets its one entry from it. The costs grow with the segments
/// of both. Throws std::bad_alloc without memory.
QEVCOMMON_API void GetSegMap(const CCadObject* source, const CCadObject* destination, std::vector<int>& map);

/// The index of the segment in which the fraction dRate of a contour's whole length lies, searched from
/// segment nFirst on; dLengthBefore is the length in mm of the contour before that segment, and dFoundBefore
/// gets the length in mm before the segment found. A joint belongs to the earlier segment. -1 with a length
/// of 0 when the fraction lies before the first segment searched or behind the end; -1 with nothing written
/// for null and for a contour whose length is below 1e-9 mm.
QEVCOMMON_API int FindSegmentIndexByRate(const CCadMultiSegments* contour, double dRate, int nFirst,
                                         double dLengthBefore, double& dFoundBefore);

/// Carries the position (nSegIndex, dRatio) of a source to a destination by its point: of the destination
/// segments whose map entry is nSegIndex, one that the point lies on answers. pSegIndex and pRatio give the
/// segment to begin with and the least ratio wanted on it, and get the position. The least ratio is only a
/// preference: when no other segment takes the point, the first one answers with a smaller ratio. False, with
/// nothing written, when no segment takes the point, when no entry is nSegIndex, and for null.
QEVCOMMON_API bool MapPos(const CCadObject* source, const CCadObject* destination,
                          const std::vector<int>* map, int nSegIndex, double dRatio, int* pSegIndex,
                          double* pRatio);

/// Carries a position of a source to a destination by length: the destination segments whose map entry is the
/// position's segment are laid behind each other, and the place on them after the length of the source
/// segment up to the position is the answer. One such segment alone keeps the ratio, and a destination of a
/// single piece does. A source segment without any passes the position on to the start of the next one that
/// has some. Nothing is written for null, known kinds without segments, an invalid position or an empty map.
/// On a destination of a kind that the library does not know the answer is the position itself, or the
/// start of the next segment with entries. A map without any entry but -1 keeps the position, its index no
/// further than the map's last; where the lengths or the entries lead to no segment, the answer is a position
/// of the source. A length that the destination's segments miss by less than 1e-9 mm is their end. The cost
/// is some passes over the map.
QEVCOMMON_API void GetMapPos(const CCadObject* source, math::POLYPOS pos, const CCadObject* destination,
                             math::POLYPOS& out, const std::vector<int>& map);

} // namespace qev
