/// \file
/// Approximation of any outline by a polyline of lines and arcs.
#pragma once

#include <qev/export.h>

namespace qev {

class CCadObject;
class CCadPolyline;

/// Converts objects to polylines under settings "SegmentType=Both|Line|Arc;AbsoluteError=mm;".
///
/// The deviation is guaranteed: no point of the polyline is farther than AbsoluteError from the outline, and
/// the other way round. An error below 1e-6 mm counts as 1e-6. "Both" and "Arc" keep lines and arcs as they
/// are, give a circle as two half circles, and ellipses and Bezier pieces as arcs that join tangentially.
/// "Line" gives chords whose ends lie on the outline. Segment contours of lines and arcs stay segment for
/// segment except under "Line", which splits their arcs.
class QEVDATA_API CConvertCadObjectToCadPolyline {
public:
    /// Unknown keys are ignored; a missing or malformed value makes every conversion fail. The text is not
    /// kept.
    explicit CConvertCadObjectToCadPolyline(const char* settings);

    /// True and a new polyline that the caller owns; false and null for a null object, dots, containers,
    /// texts, contours without segments, outlines that are not finite or so far out that coordinates there
    /// cannot express the error, settings that are not usable, and when the error would take more than a
    /// million pieces. Throws std::bad_alloc, and leaves null, when memory is refused.
    bool operator()(const CCadObject* object, CCadPolyline*& out) const;

private:
    double m_dError = 0; // mm; 0 marks unusable settings
    bool m_bChords = false;
};

} // namespace qev
