#include "letters.h"

using namespace qev;
using namespace test;

using List = std::list<CCadObject*>;

// A mask without the bits of a plain group, which are those of 0x1100 too, takes the leaves out of the
// groups.
TEST(Filters, RemovalByMask) {
    for (const auto& [selection, mask, expected] :
         Table<const char*, int, const char*>{{"co(d)t", 0x1200, "cot"},
                                              {"co(d)t", 0x0400, "odt"},
                                              {"co(dt)", 0x0200, "cd"},
                                              {"co(d)", 0, "cod"},
                                              {"", 0x1200, ""}}) {
        const Letters s(selection);
        List kept;
        RemoveCadByType(s.List(), &kept, mask);
        EXPECT_EQ(Letters::Of(kept), expected) << selection << " without " << mask;
    }
}

TEST(Filters, RemovalByKinds) {
    for (const auto& [selection, kinds, expected] : Table<const char*, std::list<cad_t>, const char*>{
             {"co(dt)", {kCadDot, kCadLine}, "ct"}, {"co(dt)", {kCadGroup}, "co"}, {"(c(o))", {}, "co"}}) {
        const Letters s(selection);
        List kept;
        RemoveCadByType(s.List(), &kept, kinds);
        EXPECT_EQ(Letters::Of(kept), expected) << selection;
    }
}

TEST(Filters, ClosedObjectsAndLeaves) {
    const Letters s("co(dt(x)c)o");
    List closed, leaves;
    CollectCloseCad(s.List(), &closed);
    EXPECT_EQ(Letters::Of(closed), "ccc") << "one in the text's outline";
    CollectLeafNode(s.List(), &leaves);
    EXPECT_EQ(Letters::Of(leaves), "coco") << "no dot, no text, no kind 0x1300";
    CollectCloseCad(s.List(), nullptr);
    CollectLeafNode(nullptr, &leaves);
    EXPECT_EQ(leaves.size(), 4u);
}

TEST(Filters, AllObjectsIntoAGroup) {
    Letters s("co(dt(x)c)o");
    CCadGroup target;
    CollectObject(nullptr, &target);
    CollectObject(&s, nullptr);
    EXPECT_EQ(target.GetNumOfChild(), 0);
    CollectObject(&s, &target);
    EXPECT_EQ(Letters::Of(target.GetObjectsList()), "codtxco");
    CollectObject(&target, &target);
    EXPECT_EQ(Letters::Of(target.GetObjectsList()), "codtxcocodtxco") << "into itself it comes once more";
    target.PickOffAll();
}
