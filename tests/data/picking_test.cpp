#include "support/support.h"

using namespace qev;
using namespace test;

TEST(MinDistance, IsInfiniteFromNothingAndForHostileArguments) {
    const CCadGroup empty;
    const CCadCircle circle({0, 0}, 5);
    DPOINT2 nearest;
    EXPECT_EQ(GetMinDistance(&empty, {1, 1}, nearest), kInf);
    EXPECT_TRUE(math::IsNoPoint(nearest));
    EXPECT_EQ(GetMinDistance(nullptr, {1, 1}, nearest), kInf);
    EXPECT_EQ(GetMinDistance(&circle, {kNaN, 1}, nearest), kInf);
}

TEST(Hit, LooksThroughRelationsAndTakesTextsWhole) {
    CCadGroup group;
    auto* line = new CCadLine({0, 0}, {10, 0});
    auto* text = TextOf(new CCadLine({0, 5}, {10, 5}));
    CCadLine related({0, 9}, {10, 9});
    Fill(group, {line, text, RelationTo(&related)});
    EXPECT_EQ(Hit(&group, {5, 4.5}, 1), text);
    EXPECT_EQ(Hit(&group, {5, 9.5}, 1), &related);
    EXPECT_EQ(Hit(&group, {5, 0}, kNaN), nullptr);
    EXPECT_EQ(Hit(&group, {kNaN, 0}, 100), nullptr);
    EXPECT_EQ(Hit(&group, {5, 0}, -1), nullptr);
    EXPECT_EQ(Hit(nullptr, {0, 0}, 1), nullptr);
    EXPECT_EQ(Hit(&group, {5, 1}, 1), line) << "the tolerance is included";
    auto* last = new CCadLine({0, 9e-10}, {10, 9e-10});
    group.PushBack(last);
    EXPECT_EQ(Hit(&group, {5, -1}, 2), last) << "as near as the first, and drawn last";
}

// A kind of a host's that says nothing of its box, and whose line has a bulge by mistake.
struct OwnLine : CCadObject {
    int GetSegmentCount() const override { return 1; }
    SEGMENT GetSegment(int) const override {
        SEGMENT line({0, 0}, {10, 0});
        line.dBulge = 1;
        return line;
    }
};

TEST(Hit, FindsAHostsKindWithoutABoxAndMayAnswerIntoItsInput) {
    CCadGroup group;
    Fill(group, {new OwnLine, new CCadLine({0, 0.75}, {10, 0.75}), new CCadPolyline});
    DPOINT2 p{5, 0.25};
    EXPECT_EQ(Hit(&group, p, 1, &p), group.GetFront());
    EXPECT_POINT_NEAR(p, (DPOINT2{5, 0}), 0);
    EXPECT_EQ(group.GetBoundRect().height, 0.75);
}

TEST(Hit, TakesTheLastOfTwoThatLieFarOut) {
    CCadGroup group;
    for (int i = 0; i < 2; ++i) group.PushBack(new CCadLine({1e100, 0}, {1e100, 1}));
    EXPECT_EQ(Hit(&group, {-100, 0}, kInf), group.GetBack());
}
