/// \file
/// Conversion of any object to a polyline of lines and arcs. The polylines are new and belong to the caller;
/// null when the object is null or the converter makes none (see CConvertCadObjectToCadPolyline).
#pragma once

#include <vector>

#include <qev/export.h>

namespace qev {

class CCadObject;
class CCadPolyline;

/// A new polyline along an object, owned by the caller, that leaves it by dAbsoluteError mm at most.
/// nSegmentType: 1 lines only, 0 and 2 lines and arcs, which answer alike: what is straight stays a line,
/// what is curved becomes arcs. Null for other types, for a null object and when the converter makes none.
/// Throws std::bad_alloc when memory is refused.
QEVCOMMON_API CCadPolyline* Convert2Polyline(const CCadObject* object, int nSegmentType,
                                             double dAbsoluteError);
/// A new polyline of lines and arcs along an object, owned by the caller, that leaves it by dAbsoluteError mm
/// at most. Null for a null object and when the converter makes none. Throws std::bad_alloc when memory is
/// refused.
QEVCOMMON_API CCadPolyline* Convert2Polyline(const CCadObject* object, double dAbsoluteError);
/// A new polyline of lines and arcs along an object, owned by the caller, that leaves it by dAbsoluteError mm
/// at most, and the source segment of each of its segments: for circles, arcs, ellipses and elliptic arcs
/// zeros are put in front of what the map holds, otherwise 0, 1, 2, ... is appended to it. Null, with the map
/// as it was, for a null object and when the converter makes none. Throws std::bad_alloc when memory is
/// refused, with the map as it was.
QEVCOMMON_API CCadPolyline* Convert2Polyline(const CCadObject* object, std::vector<int>& segMap,
                                             double dAbsoluteError);

} // namespace qev
