/// \file
/// The convex hull of tagged points.
#pragma once

#include <vector>

#include <qev/export.h>

namespace qev {

/// The convex hull of tagged points and the test for points on a line; it keeps no state.
class QEVCOMMON_API CConvexHelper {
public:
    /// A point and what its caller knows it by.
    struct Point {
        double x; ///< mm
        double y; ///< mm
        int nTag; ///< the caller's own value, carried through unchanged
    };

    /// The corners of the convex hull, counter-clockwise from the lowest point (of those within 1e-9 mm of
    /// the lowest the leftmost). Points on its edges are dropped, of duplicates the first is kept. Fewer than
    /// four points are answered as they are; of more, those that are not finite are left out. The output is
    /// cleared first and may be the input.
    static void ConvexGrahamScan(const std::vector<Point>& input, std::vector<Point>& output);

    /// Whether three points lie on a line: two of them are nearer than 1e-9 mm, or the sine of the smallest
    /// angle of their triangle is below the tolerance.
    static bool IsCollinear(const Point& a, const Point& b, const Point& c, const double& tolerance);
};

} // namespace qev
