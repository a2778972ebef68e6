#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// Two outlines that tie with a third need not tie with each other.
TEST(GroupIndex, TheLastOfThoseThatTieWithTheNearest) {
    for (std::vector<double> heights : {std::vector{1 - 0.9e-9, 1.0, 1 + 0.9e-9}, {5 - 1e-9, 5.0}}) do {
            CCadGroup drawing;
            for (const double y : heights) drawing.PushBack(new CCadLine({0, y}, {10, y}));
            EXPECT_EQ(CGroupIndex(&drawing).Hit({5, 0}, 9), Hit(&drawing, {5, 0}, 9))
                << heights[0] << ' ' << heights[1];
        } while (std::next_permutation(heights.begin(), heights.end()));
}

TEST(GroupIndex, FollowsChangesWhenTold) {
    CCadGroup drawing;
    for (int i = 0; i < 100; ++i) drawing.PushBack(Polyline("0 0 L 1 0").release());
    auto* moved = static_cast<CCadPolyline*>(drawing.GetBack());
    CGroupIndex index(&drawing);
    moved->ReverseDir(false), moved->AddLine({500, 500}); // from (0, 0) on
    EXPECT_EQ(index.Hit({250, 250}, 0.1), nullptr) << "not told yet";
    index.Update(moved);
    EXPECT_EQ(index.Hit({250, 250}, 0.1), moved);
    const CCadLine stranger({0, 0}, {1, 1});
    index.Update(&stranger);
    index.Update(nullptr);
    EXPECT_EQ(index.GetCount(), 100);
    auto* added = new CCadLine({-500, 0}, {-500, 1});
    drawing.PushBack(added);
    index.Build();
    EXPECT_EQ(index.Hit({-500, 0}, 1), added);
}

TEST(GroupIndex, HostileArguments) {
    CCadGroup drawing, empty;
    Fill(drawing,
         {new CCadLine({0, 0}, {1, 0}), new CCadLine({kNaN, 0}, {1, kInf}), new CCadDot({1e300, 1})});
    for (const double far : {-kInf, kInf, -kInf, kInf, -kInf, kInf}) drawing.PushBack(new CCadDot({far, 0}));
    AddGroup(drawing)->PushBack(&drawing); // holds itself
    const CGroupIndex index(&drawing), none(nullptr), nothing(&empty);
    std::vector<CCadObject*> found;
    for (const double bad : {kNaN, kInf, -1.0, 1e300}) {
        EXPECT_EQ(index.Hit({bad, bad}, 0.5), nullptr) << bad;
        EXPECT_EQ(index.Hit({0, 0.1}, bad), bad > 0 ? drawing.GetFront() : nullptr) << bad;
        EXPECT_EQ(none.Hit({0, 0}, bad), nullptr);
        EXPECT_EQ(nothing.Hit({0, 0}, bad), nullptr);
        index.Collect({0, 0, kNaN, bad}, found);
        index.Collect({0, 0, -1, 5}, found);
    }
    EXPECT_TRUE(found.empty());
    static_cast<CCadGroup*>(drawing.GetBack())->PickOffAll();
    CCadGroup far; // the sum of its box's corner and width ends in 0
    Fill(far, {new CCadLine({-1e100, 0}, {30, 0})});
    EXPECT_EQ(Hit(&far, {500, 0}, 480), far.GetFront());
    EXPECT_EQ(CGroupIndex(&far).Hit({500, 0}, 480), far.GetFront());
    CCadPolyline zeros; // its box has all zeros, as that of nothing
    zeros.SetStartPoint({kNaN, kNaN});
    for (int i = 0; i < 2; ++i) zeros.AddLine({0, 0});
    CCadGroup atOrigin;
    atOrigin.PushBack(&zeros);
    EXPECT_EQ(CGroupIndex(&atOrigin).Hit({1, 0}, 2), &zeros);
    atOrigin.PickOffAll();
}

} // namespace
