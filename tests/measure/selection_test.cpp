#include "letters.h"

using namespace qev;
using namespace test;

namespace {

// A random selection: up to eight letters, in groups up to any depth, empty ones among them.
std::string RandomLetters(Random& random) {
    std::string letters;
    int depth = 0;
    for (int i = random.Int(0, 8); i > 0; --i) {
        const char letter = "coodttx(()"[random.Int(0, 9)];
        if (letter == ')' && depth == 0) continue;
        depth += letter == '(' ? 1 : letter == ')' ? -1 : 0;
        letters += letter;
    }
    return letters + std::string(depth, ')');
}

bool HasOnly(const std::string& letters, const char* allowed) {
    return letters.find_first_not_of(allowed) == std::string::npos;
}

// What holds for all members can be told from the letters alone.
TEST(Selection, AllMembersAgainstTheLetters) {
    for (Random random; random.Rounds(2000);) {
        const std::string letters = RandomLetters(random);
        SCOPED_TRACE(letters);
        const Letters s(letters);
        const auto texts = std::count(letters.begin(), letters.end(), 't');
        const bool hasEmpty = letters.empty() || letters.find("()") != std::string::npos;
        EXPECT_EQ(IsAllUnClosed(s.List()), HasOnly(letters, "()odx"));
        EXPECT_EQ(IsAllClosed(s.List()), HasOnly(letters.substr(0, letters.find('t')), "()c"))
            << "what follows a text is not looked at";
        EXPECT_EQ(IsAllDot(s.List()), HasOnly(letters, "()d"));
        EXPECT_EQ(IsAllText(s.List()), HasOnly(letters, "()t") && !hasEmpty);
        EXPECT_EQ(GetTextCount(s.List()), texts);
        EXPECT_EQ(GetTextCount(&s), texts);
    }
    for (const auto holds : {IsAllUnClosed, IsAllClosed, IsAllDot, IsAllText}) EXPECT_FALSE(holds(nullptr));
    EXPECT_EQ(GetTextCount(static_cast<const CCadObject*>(nullptr)), 0);
}

TEST(Selection, Closedness) {
    for (const auto& [answer, selections] : Table<int, std::vector<const char*>>{
             {-2, {"", "()"}},                                                   // nothing
             {0, {"o", "(())((o)o)", "d(d)"}},                                   // all open
             {1, {"c", "t", "()c", "(c)(c)", "ct(c)", "c(c)", "t(t)", "(tt)t"}}, // all closed, as texts are
             {-1, {"co", "c()", "(co)", "(co)c", "(co)(co)", "ot", "to", "(t)o", "t()"}}}) // mixed
        for (const char* letters : selections) {
            const Letters s(letters);
            EXPECT_EQ(IsClose(&s), answer) << letters;
        }
    EXPECT_EQ(IsClose(static_cast<const CCadObject*>(nullptr)), 0);
    EXPECT_EQ(IsClose(Object("relation").get()), 0) << "only plain groups ask their members";
}

TEST(Selection, CornersOfTheBox) {
    const Letters s("oc"); // boxes (0, 0)-(2, 3) and (-1, -1)-(1, 1)
    for (const auto& [key, corner] : Table<const char*, DPOINT2>{{"TL", {-1, 3}},
                                                                 {"TR", {2, 3}},
                                                                 {"BL", {-1, -1}},
                                                                 {"BR", {2, -1}},
                                                                 {"tl", {-1, -1}},
                                                                 {"TRx", {-1, -1}}})
        EXPECT_POINT_NEAR(GetCornerPoint(s.List(), key), corner, 0) << key;
    EXPECT_POINT_NEAR(GetCornerPoint(s.List(), nullptr), (DPOINT2{-1, -1}), 0);
    EXPECT_POINT_NEAR(GetCornerPoint(nullptr, "TR"), (DPOINT2{0, 0}), 0);
}

TEST(CoEdge, MarksAreExact) {
    CCadGroup group;
    CCadLine line({0, 0}, {1, 0});
    EXPECT_FALSE(IsCoEdgeGroup(&group));
    for (CCadObject* object : {static_cast<CCadObject*>(&group), static_cast<CCadObject*>(&line)})
        object->SetKey("GroupType", "1");
    EXPECT_TRUE(IsCoEdgeGroup(&group));
    EXPECT_FALSE(IsCoEdgeGroup(&line)) << "no group";
    for (const auto& [key, value, isCoEdge, isTube] :
         Table<const char*, const char*, bool, bool>{{"CoEdge", "true", true, false},
                                                     {"CoEdge", "True", false, false},
                                                     {"IsCoedgeEdge", "1", false, true},
                                                     {"TubeTrucateCoedge", "1", false, true},
                                                     {"TubeTruncateCoedge", "1", false, false}}) {
        CCadLine marked({0, 0}, {1, 0});
        marked.SetKey(key, value);
        EXPECT_EQ(IsCoEdgeObject(&marked), isCoEdge) << key << " = " << value;
        EXPECT_EQ(IsCoEdgeObject_Tube(&marked), isTube) << key << " = " << value;
    }
    for (const auto isMarked : {IsCoEdgeGroup, IsCoEdgeObject, IsCoEdgeObject_Tube})
        EXPECT_FALSE(isMarked(nullptr));
}

} // namespace
