/// \file
/// Rectangular plate stock: making it, reading it back, comparing outlines.
#pragma once

#include <qev/export.h>

namespace qev {

class Adobe;
class CCadGroup;

/// The kind of a rectangular plate stock.
inline constexpr int kRectPlaneStock = 0x1001;

/// A new plate, owned by the caller: its section is one rectangle of width x height mm about the origin, its
/// scalar parameter is the third value. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API Adobe* Make_RectPlane(double width, double height, double thickness);

/// Appends a rectangle of width x height mm about the origin to a section group, which owns it: a closed
/// polyline of four lines, counter-clockwise from the lower left corner. Nothing for null. Throws
/// std::bad_alloc when memory is refused, with the group as it was.
QEVCOMMON_API void MakeSectionData_RectPlane(CCadGroup* section, double width, double height);

/// Reads the measures of a plate in mm. The answer is always false; callers judge by the stock's kind.
/// Nothing is written for null, for another kind, and for a section that is not exactly one polyline of two
/// nodes or more.
QEVCOMMON_API bool GetRectPlaneParam(const Adobe* stock, double& width, double& height, double& thickness);

/// Comparison of stock outlines; it keeps no state.
struct QEVCOMMON_API CAdobeHelper {
    /// Whether two sections hold the same contours in the same order, from the same start in the same
    /// direction: ends of segments within 1e-6 mm, bulges within 1e-9. Control points of Bezier pieces are
    /// not looked at, and of what has no segments, such as circles, only the kind is. False for null.
    static bool IsSameProjectContour(const CCadGroup* a, const CCadGroup* b);
};

} // namespace qev
