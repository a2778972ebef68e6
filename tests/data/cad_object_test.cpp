#include <map>

#include "support/support.h"

using namespace qev;
using namespace test;

TEST(CadObject, RefusesItselfAsInnerObjectAndNullAsKey) {
    CCadDot dot({0, 0});
    dot.SetInnerObject(new CCadDot({1, 1}));
    dot.ClearInnerObject();
    dot.SetInnerObject(&dot);
    EXPECT_EQ(dot.GetInnerObject(), nullptr);
    EXPECT_EQ(dot.GetPieceCount(), 1);
    dot.SetKey(nullptr, "x");
    EXPECT_TRUE(dot.GetKey(nullptr).IsEmpty());
    dot.SetKey("x", nullptr);
    EXPECT_TRUE(dot.GetKey("x").IsEmpty());
    dot.GetToolPathList().assign(2, new CCadLine({5, 5}, {8, 9})); // twice there, and destroyed once
    EXPECT_EQ(dot.GetToolPathBoundRect().height, 4) << "of its paths alone";
}

TEST(CadObject, KeepsEachAttributeWhenAnotherOneChanges) {
    CCadDot dot({0, 0});
    std::map<std::string, std::string> wanted;
    for (Random random; random.Rounds(200);) {
        const std::string key(random.Int(0, 3), 'k'), value(random.Int(0, 9), 'k');
        dot.SetKey(key.c_str(), (wanted[key] = value).c_str());
        for (const auto& [each, text] : wanted) EXPECT_EQ(dot.GetKey(each.c_str()), text.c_str()) << each;
    }
}
