/// \file
/// A tree of boxes over things that stand in a row. Not installed: for the indexes of contours and groups.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <qevmath/bounds.h>

namespace qev {

/// The least of eight numbers, of which none is NaN, without a branch.
inline double Least(const std::array<double, 8>& numbers) {
    std::array<double, 4> least;
    for (int i = 0; i < 4; ++i) least[i] = numbers[i] < numbers[i + 4] ? numbers[i] : numbers[i + 4];
    const double even = least[0] < least[2] ? least[0] : least[2];
    const double odd = least[1] < least[3] ? least[1] : least[3];
    return even < odd ? even : odd;
}

/// The boxes of a row of things, and over each eight of them one box, and so on up to one node of at most
/// eight. The tree has no pointers: its shape follows from the number of things. It is as good as neighbours
/// in the row are neighbours in the plane, which the segments of a contour are by themselves.
class BoxTree {
public:
    /// Boxes in a node.
    static constexpr int kFan = 8;

    /// A tree of nothing.
    BoxTree() = default;
    /// The tree over these boxes, which it copies. An empty box is never near to anything. Throws when memory
    /// is refused.
    explicit BoxTree(const std::vector<math::Bounds>& boxes) {
        std::vector<math::Bounds> level = boxes;
        while (!level.empty()) {
            m_vecLevelStarts.push_back(m_vecNodes.size());
            const std::size_t count = (level.size() + kFan - 1) / kFan;
            m_vecNodes.resize(m_vecNodes.size() + count);
            std::vector<math::Bounds> above(count);
            for (std::size_t i = 0; i < level.size(); ++i) {
                NodeAt(GetLevelCount() - 1, i / kFan).Set(i % kFan, level[i]);
                above[i / kFan].Add(level[i]);
            }
            level.swap(above);
            if (level.size() == 1) break;
        }
    }

    /// Number of levels of boxes: 0 for nothing, 1 for up to eight things.
    int GetLevelCount() const { return static_cast<int>(m_vecLevelStarts.size()); }

    /// The box over the things from i * 8^level to those before (i + 1) * 8^level; an empty one where there
    /// are none. On the highest level i goes from 0 to 7.
    math::Bounds BoxAt(int level, std::size_t i) const { return NodeAt(level, i / kFan).BoxOf(i % kFan); }

    /// Calls visit(item) for the things whose box is nearer to p than the root of `bound`, the nearest of
    /// each node first. `bound` is a square in mm^2, looked at anew before each step: what the visit finds
    /// may bring it down. Nothing is near to a p that is not finite. Who knows more than the boxes passes
    /// over more: passOver(level, i) is asked for the thing i on level 0, and for the things from i * 8^level
    /// on, which share a box, on the others.
    template <class PassOver, class Visit>
    void VisitNearestFirst(const math::DPOINT2& p, const double& bound, PassOver&& passOver,
                           Visit&& visit) const {
        if (!m_vecNodes.empty() && math::IsFinite(p)) Descend(p, bound, passOver, visit);
    }

    /// Calls visit(item), in the order of the row, for the things whose box fulfils test(lower x, lower y,
    /// upper x, upper y), which has to hold for every box that contains one for which it holds.
    template <class Test, class Visit>
    void VisitInOrder(Test&& test, Visit&& visit) const {
        if (!m_vecNodes.empty()) Pass(GetLevelCount() - 1, 0, test, visit);
    }

    /// Replaces the box of a thing, which has to be one of the row; those above it follow.
    void Replace(std::size_t item, const math::Bounds& box) {
        math::Bounds changed = box;
        for (int level = 0; level < GetLevelCount(); ++level, item /= kFan) {
            Node& node = NodeAt(level, item / kFan);
            node.Set(item % kFan, changed);
            changed = node.Whole();
        }
    }

private:
    // The boxes of a node, each coordinate in a row of its own, so that a compiler works on several at once.
    // A place without a box holds an empty one.
    struct Node {
        std::array<double, kFan> lowerX, lowerY, upperX, upperY;

        Node() {
            for (int i = 0; i < kFan; ++i) Set(i, {});
        }
        // A box round the whole plane would make SquaresFrom subtract infinities: it ends where a distance
        // from it can still be told.
        void Set(std::size_t i, const math::Bounds& box) {
            constexpr double kFarthest = std::numeric_limits<double>::max() / 2; // mm
            lowerX[i] = std::max(box.lower.x, -kFarthest), lowerY[i] = std::max(box.lower.y, -kFarthest);
            upperX[i] = std::min(box.upper.x, kFarthest), upperY[i] = std::min(box.upper.y, kFarthest);
        }
        math::Bounds BoxOf(std::size_t i) const { return {{lowerX[i], lowerY[i]}, {upperX[i], upperY[i]}}; }
        math::Bounds Whole() const {
            math::Bounds whole;
            for (int i = 0; i < kFan; ++i) whole.Add(BoxOf(i));
            return whole;
        }
        // Squares of the distances of p from the boxes; infinity for an empty one. A function that is called:
        // put into a loop it is no longer worked on several boxes at once.
        [[gnu::noinline]] std::array<double, kFan> SquaresFrom(const math::DPOINT2& p) const {
            std::array<double, kFan> squares;
            for (int i = 0; i < kFan; ++i) {
                const double left = lowerX[i] - p.x, right = p.x - upperX[i];
                const double below = lowerY[i] - p.y, above = p.y - upperY[i];
                const double x = left > right ? left : right, y = below > above ? below : above;
                // twice what p is outside, by sums, from which a compiler makes no branches
                const double outX = x + std::abs(x), outY = y + std::abs(y);
                squares[i] = (outX * outX + outY * outY) * 0.25;
            }
            return squares;
        }
    };

    Node& NodeAt(int level, std::size_t i) { return m_vecNodes[m_vecLevelStarts[level] + i]; }
    const Node& NodeAt(int level, std::size_t i) const { return m_vecNodes[m_vecLevelStarts[level] + i]; }

    // A node on the way down: how far the children are that are left, infinitely far those that are done.
    struct Open {
        std::array<double, kFan> squares; // mm^2
        std::size_t node;
    };
    // Eight to this power is more than there can be things.
    static constexpr int kMostLevels = 11;

    template <class PassOver, class Visit>
    void Descend(const math::DPOINT2& p, const double& bound, PassOver& passOver, Visit& visit) const {
        std::array<Open, kMostLevels> open;
        const int top = GetLevelCount() - 1;
        int level = top;
        open[top] = {NodeAt(top, 0).SquaresFrom(p), 0};
        while (level <= top) {
            auto& [squares, node] = open[level];
            const double least = Least(squares);
            if (!(least < bound)) {
                ++level;
                continue;
            }
            int nearest = 0;
            for (int k = 1; k < kFan; ++k) nearest = squares[k] <= least ? k : nearest; // no branch either
            squares[nearest] = std::numeric_limits<double>::infinity();
            const std::size_t child = node * kFan + nearest;
            if (passOver(level, static_cast<int>(child))) continue;
            if (level == 0)
                visit(static_cast<int>(child));
            else
                --level, open[level] = {NodeAt(level, child).SquaresFrom(p), child};
        }
    }

    template <class Test, class Visit>
    void Pass(int level, std::size_t i, Test& test, Visit& visit) const {
        const Node& node = NodeAt(level, i);
        for (std::size_t k = 0; k < kFan; ++k) {
            const bool isEmpty = !(node.lowerX[k] <= node.upperX[k]);
            if (isEmpty || !test(node.lowerX[k], node.lowerY[k], node.upperX[k], node.upperY[k])) continue;
            if (level > 0)
                Pass(level - 1, i * kFan + k, test, visit);
            else
                visit(static_cast<int>(i * kFan + k));
        }
    }

    std::vector<Node> m_vecNodes; // level by level, the lowest first
    std::vector<std::size_t> m_vecLevelStarts;
};

} // namespace qev
