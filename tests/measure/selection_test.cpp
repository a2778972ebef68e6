#include "support/support.h"

namespace {

// A selection from letters: c closed contour, o open contour, d dot, t text, x kind 0x1300, ( ) a group.
struct Selection : CCadGroup {
    explicit Selection(const std::string& letters) {
        std::vector<CCadGroup*> open{this};
        for (const char letter : letters) {
            if (letter == '(') open.push_back(AddGroup(*open.back()));
            if (letter == ')') open.pop_back();
            if (letter >= 'c') open.back()->PushBack(Make(letter));
        }
    }
    const std::list<CCadObject*>* List() const { return &GetObjectsList(); }
    // The letters of what a function has collected.
    static std::string Letters(const std::list<CCadObject*>& list) {
        std::string letters;
        for (const CCadObject* object : list) letters += object->GetKey("letter").GetString();
        return letters;
    }
    static CCadObject* Make(char letter) {
        struct Other : CCadObject {
            cad_t GetType() const override { return 0x1300; }
        };
        const char* const text = letter == 'c' ? "circle 0 0 1" : letter == 'o' ? "line 0 0 2 3" : "dot 0 0";
        CCadObject* const object = letter == 't'   ? static_cast<CCadObject*>(TextOf(Make('c')))
                                   : letter == 'x' ? new Other
                                                   : Object(text).release();
        if (letter == 't') static_cast<CCadText*>(object)->GetTextGroup()->PushBack(Make('o'));
        object->SetKey("letter", std::string(1, letter).c_str());
        return object;
    }
};

// Members, what IsClose says, then whether all are open, closed, dots, texts, and how many texts there are.
TEST(Selection, ClosednessAndSorts) {
    for (const auto& [row, members, close, unclosed, closed, dots, texts, textCount] :
         Rows<std::string, int, bool, bool, bool, bool, int>(
             "'' -2 1 1 1 0 0; () -2 1 1 1 0 0; o 0 1 0 0 0 0; c 1 0 1 0 0 0; t 1 0 1 0 1 1; co -1 0 0 0 0 0;"
             "()c 1 0 1 0 0 0; c() -1 0 1 0 0 0; (co) -1 0 0 0 0 0; (co)c -1 0 0 0 0 0; (c)(c) 1 0 1 0 0 0;"
             "(())((o)o) 0 1 0 0 0 0; ct(c) 1 0 1 0 0 1; (co)(co) -1 0 0 0 0 0; ot -1 0 0 0 0 1;"
             "to -1 0 1 0 0 1; (t)o -1 0 1 0 0 1; c(c) 1 0 1 0 0 0; d(d) 0 1 0 1 0 0; t(t) 1 0 1 0 1 2;"
             "t() -1 0 1 0 0 1; (tt)t 1 0 1 0 1 3")) {
        SCOPED_TRACE(row);
        const Selection s(members);
        EXPECT_EQ(IsClose(&s), close);
        EXPECT_TRUE(IsAllUnClosed(s.List()) == unclosed && IsAllClosed(s.List()) == closed);
        EXPECT_TRUE(IsAllDot(s.List()) == dots && IsAllText(s.List()) == texts);
        EXPECT_TRUE(GetTextCount(s.List()) == textCount && GetTextCount(&s) == textCount);
    }
    EXPECT_FALSE(IsAllUnClosed(nullptr) || IsAllClosed(nullptr) || IsAllDot(nullptr) || IsAllText(nullptr));
    const CCadObject* const nothing = nullptr;
    EXPECT_EQ(IsClose(nothing) + GetTextCount(nothing), 0);
    EXPECT_EQ(IsClose(Object("relation").get()), 0) << "only plain groups ask their members";
}

// Members, what is removed (a mask, or a list of kinds) and what is kept.
TEST(Selection, Filters) {
    for (const auto& [row, members, mask, kinds, kept] :
         Rows<std::string, int, std::vector<int>, std::string>(
             "co(d)t 0x1200 none cot; co(d)t 0x0400 none odt; co(dt) 0x0200 none cd; co(d) 0 none cod;"
             "'' 0x1200 none ''; co(dt) -1 0x1100,0x1200 ct; co(dt) -1 0x1900 co; (c(o)) -1 none co")) {
        const Selection s(members);
        std::list<CCadObject*> out;
        if (mask >= 0) RemoveCadByType(s.List(), &out, mask);
        if (mask < 0) RemoveCadByType(s.List(), &out, std::list<cad_t>(kinds.begin(), kinds.end()));
        EXPECT_EQ(Selection::Letters(out), kept) << row;
    }
}

TEST(Selection, Collectors) {
    Selection s("co(dt(x)c)o");
    std::list<CCadObject*> closed, leaves;
    CollectCloseCad(s.List(), &closed);
    EXPECT_EQ(Selection::Letters(closed), "ccc") << "one in the text's outline";
    CollectLeafNode(s.List(), &leaves);
    EXPECT_EQ(Selection::Letters(leaves), "coco");
    CollectCloseCad(s.List(), nullptr);
    CollectLeafNode(nullptr, &leaves);
    CollectObject(nullptr, &s);
    CollectObject(&s, nullptr);
    CCadGroup target;
    CollectObject(&s, &target);
    EXPECT_EQ(Selection::Letters(target.GetObjectsList()), "codtxco");
    CollectObject(&target, &target); // into itself: what it held comes once more, and the walk ends
    EXPECT_EQ(target.GetNumOfChild(), 14);
    target.PickOffAll();
}

TEST(Selection, Corners) {
    const Selection s("oc"); // boxes (0, 0)-(2, 3) and (-1, -1)-(1, 1)
    for (const auto& [row, key, corner] :
         Rows<std::string, DPOINT2>("TL -1,3; TR 2,3; BL -1,-1; BR 2,-1; tl -1,-1; TRx -1,-1"))
        EXPECT_POINT_NEAR(GetCornerPoint(s.List(), key.c_str()), corner, 0) << row;
    EXPECT_POINT_NEAR(GetCornerPoint(s.List(), nullptr), (DPOINT2{-1, -1}), 0);
    EXPECT_POINT_NEAR(GetCornerPoint(nullptr, "TR"), (DPOINT2{0, 0}), 0);
}

TEST(CoEdge, MarksAreExact) {
    CCadGroup group;
    CCadLine line({0, 0}, {1, 0});
    EXPECT_FALSE(IsCoEdgeGroup(&group) || IsCoEdgeObject(&line) || IsCoEdgeObject_Tube(&line));
    EXPECT_FALSE(IsCoEdgeGroup(nullptr) || IsCoEdgeObject(nullptr) || IsCoEdgeObject_Tube(nullptr));
    group.SetKey("GroupType", "1");
    line.SetKey("GroupType", "1");
    EXPECT_TRUE(IsCoEdgeGroup(&group) && !IsCoEdgeGroup(&line));
    for (const auto& [row, key, value, coEdge, tube] : Rows<std::string, std::string, bool, bool>(
             "CoEdge 1 0 0; CoEdge true 1 0; CoEdge True 0 0; IsCoedgeEdge 1 0 1; TubeTrucateCoedge 1 0 1;"
             "TubeTruncateCoedge 1 0 0; IsCoedgeEdge true 0 0")) {
        CCadLine marked({0, 0}, {1, 0});
        marked.SetKey(key.c_str(), value.c_str());
        EXPECT_TRUE(IsCoEdgeObject(&marked) == coEdge && IsCoEdgeObject_Tube(&marked) == tube) << row;
    }
}

} // namespace
