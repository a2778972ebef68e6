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
    group.Insert(&c, -1);
    EXPECT_EQ(group.GetObjectsList(), (List{&a, &b, &c})) << "an index out of range appends";
    EXPECT_EQ(group.GetBoundRect().width, 5) << "a dot at the origin counts";
    group.PopBack();
    EXPECT_EQ(group.GetObjectsList(), (List{&a, &b}));
    group.PickOffAll();
    group.PopBack();
    EXPECT_EQ(group.GetBack(), nullptr);
}

namespace {

// How many texts lie below one another, each the first member or the inner object of the one before.
int Depth(const CCadObject* text) {
    int depth = -1;
    for (; text && text->GetType() == kCadText; ++depth)
        text = text->GetInnerObject()        ? text->GetInnerObject()
               : text->GetMembers()->empty() ? nullptr
                                             : text->GetMembers()->front();
    return depth;
}

} // namespace

// Each way to own an object, a hundred thousand levels deep; the last level holds the first.
TEST(Group, OwnershipOfAnyDepthAndInCyclesIsClonedAndDestroyed) {
    struct Way {
        const char* name;
        void (*own)(CCadText&, CCadObject*);
    };
    for (const Way& way :
         {Way{"member", [](CCadText&to, CCadObject*object) { to.GetTextGroup()->PushBack(object); }},
          Way{"inner object", [](CCadText&to, CCadObject*object) { to.SetInnerObject(object); }},
          Way{"in turn",
              [](CCadText&to, CCadObject*object) {
                  to.GetID() % 2 ? to.GetTextGroup()->PushBack(object) : to.SetInnerObject(object);
              }},
          Way{"tool path", [](CCadText&to, CCadObject*object) { to.GetToolPathList().push_back(object); }}})
        for (const int depth : {0, 1, 100'000}) {
            SCOPED_TRACE(testing::Message() << way.name << ", depth " << depth);
            const auto root = std::make_unique<CCadText>("");
            CCadText* deepest = root.get();
            for (int i = 0; i < depth; ++i) {
                auto* next = new CCadText("");
                way.own(*deepest, next);
                deepest = next;
            }
            way.own(*deepest, root.get());
            deepest->GetTextGroup()->PushBack(new CCadDot({3, 4}));
            const std::unique_ptr<CCadObject> clone(root->Clone(true));
            EXPECT_EQ(clone->GetBoundRect().x, root->GetBoundRect().x);
            EXPECT_GE(Depth(clone.get()), root->GetToolPathList().empty() ? depth : 0);
        }
}
