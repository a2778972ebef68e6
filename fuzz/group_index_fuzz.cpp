// A drawing that is changed and picked in, over an index and without one: the same objects at the same
// places, and none that is nearer.
#include <vector>

#include "input.h"

namespace {

using namespace qev;
using namespace fuzz;

// Nested groups and texts, with objects that lie on each other.
struct Drawing : CCadGroup {
    explicit Drawing(Input& in) {
        CCadGroup* into = this;
        for (int i = in.Int(0, 40); i > 0; --i) {
            leaves.push_back(in.Object().release());
            into->PushBack(leaves.back());
            const int next = in.Int(0, 7);
            if (next == 0) into->PushBack(into->GetBack()->Clone(true));
            if (next == 1) into->PushBack(new CCadRelationGroup);
            if (next > 3) continue;
            auto* group = new CCadGroup;
            (next == 2 ? this : into)->PushBack(group);
            into = group;
        }
    }
    std::vector<CCadObject*> leaves;
};

template <class Source>
PosInfo Picked(const Source& source, const DPOINT2& p, double tolerance, bool closedOnly) {
    PosInfo info;
    CPosCalculator calculator;
    calculator.Init(source, &p, tolerance);
    calculator.CalculatePosition(&info, closedOnly);
    return info;
}

// Whether two boxes meet, the one made larger by so much on each side.
bool Meet(const CadRect& a, const CadRect& b, double larger) {
    return a.x <= b.x + b.width + larger && a.x + a.width >= b.x - larger && a.y <= b.y + b.height + larger
           && a.y + a.height >= b.y - larger;
}

void ExpectCollected(const CGroupIndex& index, Drawing& drawing, const CadRect& box) {
    constexpr double kRounding = 1e-9; // mm, of a corner from the other one and the size
    std::vector<CCadObject*> found;
    index.Collect(box, found);
    auto next = found.begin();
    TreeWalk walk(&drawing, TreeWalk::PickedMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next()) {
        if (step != TreeWalk::Step::kLeaf) continue;
        const bool isFound = next != found.end() && *next == walk.Object();
        Expect(Meet(walk.Object()->GetBoundRect(), box, isFound ? kRounding : -kRounding) == isFound,
               "the objects whose boxes meet a box");
        next += isFound;
    }
    Expect(next == found.end(), "in drawing order");
}

void ExpectSame(const CGroupIndex& index, Drawing& drawing, Input& in) {
    const DPOINT2 p = in.Point();
    const double tolerance = in.Coin() ? in.Size() : std::numeric_limits<double>::infinity();
    const bool closedOnly = in.Coin();
    DPOINT2 hit, expected, nearest;
    const CCadObject* object = Hit(&drawing, p, tolerance, closedOnly, &expected);
    Expect(index.Hit(p, tolerance, &hit, closedOnly) == object, "an index hits what the group does");
    Expect(!object || (hit.x == expected.x && hit.y == expected.y), "at the same point");
    const PosInfo info = Picked(index, p, tolerance, closedOnly),
                  wanted = Picked(&drawing, p, tolerance, closedOnly);
    Expect(info.pObject == wanted.pObject && info.nIndex == wanted.nIndex, "it picks what the group does");
    Expect(info.dRatio == wanted.dRatio || in.IsHostile(), "at the same position");
    if (in.IsHostile()) return;
    const double best = object ? math::D2GetDistance(p, expected) : tolerance;
    for (const CCadObject* leaf : drawing.leaves)
        Expect((closedOnly && !leaf->IsClose()) || GetMinDistance(leaf, p, nearest) >= best - 1e-9,
               "no outline is nearer than the one that is hit");
    ExpectCollected(index, drawing, {p.x, p.y, in.Size(), 30});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    Drawing drawing(in);
    CGroupIndex index(&drawing);
    for (int round = 0; round < 2; ++round) {
        ExpectSame(index, drawing, in);
        drawing.PushBack(in.Object().release());
        drawing.leaves.push_back(drawing.GetBack());
        index.Build();
        CCadObject* leaf = drawing.leaves[in.Int(0, static_cast<int>(drawing.leaves.size()) - 1)];
        if (auto* polyline = dynamic_cast<CCadPolyline*>(leaf)) in.AddSegment(*polyline);
        index.Update(leaf);
    }
    return 0;
}
