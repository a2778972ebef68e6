/// \file
/// Conversion of any object to a polyline of lines and arcs. The polylines are new and belong to the caller;
/// null when the object is null or the converter makes none (see CConvertCadObjectToCadPolyline).
#pragma once

#include <vector>

#include <qev/export.h>

namespace qev {

class CCadObject;
class CCadPolyline;

/// Under an absolute error in mm. nSegmentType: 0 lines and arcs, 1 lines only, 2 arcs (lines stay); null for
/// others.
QEVCOMMON_API CCadPolyline* Convert2Polyline(const CCadObject* object, int nSegmentType,
                                             double dAbsoluteError);
/// With lines and arcs.
QEVCOMMON_API CCadPolyline* Convert2Polyline(const CCadObject* object, double dAbsoluteError);
/// With lines and arcs, and the source segment of every segment of the polyline: for circles, arcs, ellipses
/// and elliptic arcs zeros are put in front of what the map holds, otherwise 0, 1, 2, ... is appended to it.
QEVCOMMON_API CCadPolyline* Convert2Polyline(const CCadObject* object, std::vector<int>& segMap,
                                             double dAbsoluteError);

} // namespace qev
