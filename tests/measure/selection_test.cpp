#include "measure/letters.h"

using namespace qev;
using namespace test;

namespace {

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
    const std::list<CCadObject*> members{nullptr, s.List()->front(), s.List()->back()};
    for (const auto& [key, corner] : Table<const char*, DPOINT2>{
             {"TL", {-1, 3}}, {"TR", {2, 3}}, {"BL", {-1, -1}}, {"BR", {2, -1}}, {"TRx", {-1, -1}}})
        EXPECT_POINT_NEAR(GetCornerPoint(&members, key), corner, 0) << key;
    EXPECT_POINT_NEAR(GetCornerPoint(s.List(), nullptr), (DPOINT2{-1, -1}), 0);
    EXPECT_POINT_NEAR(GetCornerPoint(nullptr, "TL"), (DPOINT2{0, 0}), 0);
}

TEST(CoEdge, MarksAreExact) {
    for (const auto& [isMarked, object, key, value, expected] :
         Table<bool (*)(const CCadObject*), const char*, const char*, const char*, bool>{
             {IsCoEdgeGroup, "group", "GroupType", "1", true},
             {IsCoEdgeGroup, "group", "GroupType", "2", false},
             {IsCoEdgeObject_Tube, "line 0 0 1 0", "CoEdge", "1", false},
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
