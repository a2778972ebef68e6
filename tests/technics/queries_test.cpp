#include <gtest/gtest.h>

#include "technics/test_operator.h"

namespace {

struct Counting : qev::CTechnics {
    Counting(int type, int subType) { m_nType = type, m_nSubType = subType; }
    bool Refresh(const qev::CCadObject*, void* data) override {
        onRefresh();
        return ++refreshed > 0 && data == this;
    }
    std::function<void()> onRefresh = [] {};
    int refreshed = 0;
};

struct Queries : testing::Test {
    Queries() {
        for (Counting* each : {first, other, second, last}) object.AddTechnics(each);
    }
    Counting *const first = new Counting(3, 3), *const other = new Counting(5, -2);
    Counting *const second = new Counting(3, 7), *const last = new Counting(3, 3);
    qev::CCadGroup object;
};

TEST_F(Queries, Find) {
    object.GetToolPathList().push_back(new qev::CCadDot({0, 0}));
    object.GetToolPathList().back()->AddTechnics(new Counting(9, 9));
    EXPECT_EQ(qev::GetTechnics(&object, 3, -1), first) << "its sub-type is its type";
    EXPECT_EQ(qev::GetTechnics(&object, 3, 7), second);
    EXPECT_EQ(qev::GetTechnics(&object, 5, -1), nullptr) << "the only one is no default";
    EXPECT_TRUE(qev::HasTechnics(&object, 3, 7));
    EXPECT_FALSE(qev::HasTechnics(&object, 3, -1)) << "here -1 is a number";
    EXPECT_TRUE(qev::HasTechnics(&object, 5, true));
    EXPECT_FALSE(qev::HasTechnics(&object, 9, true)) << "only a tool path has it";
    EXPECT_FALSE(qev::HasTechnics(nullptr));
}

TEST_F(Queries, Refresh) {
    EXPECT_TRUE(qev::RefreshCadObject(&object, 3, -1, first));
    EXPECT_TRUE(qev::RefreshCadObject(&object, -1, 0, first)) << "though the others say no";
    EXPECT_FALSE(qev::RefreshCadObject(&object, 5, -1, other)) << "the only one is no default";
    EXPECT_FALSE(qev::RefreshCadObject(nullptr, -1, 0, nullptr));
    EXPECT_EQ(first->refreshed, 2);
    for (const Counting* each : {other, second, last}) EXPECT_EQ(each->refreshed, 1) << each->m_nSubType;
}

TEST_F(Queries, RefreshThatTakesOthersOff) {
    first->onRefresh = [this] {
        delete qev::PickOffTechnics(&object, 5);
        delete qev::PickOffTechnics(&object, 3, 7);
    };
    EXPECT_TRUE(qev::RefreshCadObject(&object, -1, 0, last));
    EXPECT_EQ(last->refreshed, 1);
}

TEST_F(Queries, PickOff) {
    EXPECT_EQ(qev::PickOffTechnics(&object, 3, -1), nullptr) << "here -1 is a number";
    EXPECT_EQ(qev::PickOffTechnics(nullptr, 0), nullptr);
    const std::unique_ptr<qev::CTechnics> bySubType(qev::PickOffTechnics(&object, 3, 7));
    const std::unique_ptr<qev::CTechnics> byType(qev::PickOffTechnics(&object, 3));
    EXPECT_EQ(bySubType.get(), second);
    EXPECT_EQ(byType.get(), first);
    EXPECT_EQ(object.GetTechnicsList(), (std::list<qev::CTechnics*>{other, last}));
}

} // namespace
