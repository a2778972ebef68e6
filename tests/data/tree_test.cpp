#include "support/support.h"

namespace {

std::vector<const CCadObject*> Leaves(const CCadObject* root) {
    std::vector<const CCadObject*> leaves;
    TreeWalk walk(root, TreeWalk::AllMembers);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf) leaves.push_back(walk.Object());
    return leaves;
}

TEST(TreeWalk, VisitsInDrawingOrderAndPassesOverCycles) {
    CCadGroup root;
    auto *a = new CCadDot({1, 1}), *b = new CCadDot({2, 2}), *c = new CCadDot({3, 3}),
         *d = new CCadDot({4, 4});
    auto* inner = new CCadGroup;
    Fill(*inner, {b, TextOf(c)});
    Fill(root, {a, inner, d});
    inner->GetObjectsList().push_front(&root);
    inner->GetObjectsList().push_front(nullptr);
    inner->GetObjectsList().push_back(inner);
    EXPECT_EQ(Leaves(&root), (std::vector<const CCadObject*>{a, b, c, d}));
    const std::unique_ptr<CCadObject> clone(root.Clone(true));
    EXPECT_TRUE(root.GetBoundRect().width == 3 && clone->GetBoundRect().width == 3);
    inner->GetObjectsList().pop_back(); // deleting the rest is the group's own business
}

// Deep nesting is built, walked, measured, cloned and destroyed without recursion, closed to a cycle or not.
TEST(TreeWalk, ManyLevels) {
    auto root = std::make_unique<CCadGroup>();
    CCadGroup* deepest = root.get();
    for (int i = 0; i < 100'000; ++i) deepest = AddGroup(*deepest);
    deepest->PushBack(new CCadDot({7, 8}));
    deepest->PushBack(root.get());
    EXPECT_TRUE(Leaves(root.get()).size() == 1 && Hit(root.get(), {7, 8}, 1));
    const std::unique_ptr<CCadObject> clone(root->Clone(false));
    EXPECT_TRUE(root->GetBoundRect().x == 7 && clone->GetBoundRect().y == 8);
}

} // namespace
