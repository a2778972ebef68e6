#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

std::vector<const CCadObject*> Leaves(const CCadObject* root, TreeWalk::MembersOf membersOf) {
    std::vector<const CCadObject*> leaves;
    TreeWalk walk(root, membersOf);
    for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
        if (step == TreeWalk::Step::kLeaf) leaves.push_back(walk.Object());
    return leaves;
}

// a, (b, text of c), d, where the inner group holds null, the root and itself, too.
TEST(TreeWalk, VisitsInDrawingOrderAndPassesOverCycles) {
    using List = std::vector<const CCadObject*>;
    CCadGroup root;
    auto *a = new CCadDot({1, 1}), *b = new CCadDot({2, 2}), *c = new CCadDot({3, 3}),
         *d = new CCadDot({4, 4});
    auto* inner = new CCadGroup;
    CCadText* text = TextOf(c);
    inner->GetObjectsList() = {nullptr, &root, b, text, inner};
    Fill(root, {a, inner, d});
    EXPECT_EQ(Leaves(&root, TreeWalk::AllMembers), (List{a, b, c, d}));
    EXPECT_EQ(Leaves(&root, TreeWalk::PickedMembers), (List{a, b, text, d})) << "a text is picked whole";
    EXPECT_EQ(root.GetBoundRect().width, 3);
    const std::unique_ptr<CCadObject> clone(root.Clone(true));
    EXPECT_EQ(clone->GetBoundRect().width, 3);
    inner->GetObjectsList().pop_back(); // deleting the rest is the group's own business
}

// Deep nesting, closed to a cycle, is built, walked, measured, cloned and destroyed without recursion.
TEST(TreeWalk, ManyLevels) {
    auto root = std::make_unique<CCadGroup>();
    CCadGroup* deepest = root.get();
    for (int i = 0; i < 100'000; ++i) deepest = AddGroup(*deepest);
    deepest->PushBack(new CCadDot({7, 8}));
    deepest->PushBack(root.get());
    EXPECT_EQ(Leaves(root.get(), TreeWalk::AllMembers).size(), 1u);
    EXPECT_TRUE(Hit(root.get(), {7, 8}, 1));
    EXPECT_EQ(root->GetBoundRect().x, 7);
    const std::unique_ptr<CCadObject> clone(root->Clone(false));
    EXPECT_EQ(clone->GetBoundRect().y, 8);
}

} // namespace
