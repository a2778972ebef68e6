#include "support/support.h"

using namespace qev;
using namespace test;

TEST(Group, InsertsAndGivesBack) {
    using List = std::list<CCadObject*>;
    CCadDot a({0, 0}), b({5, 5}), c({0, 0});
    CCadGroup group;
    group.PushBack(nullptr);
    group.Insert(&b, 7);
    group.Insert(&a, 0);
    group.Insert(&c, -2);
    EXPECT_EQ(group.GetObjectsList(), (List{&a, &b, &c})) << "an index out of range appends";
    EXPECT_EQ(group.GetBoundRect().width, 5) << "a dot at the origin counts";
    group.PopBack();
    EXPECT_EQ(group.GetObjectsList(), (List{&a, &b}));
    group.PickOffAll();
    group.PopBack();
    EXPECT_EQ(group.GetBack(), nullptr);
}
