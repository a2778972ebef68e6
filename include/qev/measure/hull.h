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
    /// the lowest the leftmost). Points on its edges are dropped, also where the hull turns by less than 1e-9
    /// radians or two corners are nearer than 1e-9 mm; of duplicates the first is kept. No point lies outside
    /// the answer by more than about 1e-9 mm and 2e-9 of the hull's size. Fewer than four points are answered
    /// as they are; of more, those are left out that are not finite or have a coordinate beyond 1e100 mm, and
    /// coordinates nearer to 0 than 1e-100 mm become 0. The output is replaced and may be the input. Throws
    /// std::bad_alloc without memory, the output as it was.
    static void ConvexGrahamScan(const std::vector<Point>& input, std::vector<Point>& output);

    /// Whether three points lie on a line: two of them are nearer than 1e-9 mm, or the sine of the smallest
    /// angle of their triangle is below the tolerance.
    static bool IsCollinear(const Point& a, const Point& b, const Point& c, const double& tolerance);
};

} // namespace qev
