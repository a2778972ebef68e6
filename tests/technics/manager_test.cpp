#include <locale>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "technics/test_operator.h"

namespace {

using qev::CLuaAccess;
using test::Objects;
using test::TestOperator;
using test::TestTechnics;

struct Manager : testing::Test {
    Manager() {
        manager.RegisterTechnicsItem(&lead);
        manager.RegisterTechnicsItem(&joint);
    }
    TestOperator lead{16, "Lead"};
    TestOperator joint{1, "Joint"};
    test::TestManager manager;
};

double Number(CLuaAccess& cursor, const char* key) {
    double value = -1;
    cursor.Read(value, key, -1e9, 1e9);
    return value;
}

TEST_F(Manager, OneOperatorForEachType) {
    TestOperator late(1, "Late");
    manager.RegisterTechnicsItem(&late);
    manager.RegisterTechnicsItem(nullptr);
    EXPECT_EQ(*manager.GetTehcnisItemVector(), (std::vector<qev::CITechnicsOperator*>{&lead, &joint}));
    const std::pair<int, qev::CITechnicsOperator*> served[] = {{1, &joint}, {16, &lead},  {17, &lead},
                                                               {48, &lead}, {2, nullptr}, {32, nullptr}};
    for (const auto& [type, expected] : served)
        EXPECT_EQ(manager.GetTehchnicsOperator(type), expected) << type;
    EXPECT_FALSE(joint.IncrementalAdd(nullptr, nullptr));
}

TEST_F(Manager, AddGoesToTheFirstOperatorWithATable) {
    EXPECT_TRUE(manager.Add("T={Joint={},Lead={}}"));
    EXPECT_EQ(manager.message, "Lead");
    EXPECT_TRUE(manager.Add("T={Joint={},Lead=nil} return 1, 2"));
    EXPECT_EQ(manager.message, "Joint");
    EXPECT_EQ(manager.GetLastErrorText(), "");
    joint.onAdd = [](CLuaAccess&) { return false; };
    EXPECT_FALSE(manager.Add("T={Joint={}}"));
    for (const char* refused : {"", "T={", "error('no')", "T=nil", "T=5", "T={Other={}}"})
        EXPECT_FALSE(manager.Add(refused)) << refused;
    const Objects none;
    EXPECT_FALSE(manager.AddTechnics(&none, "T={Lead={}}", "", nullptr, nullptr, manager.message));
    EXPECT_FALSE(manager.AddTechnics(nullptr, "T={Lead={}}", "", nullptr, nullptr, manager.message));
}

TEST_F(Manager, MouseIsWrittenIntoTheTable) {
    struct {
        const char* params;
        double segment, ratio, x;
    } const rows[] = {{"", -1, 0.25, 7},
                      {"MouseSegment=3;StartX=-2;", 3, 0, -2},
                      {"MouseRatio=0.5;", 0, 0.5, 7},
                      {"What=1", 0, 0, 7}};
    for (const auto& row : rows) {
        lead.onAdd = [&row](CLuaAccess& cursor) {
            EXPECT_EQ(Number(cursor, "MouseSegment"), row.segment) << row.params;
            EXPECT_EQ(Number(cursor, "MouseRatio"), row.ratio) << row.params;
            EXPECT_TRUE(Number(cursor, "StartX") == row.x && Number(cursor, "StartY") == -1) << row.params;
            return !cursor.m_bAutoCreate;
        };
        EXPECT_TRUE(manager.Add("T={Lead={MouseRatio=0.25,StartX=7}}", row.params));
    }
    EXPECT_THROW(manager.Add("T={Lead={StartY=1/0}}"), char*);
}

// However an operator leaves, the next one finds the lock free, the cursor at its table and room on the
// stack.
TEST_F(Manager, EveryExitRestores) {
    const std::pair<const char*, std::function<bool(CLuaAccess&)>> exits[] = {
        {"fault of the data", [](CLuaAccess& c) { return c.Enter("Tool") && c.Enter("Speed"); }},
        {"exception", [](CLuaAccess& c) { return c.Enter("Tool") ? throw std::runtime_error("x") : true; }},
        {"number", [](CLuaAccess& c) { return (c.m_bAutoCreate = c.Enter("Tool")) ? throw 5 : true; }},
        {"levels left open", [](CLuaAccess& c) { return c.Enter("Tool") && !c.Enter("a") && !c.Enter("b"); }},
        {"levels closed too often",
         [](CLuaAccess& c) {
             for (int i = 0; i < 9; ++i) c.Leave();
             return true;
         }},
        {"a call not made", [](CLuaAccess& c) { return c.StartCall(nullptr, "print", 0) && c.PushTable(); }}};
    for (const auto& [name, exit] : exits)
        for (int round = 0; round < 20; ++round) {
            lead.onAdd = exit;
            try {
                manager.Add("T={Lead={Tool={Speed=5}}}");
            } catch (...) {
            }
            lead.onAdd = [](CLuaAccess& cursor) {
                double speed = 0;
                EXPECT_FALSE(cursor.m_bAutoCreate);
                return cursor.Read(speed, "Speed", 0, 1);
            };
            std::string thrown;
            std::thread([&] {
                try {
                    manager.Add("T={Lead={Speed=5}}");
                } catch (char* text) {
                    thrown = text;
                }
            }).join();
            EXPECT_EQ(thrown.substr(0, 14), "Lead.Speed = 5") << name;
        }
}

TEST_F(Manager, AMillionRefusalsLeaveNoTrace) {
    for (int i = 0; i < 1'000'000; ++i)
        EXPECT_FALSE(manager.Add(i % 100 == 0 ? "T={" : i % 2 ? "error{}" : "return {}, {}, T.x"));
    EXPECT_TRUE(manager.Add("T={Lead={}}"));
}

// The texts are run every time, and each time among the globals.
TEST_F(Manager, RepeatedTexts) {
    double count = 0;
    lead.onAdd = [&count](CLuaAccess& cursor) { return cursor.Read(count, "Count", 0, 9); };
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(manager.Add("n=(n or 0)+1 T={Lead={Count=n}} _ENV={}"));
        EXPECT_EQ(count, i);
    }
    for (int i = 0; i < 3000; ++i) EXPECT_FALSE(manager.Add("T={} --" + std::to_string(i)));
    EXPECT_TRUE(manager.Add("n=(n or 0)+1 T={Lead={Count=n}} _ENV={}"));
    EXPECT_EQ(count, 4);
}

TEST_F(Manager, AnOperatorMayAskTheManager) {
    qev::CCadGroup object;
    object.SetTechnicsString("T={Joint={Depth=2}}");
    joint.onCreate = [](CLuaAccess& cursor) {
        return new TestTechnics(static_cast<int>(Number(cursor, "Depth")));
    };
    joint.onAdd = [](CLuaAccess&) -> bool { throw 1; };
    lead.onAdd = [&](CLuaAccess& cursor) {
        cursor.m_bAutoCreate = true;
        manager.LoadTechnics(&object);
        EXPECT_THROW(manager.Add("T={Joint={}}", "StartX=1"), int);
        EXPECT_TRUE(cursor.m_bAutoCreate);
        return Number(cursor, "Depth") == 1;
    };
    EXPECT_TRUE(manager.Add("T={Lead={Depth=1}}"));
    EXPECT_TRUE(qev::HasTechnics(&object, 2, 2));
}

struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST_F(Manager, SaveAndLoad) {
    struct Speed : TestTechnics {
        using TestTechnics::TestTechnics;
        void Write(std::ostream& out) const override { out << text << 1.5 << "},"; }
    };
    for (TestOperator* each : {&lead, &joint})
        each->onCreate = [each](CLuaAccess& cursor) {
            const std::string name = each->GetTechnicsName();
            EXPECT_EQ(Number(cursor, "Speed"), 1.5);
            return new Speed(each->GetTechnicsType(), -1, name + "={Speed=");
        };
    qev::CCadGroup object;
    manager.SaveTechnics(&object);
    EXPECT_EQ(object.GetTechnicsString(), "T={};");
    constexpr char kSaved[] = "T={Lead={Speed=1.5},Joint={Speed=1.5},};";
    object.SetTechnicsString(kSaved);
    manager.LoadTechnics(&object);
    EXPECT_EQ(object.GetTechnicsList().size(), 2u);
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    manager.SaveTechnics(&object);
    std::locale::global(before);
    EXPECT_EQ(object.GetTechnicsString(), kSaved);
    for (const char* refused : {"", "T={", "error()", "T={Lead=nil}"}) {
        object.SetTechnicsString(refused);
        manager.LoadTechnics(&object);
    }
    EXPECT_EQ(object.GetTechnicsList().size(), 2u);
    manager.LoadTechnics(nullptr);
    manager.SaveTechnics(nullptr);
}

TEST_F(Manager, Remove) {
    qev::CCadGroup object;
    const Objects objects = {&object};
    Objects out;
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 2, &out, nullptr, manager.message)) << "no operator";
    EXPECT_FALSE(manager.RemoveTechnics(nullptr, 1, &out, nullptr, manager.message)) << "nothing removed";
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 1, nullptr, nullptr, manager.message));
    EXPECT_TRUE(manager.RemoveTechnics(&objects, 17, &out, nullptr, manager.message));
    lead.removes = false;
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 16, &out, nullptr, manager.message));
}

TEST_F(Manager, ViewDataOfLeavesThenOfGroups) {
    qev::CCadGroup group;
    auto* leaf = new qev::CCadLine({0, 0}, {1, 0});
    group.PushBack(leaf);
    group.PushBack(new qev::CCadLine({0, 0}, {2, 0}));
    Objects shown;
    joint.onNotify = [&](qev::CCadObject* object) { shown.push_back(object); };
    Objects objects = {&group, nullptr};
    for (qev::CCadObject* each : {static_cast<qev::CCadObject*>(&group), static_cast<qev::CCadObject*>(leaf)})
        each->AddTechnics(new TestTechnics(1));
    manager.UpdataViewDataNotify(&objects);
    EXPECT_EQ(shown, (Objects{leaf, &group}));
    qev::CCadGroup hollow;
    hollow.AddTechnics(new TestTechnics(1));
    objects = {&hollow};
    manager.UpdataViewDataNotify(&objects);
    manager.UpdataViewDataNotify(nullptr);
    EXPECT_EQ(shown.size(), 2u) << "without a leaf nothing is called";
}

TEST_F(Manager, OperatorsMayJoinDuringAWalk) {
    std::list<TestOperator> late;
    lead.onNotify = [&](qev::CCadObject*) {
        for (int i = 0; i < 100; ++i) {
            late.emplace_back(100 + static_cast<int>(late.size()), "Late").onNotify = [](qev::CCadObject*) {
                ADD_FAILURE() << "called by the walk that it joined";
            };
            manager.RegisterTechnicsItem(&late.back());
        }
    };
    manager.SingleMudifyNotify(nullptr, nullptr, {}, 0);
    EXPECT_EQ(manager.GetTehcnisItemVector()->size(), 102u);
}

TEST_F(Manager, CopiesShareTheInterpreter) {
    EXPECT_TRUE(manager.Add("n=7 T={Lead={}}"));
    lead.onAdd = [](CLuaAccess& cursor) { return Number(cursor, "N") == 7; };
    {
        test::TestManager copy(manager);
        EXPECT_TRUE(copy.Add("T={Lead={N=n}}"));
        copy = manager;
        manager.UnInitLuaEnv();
        EXPECT_FALSE(manager.Add("T={Lead={N=7}}"));
        EXPECT_TRUE(copy.Add("T={Lead={N=n}}"));
        manager = copy;
    }
    EXPECT_TRUE(manager.Add("T={Lead={N=n}}"));
    EXPECT_TRUE(manager.InitLuaEnv());
    EXPECT_FALSE(manager.Add("T={Lead={N=n}}")) << "a fresh interpreter";
}

TEST(TheManager, IsOneAndHoldsTheContext) {
    qev::CTechnicsManager* const manager = qev::GetTechnicsManager();
    ASSERT_NE(manager, nullptr);
    { const test::TestManager another; }
    EXPECT_EQ(qev::GetTechnicsManager(), manager);
    manager->SetTarvelEnvContext({1, 2, 3, "text"});
    EXPECT_EQ(test::TestManager().GetTarvelEnvContext().third, 3u);
    EXPECT_EQ(manager->GetTarvelEnvContext().fourth, "text");
    manager->SetCadTempDir(nullptr);
}

} // namespace
