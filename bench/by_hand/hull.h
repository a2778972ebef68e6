/// \file
/// The limit of a hull: what an octagon of far points holds is dropped, the rest is put into columns and
/// scanned.
#pragma once

#include <algorithm>
#include <array>
#include <tuple>
#include <vector>

#include <qev/qev.h>

namespace qev::bench {

using HullPoint = CConvexHelper::Point;

/// Keeps its arrays from one hull to the next.
class HullByHand {
public:
    /// Number of corners of the hull of at least one point.
    std::size_t CountCorners(const std::vector<HullPoint>& points) {
        DropInside(points);
        SortByX();
        m_vecChain.clear();
        Scan(m_vecSorted.begin(), m_vecSorted.end());
        const std::size_t upper = m_vecChain.size();
        m_vecChain.clear();
        Scan(m_vecSorted.rbegin(), m_vecSorted.rend());
        return upper + m_vecChain.size() - 2;
    }

private:
    static double Turn(const HullPoint& a, const HullPoint& b, const HullPoint& c) {
        return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    }
    static bool IsLeftOf(const HullPoint& p, const HullPoint& q) {
        return std::tie(p.x, p.y) < std::tie(q.x, q.y);
    }
    void DropInside(const std::vector<HullPoint>& points) {
        constexpr std::size_t kFew = 32; // which are sorted as fast
        m_vecLeft.clear();
        if (points.size() <= kFew) {
            m_vecLeft = points;
            return;
        }
        constexpr double kDirections[8][2] = {{1, 0},  {1, 1},   {0, 1},  {-1, 1},
                                              {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
        std::array<HullPoint, 9> far;
        far.fill(points.front());
        for (const HullPoint& p : points)
            for (int k = 0; k < 8; ++k)
                if ((p.x - far[k].x) * kDirections[k][0] + (p.y - far[k].y) * kDirections[k][1] > 0)
                    far[k] = p;
        far[8] = far[0];
        for (const HullPoint& p : points) {
            bool inside = true;
            for (int k = 0; k < 8 && inside; ++k)
                inside =
                    Turn(far[k], far[k + 1], p) > 0 || (far[k].x == far[k + 1].x && far[k].y == far[k + 1].y);
            if (!inside) m_vecLeft.push_back(p);
        }
    }
    // Columns of so many points or so, each sorted by itself: few enough that handing the points out stays in
    // the cache.
    void SortByX() {
        constexpr std::size_t kInColumn = 128;
        const auto [least, most] = std::minmax_element(m_vecLeft.begin(), m_vecLeft.end(), IsLeftOf);
        const std::size_t columns = m_vecLeft.size() / kInColumn;
        const double low = least->x, scale = static_cast<double>(columns) / (most->x - low);
        m_vecColumns.assign(columns + 2, 0);
        const auto column = [&](const HullPoint& p) { return static_cast<std::size_t>((p.x - low) * scale); };
        for (const HullPoint& p : m_vecLeft) ++m_vecColumns[column(p) + 1];
        for (std::size_t i = 1; i < m_vecColumns.size(); ++i) m_vecColumns[i] += m_vecColumns[i - 1];
        m_vecEnds.assign(m_vecColumns.begin(), m_vecColumns.end() - 1);
        m_vecSorted.resize(m_vecLeft.size());
        for (const HullPoint& p : m_vecLeft) m_vecSorted[m_vecEnds[column(p)]++] = p;
        for (std::size_t i = 0; i + 1 < m_vecColumns.size(); ++i)
            std::sort(m_vecSorted.begin() + m_vecColumns[i], m_vecSorted.begin() + m_vecColumns[i + 1],
                      IsLeftOf);
    }
    template <class Iterator>
    void Scan(Iterator first, Iterator last) {
        for (; first != last; ++first) {
            while (m_vecChain.size() > 1 && Turn(m_vecChain.end()[-2], m_vecChain.back(), *first) <= 0)
                m_vecChain.pop_back();
            m_vecChain.push_back(*first);
        }
    }

    std::vector<HullPoint> m_vecLeft, m_vecSorted, m_vecChain;
    std::vector<int> m_vecColumns, m_vecEnds;
};

} // namespace qev::bench
