#include "support/support.h"

TEST(MinDistance, AgainstSamplesAndOfNothing) {
    for (Random random; random.Rounds(100);) {
        const auto contour = RandomPolylineEx(random, 6);
        const DPOINT2 p = random.Point();
        DPOINT2 nearest;
        const double distance = GetMinDistance(contour.get(), p, nearest);
        const double sampled = SampledDistance(Along(*contour), p, 2000 * contour->GetPieceCount());
        EXPECT_LE(distance, sampled + 1e-9);
        EXPECT_GE(distance, sampled - 1) << "one sample step of the longest arcs";
        EXPECT_NEAR(math::D2GetDistance(p, nearest), distance, 1e-12);
    }
    CCadGroup empty;
    DPOINT2 nearest;
    EXPECT_TRUE(GetMinDistance(&empty, {1, 1}, nearest) == kInf && math::IsNoPoint(nearest));
    EXPECT_EQ(GetMinDistance(nullptr, {1, 1}, nearest), kInf);
    const CCadCircle circle({0, 0}, 5);
    EXPECT_EQ(GetMinDistance(&circle, {kNaN, 1}, nearest), kInf);
    EXPECT_DOUBLE_EQ(GetMinDistance(&circle, {3, 0}, nearest), 2);
}

// The smallest distance wins, equal ones go to the object drawn last; the oracle measures every leaf.
TEST(Hit, FindsTheNearestLeaf) {
    for (Random random; random.Rounds(200);) {
        CCadGroup group;
        std::vector<CCadObject*> leaves;
        CCadGroup* into = &group;
        for (int k = 0; k < 12; ++k) {
            leaves.push_back(RandomPolylineEx(random, 3).release());
            into->PushBack(leaves.back());
            if (random.Int(0, 3) == 0) into = AddGroup(*into);
        }
        const DPOINT2 p = random.Point();
        const double tolerance = random.Uniform(0, 20);
        CCadObject* expected = nullptr;
        DPOINT2 hitPoint;
        double best = tolerance;
        for (CCadObject* leaf : leaves) {
            const double distance = GetMinDistance(leaf, p, hitPoint);
            if (distance <= best) expected = leaf, best = distance;
        }
        ASSERT_EQ(Hit(&group, p, tolerance, &hitPoint), expected);
        if (expected) EXPECT_NEAR(math::D2GetDistance(p, hitPoint), best, 1e-12);
    }
}

TEST(Hit, TiesTextsRelationsAndRefusals) {
    CCadGroup group;
    auto* first = new CCadLine({0, 0}, {10, 0});
    auto* text = TextOf(new CCadLine({0, 5}, {10, 5}));
    CCadLine related({0, 9}, {10, 9});
    Fill(group, {first, text, RelationTo(&related)});
    EXPECT_EQ(Hit(&group, {5, 4.5}, 1), text);
    EXPECT_EQ(Hit(&group, {5, 9.5}, 1), &related);
    EXPECT_EQ(Hit(&group, {5, 1}, 1), first) << "the tolerance is included";
    EXPECT_EQ(Hit(&group, {5, 2}, 1), nullptr);
    auto* last = new CCadLine({0, 9e-10}, {10, 9e-10});
    group.PushBack(last);
    EXPECT_EQ(Hit(&group, {5, -1}, 2), last);
    for (const double bad : {kNaN, -1.0}) EXPECT_EQ(Hit(&group, {5, 0}, bad), nullptr);
    CCadGroup empty;
    EXPECT_FALSE(Hit(&group, {kNaN, 0}, 1) || Hit(nullptr, {0, 0}, 1) || Hit(&empty, {0, 0}, kInf));
}
