#include "support/support.h"

using namespace qev;
using namespace test;

using Joints = std::vector<int>;

TEST(SharpJoints, ThatTurnByAnAngleOrMore) {
    for (const auto& [name, contour, degrees, expected] : Table<const char*, const char*, double, Joints>{
             {"all, the start last", kSquare, 90, {1, 2, 3, 0}},
             {"none turns by more", kSquare, 91, {}},
             {"no joint at the ends of an open contour", kOpenSquare, 45, {1, 2}},
             {"not straight on", "0 0 L 10 0 L 20 0 L 20 5", 30, {2}},
             {"cusps", "0 0 L 10 0 A 10 10 -1 L 0 10", 170, {1, 2}},
             {"a circle has one", "circle 0 0 1", 10, {0}},
             {"a Bezier piece has no direction", "0 0 L 10 0 B 10 5 5 10 0 10 L 0 0", 10, {0}}}) {
        Joints joints;
        CollectPos(Object(contour).get(), degrees, joints);
        EXPECT_EQ(joints, expected) << name;
    }
}

TEST(SharpJoints, OfANeedleAllAreConvex) {
    Joints convex, concave;
    CollectTurnDirPos(Polyline("0 0 L 2000 0 L 2000 1e-6 L 0 1e-6 L 0 0").get(), 45, convex, 0, concave);
    EXPECT_EQ(convex.size(), 4u);
    EXPECT_TRUE(concave.empty());
}

// A bracket like an L: five corners turn left, the one at (4, 4), which is the start, turns right.
TEST(SharpJoints, TheHullTellsConvexFromConcaveTurns) {
    const auto bracket = Polyline("4 4 L 4 10 L 0 10 L 0 0 L 10 0 L 10 4 L 4 4");
    for (const int limit : {4, 0, 1, 6}) { // 1 never tells them apart, and six are no more than 6
        const bool isTold = limit == 4 || limit == 0;
        Joints convex, concave{-7};
        CollectTurnDirPos(bracket.get(), 45, convex, limit, concave);
        EXPECT_EQ(convex, isTold ? (Joints{3, 4, 5, 1, 2}) : (Joints{1, 2, 3, 4, 5, 0})) << limit;
        EXPECT_EQ(concave.back(), isTold ? 0 : -7) << limit;
    }
}
