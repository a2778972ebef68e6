#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

struct Other : CCadObject {
    cad_t GetType() const override { return 0x1300; }
};

CCadObject* Make(char letter) {
    CCadObject* const object = letter == 't'   ? TextOf(Make('c'))
                               : letter == 'x' ? new Other
                               : letter == 'c' ? Object("circle 0 0 1").release()
                               : letter == 'o' ? Object("line 0 0 2 3").release()
                                               : Object("dot 0 0").release();
    if (letter == 't') static_cast<CCadText*>(object)->GetTextGroup()->PushBack(Make('o'));
    object->SetKey("letter", std::string(1, letter).c_str());
    return object;
}

// A group whose members are the letters of a text: c a closed contour, o an open one, d a dot, t a text with
// the outlines of c and o, x an object of the kind 0x1300, and brackets a group round letters.
struct Letters : CCadGroup {
    explicit Letters(const std::string& letters) {
        std::vector<CCadGroup*> open{this};
        for (const char letter : letters) {
            if (letter == '(') open.push_back(AddGroup(*open.back()));
            if (letter == ')') open.pop_back();
            if (letter >= 'c') open.back()->PushBack(Make(letter));
        }
    }
    const std::list<CCadObject*>* List() const { return &GetObjectsList(); }
};

std::string Of(const std::list<CCadObject*>& list) {
    std::string letters;
    for (const CCadObject* object : list) letters += object->GetKey("letter").GetString();
    return letters;
}

// What holds for all members, as the letters u(nclosed), c(losed), d(ots) and t(exts).
TEST(Selection, AllMembers) {
    for (const auto& [letters, holding, texts, closedness] : Table<const char*, const char*, int, int>{
             {"", "ucd", 0, -2},
             {"(())((o)dx)", "u", 0, 0},
             {"()c", "c", 0, 1},
             {"d(d)", "ud", 0, 0},
             {"(tt)t", "ct", 3, 1},
             {"()t", "c", 1, 1},
             {"c()", "c", 0, -1},
             {"(co)c", "", 0, -1},
             {"ot", "", 1, -1},
             {"(t)o", "c", 1, -1}}) { // what follows a text is not looked at
        SCOPED_TRACE(letters);
        const Letters s(letters);
        std::string held = IsAllUnClosed(s.List()) ? "u" : "";
        if (IsAllClosed(s.List())) held += 'c';
        if (IsAllDot(s.List())) held += 'd';
        if (IsAllText(s.List())) held += 't';
        EXPECT_EQ(held, holding);
        EXPECT_EQ(GetTextCount(s.List()), texts);
        EXPECT_EQ(GetTextCount(&s), texts);
        EXPECT_EQ(IsClose(&s), closedness);
    }
    for (const auto holds : {IsAllUnClosed, IsAllClosed, IsAllDot, IsAllText}) EXPECT_FALSE(holds(nullptr));
}

TEST(Selection, CornersOfTheBox) {
    const Letters s("oc"); // boxes (0, 0)-(2, 3) and (-1, -1)-(1, 1)
    for (const auto& [key, corner] : Table<const char*, DPOINT2>{
             {"TL", {-1, 3}}, {"TR", {2, 3}}, {"BL", {-1, -1}}, {"BR", {2, -1}}, {"TRx", {-1, -1}}})
        EXPECT_POINT_NEAR(GetCornerPoint(s.List(), key), corner, 0) << key;
}

// A mask without the bits of a plain group, which are those of 0x1100 too, takes the leaves out of the
// groups.
TEST(Selection, RemovalByMask) {
    for (const auto& [selection, mask, expected] : Table<const char*, int, const char*>{
             {"co(d)t", 0x1200, "cot"}, {"co(d)t", 0x0400, "odt"}, {"co(d)", 0, "cod"}}) {
        const Letters s(selection);
        std::list<CCadObject*> kept;
        RemoveCadByType(s.List(), &kept, mask);
        EXPECT_EQ(Of(kept), expected) << selection << " without " << mask;
    }
}

TEST(Selection, Collections) {
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

TEST(CoEdge, MarksAreExact) {
    for (const auto& [isMarked, object, key, value, expected] :
         Table<bool (*)(const CCadObject*), const char*, const char*, const char*, bool>{
             {IsCoEdgeGroup, "group", "GroupType", "1", true},
             {IsCoEdgeGroup, "line 0 0 1 0", "GroupType", "1", false},
             {IsCoEdgeObject, "line 0 0 1 0", "CoEdge", "true", true},
             {IsCoEdgeObject, "line 0 0 1 0", "CoEdge", "True", false},
             {IsCoEdgeObject_Tube, "line 0 0 1 0", "IsCoedgeEdge", "1", true},
             {IsCoEdgeObject_Tube, "line 0 0 1 0", "TubeTrucateCoedge", "1", true}}) {
        const auto marked = Object(object);
        marked->SetKey(key, value);
        EXPECT_EQ(isMarked(marked.get()), expected) << object << ": " << key << " = " << value;
        EXPECT_FALSE(isMarked(nullptr));
    }
}

} // namespace
