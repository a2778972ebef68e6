#include <gtest/gtest.h>

#include "technics/test_operator.h"

namespace {

struct Counting : qev::CTechnics {
    Counting(int type, int subType) { m_nType = type, m_nSubType = subType; }
    bool Refresh(const qev::CCadObject*, void* data) override { return ++refreshed > 0 && data == this; }
    int refreshed = 0;
};

TEST(Queries, FindRefreshAndPickOff) {
    auto *first = new Counting(3, 3), *other = new Counting(5, -2), *second = new Counting(3, 7);
    auto *last = new Counting(3, 3), *hidden = new Counting(9, 9);
    qev::CCadGroup object;
    for (Counting* each : {first, other, second, last}) object.AddTechnics(each);
    object.GetToolPathList().push_back(new qev::CCadDot({0, 0}));
    object.GetToolPathList().back()->AddTechnics(hidden);

    EXPECT_EQ(qev::GetTechnics(&object, 3, -1), first);
    EXPECT_EQ(qev::GetTechnics(&object, 3, 7), second);
    EXPECT_EQ(qev::GetTechnics(&object, 5, -1), nullptr) << "it is no default";
    EXPECT_TRUE(qev::HasTechnics(&object, 3, 7) && !qev::HasTechnics(&object, 3, -1)) << "no -1 rule";
    EXPECT_TRUE(qev::HasTechnics(&object, 5, true) && !qev::HasTechnics(&object, 9, true));
    EXPECT_TRUE(qev::RefreshCadObject(&object, 3, -1, first));
    EXPECT_TRUE(qev::RefreshCadObject(&object, -1, 0, first)) << "though the others say no";
    EXPECT_FALSE(qev::RefreshCadObject(&object, 5, -1, other));
    EXPECT_TRUE(first->refreshed == 2 && other->refreshed == 1 && last->refreshed == 1);

    EXPECT_EQ(qev::PickOffTechnics(&object, 3, -1), nullptr);
    const std::unique_ptr<qev::CTechnics> bySubType(qev::PickOffTechnics(&object, 3, 7));
    const std::unique_ptr<qev::CTechnics> byType(qev::PickOffTechnics(&object, 3));
    EXPECT_TRUE(bySubType.get() == second && byType.get() == first);
    EXPECT_EQ(object.GetTechnicsList(), (std::list<qev::CTechnics*>{other, last}));
    EXPECT_FALSE(qev::HasTechnics(nullptr) || qev::PickOffTechnics(nullptr, 0)
                 || qev::RefreshCadObject(nullptr, -1, 0, nullptr));
}

} // namespace
