#include <gtest/gtest.h>

#include "technics/test_operator.h"

namespace {

using test::TestTechnics;

struct Queries : testing::Test {
    Queries() {
        for (TestTechnics* each : {first, other, second, last}) object.AddTechnics(each);
    }
    TestTechnics* const first = new TestTechnics(3, 3);
    TestTechnics* const other = new TestTechnics(5, -2);
    TestTechnics* const second = new TestTechnics(3, 7);
    TestTechnics* const last = new TestTechnics(3, 3);
    qev::CCadGroup object;
};

TEST_F(Queries, FindByTypes) {
    const std::tuple<int, int, const qev::CTechnics*> found[] = {
        {3, -1, first}, {3, 7, second}, {5, -1, nullptr}, {5, -2, other}}; // -1 is no default of the third
    for (const auto& [type, subType, expected] : found)
        EXPECT_EQ(qev::GetTechnics(&object, type, subType), expected) << type << " " << subType;
    EXPECT_TRUE(qev::HasTechnics(&object) && qev::HasTechnics(&object, 3, 7));
    EXPECT_FALSE(qev::HasTechnics(&object, 3, -1)) << "-1 is a number like any other here";
    EXPECT_FALSE(qev::HasTechnics(&object, 5, 7));
    auto* path = new qev::CCadDot({0, 0});
    path->AddTechnics(new TestTechnics(9));
    object.GetToolPathList().push_back(path);
    EXPECT_FALSE(qev::HasTechnics(&object, 9, true)) << "tool paths are not searched";
    EXPECT_TRUE(qev::HasTechnics(&object, 5, true));
}

TEST_F(Queries, PickOff) {
    EXPECT_EQ(qev::PickOffTechnics(&object, 3, -1), nullptr);
    const std::unique_ptr<qev::CTechnics> bySubType(qev::PickOffTechnics(&object, 3, 7));
    const std::unique_ptr<qev::CTechnics> byType(qev::PickOffTechnics(&object, 3));
    EXPECT_EQ(bySubType.get(), second);
    EXPECT_EQ(byType.get(), first);
    EXPECT_EQ(object.GetTechnicsList(), (std::list<qev::CTechnics*>{other, last}));
}

TEST_F(Queries, Refresh) {
    EXPECT_TRUE(qev::RefreshCadObject(&object, 3, -1, first));
    EXPECT_FALSE(qev::RefreshCadObject(&object, 5, -1, other));
    EXPECT_TRUE(qev::RefreshCadObject(&object, -1, 0, first));
    EXPECT_EQ(first->refreshed * 1000 + other->refreshed * 100 + second->refreshed * 10 + last->refreshed,
              2111)
        << "all of them, though the first one says yes";
}

TEST(NoTechnics, NullAndEmptyObjects) {
    qev::CCadGroup empty;
    for (qev::CCadObject* object :
         {static_cast<qev::CCadObject*>(&empty), static_cast<qev::CCadObject*>(nullptr)}) {
        EXPECT_FALSE(qev::HasTechnics(object) || qev::HasTechnics(object, 0, true));
        EXPECT_FALSE(qev::HasTechnics(object, 0, 0) || qev::GetTechnics(object, 0, 0));
        EXPECT_FALSE(qev::PickOffTechnics(object, 0) || qev::PickOffTechnics(object, 0, 0));
        for (const int type : {0, -1}) EXPECT_FALSE(qev::RefreshCadObject(object, type, 0, nullptr));
    }
}

} // namespace
