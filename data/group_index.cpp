// The leaves of the group are sorted along a Hilbert curve through the middles of their boxes, so that
// neighbours in the row are neighbours in the plane, and a tree of boxes is put over the row. That takes one
// sort and one pass, and fills every node. A pick goes down to the nearest boxes first; the best distance so
// far, widened by what counts as equally far, is the bound for the rest. Of equally near objects the one
// drawn last is the answer, which is the one with the greatest number in drawing order: so each leaf keeps
// that number, and the order of the search does not matter.
//
// Rejected: inserting one by one, as trees do that follow changes, since its boxes overlap more and cost
// every pick; a grid, which is faster where objects are small and evenly spread, and slower elsewhere.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

#include <qevdata/group.h>
#include <qevdata/group_index.h>
#include <qevdata/tree_walk.h>

#include "bounds_of.h"
#include "box_tree.h"
#include "hilbert_place.h"
#include "picked.h"

namespace qev {
namespace {

using math::Bounds;
using math::DPOINT2;

// The box of an outline, widened by the rounding of its upper corner, which was summed from the lower one and
// a size: of one that reaches to -1e100 mm that sum is short by more than a drawing.
Bounds SearchBoxOf(const CCadObject& leaf) {
    constexpr double kRounding = std::numeric_limits<double>::epsilon(); // that of the size and of the sum
    const auto widen = [](double lower, double& upper) {
        const double sum = upper + kRounding * (std::abs(lower) + std::abs(upper));
        if (sum > upper) upper = sum; // infinite ones stay as they are
    };
    Bounds box = BoxOf(leaf);
    widen(box.lower.x, box.upper.x);
    widen(box.lower.y, box.upper.y);
    return box;
}

} // namespace

// The leaves in the order of the tree.
class CGroupIndex::Leaves {
public:
    explicit Leaves(const CCadGroup* group) {
        std::vector<Leaf> leaves;
        Bounds all;
        TreeWalk walk(group, TreeWalk::PickedMembers);
        for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next()) {
            if (step != TreeWalk::Step::kLeaf) continue;
            leaves.push_back(
                {SearchBoxOf(*walk.Object()), walk.Object(), static_cast<int>(leaves.size()), 0});
            all.Add(leaves.back().box);
        }
        for (Leaf& leaf : leaves) leaf.place = HilbertPlaceOf(leaf.box, all);
        std::sort(leaves.begin(), leaves.end(),
                  [](const Leaf& a, const Leaf& b) { return a.place < b.place; });
        std::vector<Bounds> boxes;
        boxes.reserve(leaves.size());
        m_vecObjects.reserve(leaves.size());
        for (const Leaf& leaf : leaves) {
            boxes.push_back(leaf.box);
            m_vecObjects.push_back({leaf.object, leaf.number});
        }
        m_tree = BoxTree(boxes);
    }

    int GetCount() const { return static_cast<int>(m_vecObjects.size()); }

    void Update(const CCadObject* object) {
        if (m_vecPlaces.empty()) m_vecPlaces = PlacesByAddress();
        const auto [first, last] =
            std::equal_range(m_vecPlaces.begin(), m_vecPlaces.end(), Place{object, 0}, IsBefore);
        for (auto place = first; place != last; ++place) m_tree.Replace(place->second, SearchBoxOf(*object));
    }

    Picked Pick(const DPOINT2& p, double tolerance, bool closedOnly) const {
        Picked hit;
        int number = -1; // of `hit` in drawing order
        bool hasTies = false;
        double bound = Widened(tolerance);
        VisitNearestFirst(p, bound, [&](int i) {
            const Picked leaf = Measure(*m_vecObjects[i].object, p, closedOnly);
            if (!leaf.object || !(leaf.distance <= tolerance)) return;
            const auto [least, other] = std::minmax(leaf.distance, hit.distance);
            hasTies = hasTies || (least < other && IsTie(least, other));
            const bool isLater = leaf.distance == hit.distance && m_vecObjects[i].number > number;
            if (!isLater && !(leaf.distance < hit.distance)) return;
            hit = leaf;
            number = m_vecObjects[i].number;
            bound = Widened(hit.distance);
        });
        return hasTies ? LastOfTies(p, hit.distance, closedOnly) : hit;
    }

    void Collect(const CadRect& box, std::vector<CCadObject*>& objects) const {
        const double right = box.x + box.width, top = box.y + box.height;
        std::vector<Numbered> found;
        m_tree.VisitInOrder(
            [&](double lowerX, double lowerY, double upperX, double upperY) {
                return lowerX <= right && upperX >= box.x && lowerY <= top && upperY >= box.y;
            },
            [&](int i) { found.push_back(m_vecObjects[i]); });
        std::sort(found.begin(), found.end(),
                  [](const Numbered& a, const Numbered& b) { return a.number < b.number; });
        for (const Numbered& leaf : found) objects.push_back(leaf.object);
    }

private:
    struct Leaf {
        Bounds box;
        CCadObject* object;
        int number;
        std::uint32_t place;
    };
    struct Numbered {
        CCadObject* object;
        int number; // in drawing order
    };
    using Place = std::pair<const CCadObject*, std::size_t>;

    static bool IsBefore(const Place& a, const Place& b) { return std::less<>()(a.first, b.first); }
    std::vector<Place> PlacesByAddress() const {
        std::vector<Place> places;
        places.reserve(m_vecObjects.size());
        for (std::size_t i = 0; i < m_vecObjects.size(); ++i) places.emplace_back(m_vecObjects[i].object, i);
        std::sort(places.begin(), places.end(), IsBefore);
        return places;
    }

    template <class Visit>
    void VisitNearestFirst(const DPOINT2& p, const double& bound, Visit&& visit) const {
        m_tree.VisitNearestFirst(
            p, bound, [](int, int) { return false; }, visit);
    }

    // Distances that differ by less than a tie do not make one order: two that tie with a third need not tie
    // with each other. So the least distance has to be known before the last of those that tie with it.
    Picked LastOfTies(const DPOINT2& p, double least, bool closedOnly) const {
        Picked hit;
        int number = -1;
        VisitNearestFirst(p, Widened(least), [&](int i) {
            const Picked leaf = Measure(*m_vecObjects[i].object, p, closedOnly);
            if (!leaf.object || !IsTie(least, leaf.distance) || m_vecObjects[i].number < number) return;
            hit = leaf;
            number = m_vecObjects[i].number;
        });
        return hit;
    }

    // The square up to which boxes are looked into: beyond ties, and a little for the rounding of boxes.
    static double Widened(double distance) {
        constexpr double kRounding = 1e-12;
        const double reach = (distance + 2 * kTie) * (1 + kRounding);
        return reach >= 0 ? reach * reach : 0;
    }

    std::vector<Numbered> m_vecObjects;
    BoxTree m_tree;
    std::vector<Place> m_vecPlaces; // sorted, from the first Update on
};

CGroupIndex::CGroupIndex(const CCadGroup* group)
    : m_pGroup(group), m_pLeaves(std::make_unique<Leaves>(group)) {}

CGroupIndex::~CGroupIndex() = default;

void CGroupIndex::Build() {
    m_pLeaves = std::make_unique<Leaves>(m_pGroup);
}

void CGroupIndex::Update(const CCadObject* object) {
    if (object) m_pLeaves->Update(object);
}

int CGroupIndex::GetCount() const {
    return m_pLeaves->GetCount();
}

Picked Pick(const CGroupIndex& index, const DPOINT2& p, double tolerance, bool closedOnly) {
    return index.m_pLeaves->Pick(p, tolerance, closedOnly);
}

CCadObject* CGroupIndex::Hit(const DPOINT2& p, double dTolerance, DPOINT2* hitPoint, bool bClosedOnly) const {
    const Picked hit = Pick(*this, p, dTolerance, bClosedOnly);
    if (hit.object && hitPoint) *hitPoint = hit.nearest;
    return hit.object;
}

void CGroupIndex::Collect(const CadRect& box, std::vector<CCadObject*>& objects) const {
    if (box.width >= 0 && box.height >= 0) m_pLeaves->Collect(box, objects);
}

} // namespace qev
