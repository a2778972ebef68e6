#include "measure/letters.h"

using namespace qev;
using namespace test;

namespace {

std::string Of(const std::list<CCadObject*>& list) {
    std::string letters;
    for (const CCadObject* object : list) letters += object->GetKey("letter").GetString();
    return letters;
}

// A mask without the bits of a plain group, which are those of 0x1100 too, takes the leaves out of the
// groups.
TEST(Filters, RemovalByMask) {
    for (const auto& [selection, mask, expected] : Table<const char*, int, const char*>{
             {"co(d)t", 0x1200, "cot"}, {"co(d)t", 0x0400, "odt"}, {"co(d)", 0, "cod"}}) {
        const Letters s(selection);
        std::list<CCadObject*> kept;
        RemoveCadByType(s.List(), &kept, mask);
        EXPECT_EQ(Of(kept), expected) << selection << " without " << mask;
    }
}

TEST(Filters, Collections) {
    Letters s("co(dt(x)c)o");
    std::list<CCadObject*> closed, leaves, lines, ungrouped;
    CollectCloseCad(s.List(), &closed);
    EXPECT_EQ(Of(closed), "ccc") << "one in the text's outline";
    CollectLeafNode(s.List(), &leaves);
    EXPECT_EQ(Of(leaves), "coco") << "no dot, no text, no kind 0x1300";
    RemoveCadByType(s.List(), &lines, {kCadCircle, kCadText});
    EXPECT_EQ(Of(lines), "odxo");
    RemoveCadByType(s.List(), &ungrouped, std::list<cad_t>{kCadGroup});
    EXPECT_EQ(Of(ungrouped), "coo");
    CCadGroup target;
    CollectObject(&s, &target);
    CollectObject(&target, &target);
    EXPECT_EQ(Of(target.GetObjectsList()), "codtxcocodtxco") << "into itself it comes once more";
    target.PickOffAll();
}

} // namespace
