/// \file
/// The limit of a nearest search: a tree of boxes over elements in their order, without pointers, without a
/// sort.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <qev/qev.h>

namespace qev::bench {

/// Boxes round eight neighbouring elements each, boxes round eight of these, and so on up to one box.
class BoxTree {
public:
    /// From the box of each element.
    explicit BoxTree(const std::vector<math::Bounds>& elements)
        : m_nElements(static_cast<int>(elements.size())) {
        std::vector<math::Bounds> below = elements;
        do {
            std::vector<math::Bounds> level((below.size() + kFan - 1) / kFan);
            for (std::size_t i = 0; i < below.size(); ++i) level[i / kFan].Add(below[i]);
            m_vecLevels.push_back(level);
            below = std::move(level);
        } while (below.size() > 1);
    }
    /// The element with the least measure(i), a squared distance from p that is not less than that of its
    /// box.
    template <class Measure>
    int Nearest(const math::DPOINT2& p, Measure measure) const {
        Best best;
        Visit(static_cast<int>(m_vecLevels.size()) - 1, 0, p, measure, best);
        return best.index;
    }

private:
    static constexpr int kFan = 8;
    struct Best {
        double square = std::numeric_limits<double>::infinity();
        int index = -1;
    };
    struct Child {
        double square;
        int index;
    };

    template <class Measure>
    void Visit(int level, int index, const math::DPOINT2& p, Measure& measure, Best& best) const {
        if (level == 0) return Scan(index, measure, best);
        const std::vector<math::Bounds>& boxes = m_vecLevels[level - 1];
        const int end = std::min((index + 1) * kFan, static_cast<int>(boxes.size()));
        Child children[kFan];
        int count = 0;
        for (int i = index * kFan; i < end; ++i) {
            const Child child{boxes[i].GetSquaredDistance(p), i};
            if (child.square >= best.square) continue;
            int at = count++;
            for (; at > 0 && children[at - 1].square > child.square; --at) children[at] = children[at - 1];
            children[at] = child;
        }
        for (int i = 0; i < count && children[i].square < best.square; ++i)
            Visit(level - 1, children[i].index, p, measure, best);
    }
    template <class Measure>
    void Scan(int run, Measure& measure, Best& best) const {
        for (int i = run * kFan, end = std::min(i + kFan, m_nElements); i < end; ++i) {
            const double square = measure(i);
            if (square < best.square) best = {square, i};
        }
    }

    std::vector<std::vector<math::Bounds>> m_vecLevels; // boxes of runs first, the one box of all last
    int m_nElements;
};

} // namespace qev::bench
