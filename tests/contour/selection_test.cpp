#include <climits>
#include <memory>
#include <string>
#include <vector>

#include <qev/contour.h>

#include <gtest/gtest.h>

#include "support/shapes.h"

namespace {

using namespace qev;

// A selection from letters: c closed contour, o open contour, d dot, t text, x kind 0x1300, ( ) a group.
class Selection {
public:
    explicit Selection(const std::string& letters) {
        std::vector<CCadGroup*> open{&m_root};
        for (const char letter : letters) {
            if (letter == '(')
                open.push_back(test::AddGroup(*open.back()));
            else if (letter == ')')
                open.pop_back();
            else
                open.back()->PushBack(Make(letter));
        }
    }
    const std::list<CCadObject*>* List() const { return &m_root.GetObjectsList(); }
    CCadGroup* Root() { return &m_root; }

    // The letters of what a function has collected.
    static std::string Letters(const std::list<CCadObject*>& list) {
        std::string letters;
        for (const CCadObject* object : list) letters += object->GetKey("letter").GetString();
        return letters;
    }

private:
    static CCadObject* Make(char letter) {
        struct Other : CCadObject {
            cad_t GetType() const override { return 0x1300; }
        };
        CCadObject* object = nullptr;
        if (letter == 'c') object = new CCadCircle({0, 0}, 1);
        if (letter == 'o') object = new CCadLine({0, 0}, {2, 3});
        if (letter == 'd') object = new CCadDot({0, 0});
        if (letter == 'x') object = new Other;
        if (letter == 't') {
            auto* text = new CCadText("text");
            for (const char outline : {'c', 'o'}) text->GetTextGroup()->PushBack(Make(outline));
            object = text;
        }
        object->SetKey("letter", std::string(1, letter).c_str());
        return object;
    }

    CCadGroup m_root;
};

TEST(Selection, Closedness) {
    const struct {
        const char* members;
        int closed;
    } cases[] = {{"", -2},      {"()", -2},        {"c", 1},     {"o", 0},        {"t", 1},
                 {"co", -1},    {"()c", 1},        {"c()", -1},  {"(co)", -1},    {"(co)c", -1},
                 {"(c)(c)", 1}, {"(())((o)o)", 0}, {"ct(c)", 1}, {"(co)(co)", -1}};
    for (const auto& c : cases) EXPECT_EQ(IsClose(Selection(c.members).Root()), c.closed) << c.members;
    EXPECT_EQ(IsClose(static_cast<const CCadObject*>(nullptr)), 0);
    const CCadRelationGroup relation;
    EXPECT_EQ(IsClose(&relation), 0) << "only plain groups ask their members";
}

TEST(Selection, AllOfOneSort) {
    const struct {
        const char* members;
        bool unclosed, closed, dots, texts;
        int textCount;
    } cases[] = {{"", true, true, true, false, 0},       {"()", true, true, true, false, 0},
                 {"o", true, false, false, false, 0},    {"ot", false, false, false, false, 1},
                 {"to", false, true, false, false, 1},   {"(t)o", false, true, false, false, 1},
                 {"c(c)", false, true, false, false, 0}, {"d(d)", true, false, true, false, 0},
                 {"t(t)", false, true, false, true, 2},  {"t()", false, true, false, false, 1},
                 {"(tt)t", false, true, false, true, 3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.members);
        Selection s(c.members);
        EXPECT_EQ(IsAllUnClosed(s.List()), c.unclosed);
        EXPECT_EQ(IsAllClosed(s.List()), c.closed);
        EXPECT_EQ(IsAllDot(s.List()), c.dots);
        EXPECT_EQ(IsAllText(s.List()), c.texts);
        EXPECT_EQ(GetTextCount(s.List()), c.textCount);
        EXPECT_EQ(GetTextCount(s.Root()), c.textCount);
    }
    EXPECT_FALSE(IsAllUnClosed(nullptr) || IsAllClosed(nullptr) || IsAllDot(nullptr) || IsAllText(nullptr));
    EXPECT_EQ(GetTextCount(static_cast<const CCadObject*>(nullptr)), 0);
}

TEST(Selection, Filters) {
    const struct {
        const char* members;
        int mask;
        const char* kept;
    } masks[] = {{"co(d)t", 0x1200, "cot"},
                 {"co(d)t", 0x0400, "odt"},
                 {"co(dt)", 0x0200, "cd"},
                 {"co(d)", 0, "cod"},
                 {"", 0x1200, ""}};
    for (const auto& c : masks) {
        std::list<CCadObject*> out;
        Selection s(c.members);
        RemoveCadByType(s.List(), &out, c.mask);
        EXPECT_EQ(Selection::Letters(out), c.kept) << c.members << " " << c.mask;
    }
    const struct {
        const char* members;
        std::list<cad_t> kinds;
        const char* kept;
    } lists[] = {{"co(dt)", {kCadDot, kCadLine}, "ct"}, {"co(dt)", {kCadGroup}, "co"}, {"(c(o))", {}, "co"}};
    for (const auto& c : lists) {
        std::list<CCadObject*> out;
        Selection s(c.members);
        RemoveCadByType(s.List(), &out, c.kinds);
        EXPECT_EQ(Selection::Letters(out), c.kept) << c.members;
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
    CollectObject(nullptr, s.Root());
    CollectObject(s.Root(), nullptr);
    CCadGroup target;
    CollectObject(s.Root(), &target);
    EXPECT_EQ(Selection::Letters(target.GetObjectsList()), "codtxco");
    CollectObject(&target, &target); // into itself: what it held comes once more, and the walk ends
    EXPECT_EQ(target.GetNumOfChild(), 14);
    target.PickOffAll();
}

TEST(Selection, Corners) {
    Selection s("oc"); // boxes (0, 0)-(2, 3) and (-1, -1)-(1, 1)
    const struct {
        const char* key;
        math::DPOINT2 corner;
    } cases[] = {{"TL", {-1, 3}},  {"TR", {2, 3}},      {"BL", {-1, -1}}, {"BR", {2, -1}},
                 {"tl", {-1, -1}}, {nullptr, {-1, -1}}, {"TRx", {-1, -1}}};
    for (const auto& c : cases) EXPECT_POINT_NEAR(GetCornerPoint(s.List(), c.key), c.corner, 0);
    EXPECT_POINT_NEAR(GetCornerPoint(nullptr, "TR"), (math::DPOINT2{0, 0}), 0);
}

TEST(CoEdge, MarksAreExact) {
    CCadGroup group;
    CCadLine line({0, 0}, {1, 0});
    EXPECT_FALSE(IsCoEdgeGroup(&group) || IsCoEdgeObject(&line) || IsCoEdgeObject_Tube(&line));
    EXPECT_FALSE(IsCoEdgeGroup(nullptr) || IsCoEdgeObject(nullptr) || IsCoEdgeObject_Tube(nullptr));
    for (CCadObject* o : {static_cast<CCadObject*>(&group), static_cast<CCadObject*>(&line)})
        o->SetKey("GroupType", "1");
    EXPECT_TRUE(IsCoEdgeGroup(&group) && !IsCoEdgeGroup(&line));
    const struct {
        const char *key, *value;
        bool coEdge, tube;
    } cases[] = {{"CoEdge", "1", false, false},           {"CoEdge", "true", true, false},
                 {"CoEdge", "True", false, false},        {"IsCoedgeEdge", "1", false, true},
                 {"TubeTrucateCoedge", "1", false, true}, {"TubeTruncateCoedge", "1", false, false},
                 {"IsCoedgeEdge", "true", false, false}};
    for (const auto& c : cases) {
        CCadLine marked({0, 0}, {1, 0});
        marked.SetKey(c.key, c.value);
        EXPECT_EQ(IsCoEdgeObject(&marked), c.coEdge) << c.key << "=" << c.value;
        EXPECT_EQ(IsCoEdgeObject_Tube(&marked), c.tube) << c.key << "=" << c.value;
    }
}

} // namespace
