#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/convex_hull_2.h>

#include "peers.h"

namespace qev::bench {

using Point = CGAL::Exact_predicates_inexact_constructions_kernel::Point_2;

struct CgalCloud::Points {
    std::vector<Point> cloud, corners;
};
CgalCloud::CgalCloud(const std::vector<CConvexHelper::Point>& points)
    : m_pPoints(std::make_unique<Points>()) {
    for (const CConvexHelper::Point& p : points) m_pPoints->cloud.emplace_back(p.x, p.y);
}
CgalCloud::~CgalCloud() = default;
std::size_t CgalCloud::CountCorners() {
    m_pPoints->corners.clear();
    const std::vector<Point>& cloud = m_pPoints->cloud;
    CGAL::convex_hull_2(cloud.begin(), cloud.end(), std::back_inserter(m_pPoints->corners));
    return m_pPoints->corners.size();
}

} // namespace qev::bench
