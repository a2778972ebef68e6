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

// a, (b, text of c), d, where the inner group holds null, the root, itself and the text again, too. All are
// destroyed once.
TEST(TreeWalk, VisitsInDrawingOrderAndPassesOverCycles) {
    using List = std::vector<const CCadObject*>;
    CCadGroup root;
    auto *a = new CCadDot({1, 1}), *b = new CCadDot({2, 2}), *c = new CCadDot({3, 3}),
         *d = new CCadDot({4, 4});
    auto* inner = new CCadGroup;
    CCadText* text = TextOf(c);
    inner->GetObjectsList() = {nullptr, &root, b, text, inner, text};
    Fill(root, {a, inner, d});
    EXPECT_EQ(Leaves(&root, TreeWalk::AllMembers), (List{a, b, c, c, d}));
    EXPECT_EQ(Leaves(&root, TreeWalk::PickedMembers), (List{a, b, text, text, d}))
        << "a text is picked whole";
    const std::unique_ptr<CCadObject> clone(root.Clone(true));
    EXPECT_EQ(clone->GetBoundRect().width, 3);
}

} // namespace
