#include <map>

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

// Groups that hold one another at random.
struct Web {
    Web(Random& random, int size, bool holdAll) : groups(size), reach(size, std::vector<bool>(size)) {
        for (int i = 0; i < size; ++i)
            for (int k = 0; k < size; ++k)
                if (holdAll || random.Int(0, size) < 2) {
                    groups[i].GetRelationPaths().push_back(&groups[k]);
                    links.push_back({i, k});
                    reach[i][k] = true;
                }
        for (int via = 0; via < size; ++via)
            for (int i = 0; i < size; ++i)
                for (int k = 0; k < size; ++k)
                    if (reach[i][via] && reach[via][k]) reach[i][k] = true;
    }
    bool AreInOneRound(int i, int k) const { return i == k || (reach[i][k] && reach[k][i]); }
    // How often a walk from group 0 enters another: once for each way into its round from outside.
    int Entries(int group) const {
        int entries = AreInOneRound(group, 0);
        for (const auto& [from, to] : links)
            if (AreInOneRound(group, to) && !AreInOneRound(group, from) && (from == 0 || reach[0][from]))
                entries += Entries(from);
        return entries;
    }

    std::vector<CCadRelationGroup> groups;
    std::vector<std::vector<bool>> reach;
    std::vector<std::array<int, 2>> links;
};

TEST(TreeWalk, WalksContainersThatHoldOneAnotherOnceForEachWayIn) {
    for (Random random; random.Rounds(300);) {
        const bool holdAll = random.Int(0, 99) == 0;
        const Web web(random, holdAll ? 60 : random.Int(2, 9), holdAll);
        std::map<const CCadObject*, int> entries;
        TreeWalk walk(&web.groups[0], TreeWalk::AllMembers);
        for (auto step = walk.Next(); step != TreeWalk::Step::kEnd; step = walk.Next())
            entries[walk.Object()] += step == TreeWalk::Step::kEnter;
        for (std::size_t i = 0; i < web.groups.size(); ++i)
            EXPECT_EQ(entries[&web.groups[i]], web.Entries(static_cast<int>(i))) << i;
    }
}

} // namespace
