// Objects that own one another a hundred thousand deep, the deepest of which holds the first and itself, on a
// stack of 1 MB: whatever walks them does so without recursion, and ends. (On Windows the program is linked
// with such a stack.)
#include "support/support.h"
#include "technics/test_operator.h"

#ifndef _WIN32
#include <sys/resource.h>
#endif

using namespace qev;
using namespace test;

namespace {

// Everything that is asked of a tree, which does not depend on how deep it is.
std::vector<double> Answers(CCadObject& root) {
    std::list<CCadObject*> all{&root}, leaves;
    std::vector<ContourNesting> nesting;
    DPOINT2 nearest;
    const CCadDot dot({12, 10});
    const CGroupIndex index(dynamic_cast<CCadGroup*>(&root));
    TestManager manager;
    CollectLeafNode(&all, &leaves);
    GetNesting(&all, nesting);
    manager.LoadTechnics(&root);
    manager.SaveTechnics(&root);
    manager.UpdataViewDataNotify(&all);
    return {root.GetBoundRect().width,
            root.GetToolPathBoundRect().width,
            GetCadLength(&root),
            math::IsNoPoint(GetCadStartPoint(&root)) ? -1 : GetCadStartPoint(&root).x,
            GetCornerPoint(&all, "TR").y,
            1.0 * IsClose(&root),
            1.0 * GetTextCount(&root),
            GetMinDistance(&root, {13, 5}, nearest),
            Hit(&root, {11, 5}, 2, false) ? 1.0 : 0,
            GetClearance(&root, &dot),
            static_cast<double>(leaves.size()),
            static_cast<double>(nesting.size()),
            1.0 * index.GetCount(),
            index.Hit({11, 5}, 2) ? 1.0 : 0};
}

struct Way {
    const char* name;
    CCadObject* (*make)();
    void (*own)(CCadObject&, CCadObject*);
};

void AddMember(CCadObject& to, CCadObject* object) {
    auto* text = dynamic_cast<CCadText*>(&to);
    (text ? *text->GetTextGroup() : static_cast<CCadGroup&>(to)).PushBack(object);
}
void AddInner(CCadObject& to, CCadObject* object) {
    to.SetInnerObject(object);
}
void AddInTurn(CCadObject& to, CCadObject* object) {
    (to.GetID() % 2 ? AddMember : AddInner)(to, object);
}
void AddToolPath(CCadObject& to, CCadObject* object) {
    to.GetToolPathList().push_back(object);
}
CCadObject* MakeText() {
    return new CCadText("");
}
CCadObject* MakeGroup() {
    return new CCadGroup;
}

std::unique_ptr<CCadObject> Chain(const Way& way, int depth) {
    std::unique_ptr<CCadObject> root(way.make());
    CCadObject* deepest = root.get();
    for (int i = 0; i < depth; ++i) {
        CCadObject* next = way.make();
        way.own(*deepest, next);
        deepest = next;
    }
    for (CCadObject* open : {root.get(), deepest}) way.own(*deepest, open);
    for (const char* outline : {kSquare, "line 0 0 3 4"}) AddMember(*deepest, Object(outline).release());
    return root;
}

TEST(Depth, AnswersClonesAndEndsAreThoseOfAShallowTree) {
#ifndef _WIN32
    rlimit stack{};
    getrlimit(RLIMIT_STACK, &stack);
    stack.rlim_cur = 1 << 20;
    setrlimit(RLIMIT_STACK, &stack);
#endif
    for (const Way& way : {Way{"groups", MakeGroup, AddMember}, Way{"texts", MakeText, AddMember},
                           Way{"inner objects", MakeText, AddInner}, Way{"in turn", MakeText, AddInTurn},
                           Way{"tool paths", MakeText, AddToolPath}}) {
        SCOPED_TRACE(way.name);
        const auto shallow = Chain(way, 2), deep = Chain(way, 100'000);
        const std::unique_ptr<CCadObject> clone(deep->Clone(true)), shallowClone(shallow->Clone(true));
        EXPECT_EQ(Answers(*deep), Answers(*shallow));
        EXPECT_EQ(Answers(*clone), Answers(*shallowClone));
    }
}

} // namespace
