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
}

TEST(Selection, Closedness) {
    for (const auto& [letters, answer] : Table<const char*, int>{{"", -2},
                                                                 {"(())((o)o)", 0},
                                                                 {"()c", 1},
                                                                 {"(tt)t", 1},
                                                                 {"c()", -1},
                                                                 {"(co)c", -1},
                                                                 {"(t)o", -1}}) {
        const Letters s(letters);
        EXPECT_EQ(IsClose(&s), answer) << letters;
    }
    EXPECT_EQ(IsClose(static_cast<const CCadObject*>(nullptr)), 0);
}

TEST(Selection, CornersOfTheBox) {
    const Letters s("oc"); // boxes (0, 0)-(2, 3) and (-1, -1)-(1, 1)
    for (const auto& [key, corner] : Table<const char*, DPOINT2>{
             {"TL", {-1, 3}}, {"TR", {2, 3}}, {"BL", {-1, -1}}, {"BR", {2, -1}}, {"TRx", {-1, -1}}})
        EXPECT_POINT_NEAR(GetCornerPoint(s.List(), key), corner, 0) << key;
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
