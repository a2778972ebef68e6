#include <gtest/gtest.h>

#include "support/random.h"
#include "technics/test_operator.h"

namespace {

struct Asked : qev::CTechnics {
    Asked(int type, int subType) { m_nType = type, m_nSubType = subType; }
    bool Refresh(const qev::CCadObject*, void* data) override {
        onRefresh();
        return data == this;
    }
    std::function<void()> onRefresh = [] {};
};

struct Queries : testing::Test {
    Queries() {
        for (Asked* each : {first, other, second, last}) object.AddTechnics(each);
    }
    Asked *const first = new Asked(3, 3), *const other = new Asked(5, -2);
    Asked *const second = new Asked(3, 7), *const last = new Asked(3, 3);
    qev::CCadGroup object;
};

TEST_F(Queries, Find) {
    EXPECT_EQ(qev::GetTechnics(&object, 3, -1), first) << "its sub-type is its type";
    EXPECT_EQ(qev::GetTechnics(&object, 3, 7), second);
    EXPECT_EQ(qev::GetTechnics(&object, 5, -1), nullptr) << "the only one is no default";
    EXPECT_TRUE(qev::HasTechnics(&object, 3, 7));
    EXPECT_FALSE(qev::HasTechnics(&object, 3, -1)) << "here -1 is a number";
    EXPECT_TRUE(qev::HasTechnics(&object, 5, true));
    EXPECT_FALSE(qev::HasTechnics(nullptr));
}

TEST_F(Queries, Refresh) {
    EXPECT_TRUE(qev::RefreshCadObject(&object, 3, -1, first));
    for (Asked* each : {first, other, second, last})
        EXPECT_TRUE(qev::RefreshCadObject(&object, -1, 0, each)) << "though the others say no";
    EXPECT_FALSE(qev::RefreshCadObject(nullptr, -1, 0, nullptr));
}

// Some take a few off and add some, as many as they took or not: of those that were there, each is asked that
// has not been taken off before.
TEST(Refresh, AsksEachThatIsLeft) {
    for (test::Random random; random.Rounds(100);) {
        qev::CCadGroup object;
        std::vector<int> asked(100), left(asked);
        for (int i = 0; i < 100; ++i) {
            auto* const each = new Asked(i, i);
            object.AddTechnics(each);
            each->onRefresh = [&, i, isTaker = random.Int(0, 19) == 0] {
                asked[i] = left[i] = 1;
                for (int k = isTaker ? 3 : 0; k > 0; --k) {
                    delete qev::PickOffTechnics(&object, random.Int(i + 1, 120));
                    if (random.Coin()) object.AddTechnics(new Asked(1000, 0));
                }
                for (int k = i + 1; k < 100; ++k) left[k] = qev::HasTechnics(&object, k, k);
            };
        }
        EXPECT_FALSE(qev::RefreshCadObject(&object, -1, 0, nullptr)) << "all say no";
        EXPECT_EQ(asked, left);
    }
}

// Each refresh deletes the next one of a list, short or long, and puts another in its place.
TEST(Refresh, AsksNoneThatWasDestroyed) {
    for (const int length : {4, 3000}) {
        qev::CCadGroup object;
        for (int i = 0; i < length; ++i) object.AddTechnics(new Asked(1, 0));
        std::list<qev::CTechnics*>& list = object.GetTechnicsList();
        auto next = list.begin();
        for (qev::CTechnics* each : list)
            static_cast<Asked*>(each)->onRefresh = [&, each] {
                ASSERT_EQ(each, *next++);
                delete std::exchange(*next++, new Asked(2, 0));
            };
        qev::RefreshCadObject(&object, -1, 0, nullptr);
        EXPECT_TRUE(next == list.end()) << length;
    }
}

TEST_F(Queries, PickOff) {
    const std::unique_ptr<qev::CTechnics> bySubType(qev::PickOffTechnics(&object, 3, 7));
    const std::unique_ptr<qev::CTechnics> byType(qev::PickOffTechnics(&object, 3));
    EXPECT_EQ(bySubType.get(), second);
    EXPECT_EQ(byType.get(), first);
    EXPECT_EQ(object.GetTechnicsList(), (std::list<qev::CTechnics*>{other, last}));
}

} // namespace
