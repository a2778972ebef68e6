#include <locale>
#include <thread>

#include <gtest/gtest.h>

#include "technics/test_operator.h"

namespace {

using namespace qev;
using namespace test;

struct Manager : testing::Test {
    Manager() {
        for (TestOperator* each : {&lead, &joint, &late}) manager.RegisterTechnicsItem(each);
    }
    TestOperator lead{16, "Lead"}, joint{1, "Joint"}, late{1, "Late"};
    TestManager manager;
};

double Number(CLuaAccess& cursor, const char* key) {
    double value = -1;
    cursor.Read(value, key, -1e9, 1e9);
    return value;
}

TEST_F(Manager, ChoosesTheOperator) {
    for (const int type : {16, 17, 48}) EXPECT_EQ(manager.GetTehchnicsOperator(type), &lead) << type;
    EXPECT_EQ(manager.GetTehchnicsOperator(1), &joint);
    EXPECT_FALSE(manager.GetTehchnicsOperator(2) || manager.GetTehchnicsOperator(32));
    EXPECT_TRUE(manager.Add("T={Joint={},Lead={}}") && manager.message == "Lead");
    EXPECT_TRUE(manager.Add("T={Joint={},Lead=nil} return 1, 2") && manager.message == "Joint");
    for (const char* refused : {"", "T={", "error('no')", "T=5", "T={Late={}}"})
        EXPECT_FALSE(manager.Add(refused)) << refused;
    EXPECT_FALSE(manager.AddTechnics(nullptr, "T={Lead={}}", "", nullptr, nullptr, manager.message));
    CCadGroup object;
    const Objects objects = {&object};
    Objects out;
    EXPECT_TRUE(manager.RemoveTechnics(&objects, 17, &out, nullptr, manager.message));
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 1, nullptr, nullptr, manager.message));
    joint.removes = false;
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 1, &out, nullptr, manager.message));
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 2, &out, nullptr, manager.message));
}

TEST_F(Manager, MouseIsWrittenIntoTheTable) {
    std::vector<double> read;
    lead.onAdd = [&read](CLuaAccess& c) {
        read = {Number(c, "MouseSegment"), Number(c, "MouseRatio"), Number(c, "StartX"), Number(c, "StartY")};
        return !c.m_bAutoCreate;
    };
    const std::pair<const char*, std::vector<double>> rows[] = {{"", {-1, 0.25, 7, -1}},
                                                                {"MouseSegment=3;StartX=-2;", {3, 0, -2, -1}},
                                                                {"MouseRatio=0.5;", {0, 0.5, 7, -1}}};
    for (const auto& [params, expected] : rows)
        EXPECT_TRUE(manager.Add("T={Lead={MouseRatio=0.25,StartX=7}}", params) && read == expected) << params;
    EXPECT_THROW(manager.Add("T={Lead={StartY=1/0}}"), char*);
}

// However an operator leaves, the next one, in another thread, finds the lock free, its path and no
// auto-create.
TEST_F(Manager, EveryExitRestores) {
    const std::function<bool(CLuaAccess&)> exits[] = {
        [](CLuaAccess& c) { return c.Enter("Tool") && c.Enter("Speed"); }, // a number: throws
        [](CLuaAccess& c) { return c.Enter("Tool") ? throw std::runtime_error("x") : true; },
        [](CLuaAccess& c) { return (c.m_bAutoCreate = c.Enter("Tool")) ? throw 5 : true; },
        [](CLuaAccess& c) { return c.Enter("Tool") && !c.Enter("a") && !c.Enter("b"); },
        [](CLuaAccess& c) { return c.Leave(), c.Leave(), c.Leave(), true; },
        [](CLuaAccess& c) { return c.StartCall(nullptr, "print", 0) && c.PushTable(); }};
    for (int i = 0; i < 120; ++i) {
        lead.onAdd = exits[i / 20];
        try {
            manager.Add("T={Lead={Tool={Speed=5}}}");
        } catch (...) {
        }
        lead.onAdd = [](CLuaAccess& c) -> bool { c.ErrorHandle(c.m_bAutoCreate ? "x" : "key", nullptr, ""); };
        std::thread([&] {
            try {
                ADD_FAILURE() << manager.Add("T={Lead={}}");
            } catch (char* text) {
                EXPECT_STREQ(text, "Lead.key ") << i;
            }
        }).join();
    }
}

// Texts that were seen before, and others in between, are run anew each time, and among the globals.
TEST_F(Manager, RepeatedTextsAndAMillionRefusals) {
    double count = 0;
    lead.onAdd = [&count](CLuaAccess& c) { return c.Read(count, "Count", 0, 1e9); };
    for (int i = 1; i <= 3000; ++i) {
        EXPECT_TRUE(manager.Add("n=(n or 0)+1 T={Lead={Count=n}} _ENV={}") && count == i);
        EXPECT_FALSE(manager.Add("T={} --" + std::to_string(i)));
    }
    for (int i = 0; i < 1'000'000; ++i)
        EXPECT_FALSE(manager.Add(i % 100 == 0 ? "T={" : i % 2 ? "error{}" : "return {}, {}, T.x"));
    EXPECT_TRUE(manager.Add("T={Lead={Count=7}}") && count == 7);
}

TEST_F(Manager, OperatorsMayAskTheManager) {
    CCadGroup object;
    object.SetTechnicsString("T={Joint={Depth=2}}");
    joint.onCreate = [](CLuaAccess& c) { return Number(c, "Depth") == 2 ? new CTechnics : nullptr; };
    joint.onAdd = [](CLuaAccess&) -> bool { throw 1; };
    lead.onAdd = [&](CLuaAccess& c) {
        c.m_bAutoCreate = true;
        manager.LoadTechnics(&object);
        EXPECT_THROW(manager.Add("T={Joint={}}", "StartX=1"), int);
        return c.m_bAutoCreate && Number(c, "Depth") == 1;
    };
    EXPECT_TRUE(manager.Add("T={Lead={Depth=1}}") && HasTechnics(&object));
    std::list<TestOperator> joined;
    lead.onNotify = [&](CCadObject*) {
        for (int type = 100; type < 200; ++type)
            manager.RegisterTechnicsItem(&joined.emplace_back(type, "Joined"));
        for (TestOperator& each : joined) each.onNotify = [](CCadObject*) { ADD_FAILURE(); };
    };
    manager.SingleMudifyNotify(nullptr, nullptr, {}, 0);
    EXPECT_EQ(manager.GetTehcnisItemVector()->size(), 102u);
}

struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};
struct Speed : CTechnics {
    void Write(std::ostream& out) const override { out << "Lead={Speed=" << 1.5 << "},"; }
};

TEST_F(Manager, SaveAndLoad) {
    lead.onCreate = [](CLuaAccess& c) { return Number(c, "Speed") == 1.5 ? new Speed : nullptr; };
    CCadGroup object;
    for (const char* text : {"T={", "error()", "T={Lead=nil}", "T={Lead={Speed=1.5},};"}) {
        object.SetTechnicsString(text);
        manager.LoadTechnics(&object);
    }
    EXPECT_EQ(object.GetTechnicsList().size(), 1u);
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    manager.SaveTechnics(&object);
    std::locale::global(before);
    EXPECT_EQ(object.GetTechnicsString(), "T={Lead={Speed=1.5},};");
}

TEST_F(Manager, ViewDataOfLeavesThenOfGroups) {
    CCadGroup group, hollow;
    auto* leaf = new CCadLine({0, 0}, {1, 0});
    group.PushBack(leaf);
    group.PushBack(new CCadLine({0, 0}, {2, 0}));
    Objects shown, objects = {&group, nullptr}, hollows = {&hollow};
    for (CCadObject* each : Objects{leaf, &group, &hollow}) each->AddTechnics(new CTechnics);
    joint.onNotify = [&](CCadObject* object) { shown.push_back(object); };
    for (Objects* each : {&objects, &hollows, static_cast<Objects*>(nullptr)})
        manager.UpdataViewDataNotify(each);
    EXPECT_EQ(shown, (Objects{leaf, &group})) << "without a leaf nothing is called";
}

TEST_F(Manager, CopiesShareTheInterpreter) {
    EXPECT_TRUE(manager.Add("n=7 T={Lead={}}"));
    lead.onAdd = [](CLuaAccess& cursor) { return Number(cursor, "N") == 7; };
    {
        TestManager copy(manager);
        manager.UnInitLuaEnv();
        EXPECT_TRUE(!manager.Add("T={Lead={N=7}}") && copy.Add("T={Lead={N=n}}"));
        manager = copy;
    }
    EXPECT_TRUE(manager.Add("T={Lead={N=n}}"));
    EXPECT_TRUE(manager.InitLuaEnv() && !manager.Add("T={Lead={N=n}}")) << "a fresh interpreter";
}

} // namespace
