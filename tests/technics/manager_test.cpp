#include <future>
#include <locale>

#include <gtest/gtest.h>

#include "technics/test_operator.h"

namespace {

using namespace qev;
using namespace test;

// Three operators, of which the last is not taken: there is one of its type before it.
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

TEST_F(Manager, OperatorOfAType) {
    EXPECT_EQ(manager.GetTehchnicsOperator(1), &joint);
    for (const int type : {16, 17, 48}) EXPECT_EQ(manager.GetTehchnicsOperator(type), &lead) << type;
    for (const int type : {2, 32}) EXPECT_EQ(manager.GetTehchnicsOperator(type), nullptr) << type;
}

TEST_F(Manager, TheFirstOperatorWithATableAdds) {
    const std::pair<const char*, const char*> cases[] = {{"T={Joint={},Lead={}}", "Lead"},
                                                         {"T={Joint={},Lead=nil} return 1, 2", "Joint"},
                                                         {"T={Late={}}", ""},
                                                         {"T=5", ""},
                                                         {"T={", ""},
                                                         {"error('no')", ""},
                                                         {"", ""}};
    for (const auto& [text, whoAdds] : cases) {
        manager.message.clear();
        EXPECT_EQ(manager.Add(text), *whoAdds != '\0') << text;
        EXPECT_EQ(manager.message, whoAdds) << text;
    }
    EXPECT_FALSE(manager.AddTechnics(nullptr, "T={Lead={}}", "", nullptr, nullptr, manager.message));
}

TEST_F(Manager, RemovesWhenTheOperatorDoes) {
    CCadGroup object;
    const Objects objects = {&object};
    Objects out;
    EXPECT_TRUE(manager.RemoveTechnics(&objects, 17, &out, nullptr, manager.message));
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 1, nullptr, nullptr, manager.message)) << "no list";
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 2, &out, nullptr, manager.message)) << "no operator";
    joint.removes = false;
    EXPECT_FALSE(manager.RemoveTechnics(&objects, 1, &out, nullptr, manager.message)) << "it says no";
}

TEST_F(Manager, MouseIsWrittenIntoTheTable) {
    std::vector<double> read;
    lead.onAdd = [&read](CLuaAccess& c) {
        read = {Number(c, "MouseSegment"), Number(c, "MouseRatio"), Number(c, "StartX"), Number(c, "StartY")};
        return !c.m_bAutoCreate;
    };
    const std::pair<const char*, std::vector<double>> cases[] = // -1 where the table has no number
        {{"", {-1, 0.25, 7, -1}},
         {"MouseSegment=3;StartX=-2;", {3, 0, -2, -1}},
         {"MouseRatio=0.5;", {0, 0.5, 7, -1}}};
    for (const auto& [params, expected] : cases) {
        EXPECT_TRUE(manager.Add("T={Lead={MouseRatio=0.25,StartX=7}}", params)) << params;
        EXPECT_EQ(read, expected) << params;
    }
    EXPECT_THROW(manager.Add("T={Lead={StartY=1/0}}"), char*);
}

// What the next operator finds, in another thread: the error text that its cursor composes shows the path.
std::string FindNext(TestManager& manager, TestOperator& next) {
    next.onAdd = [](CLuaAccess& c) -> bool { c.ErrorHandle(c.m_bAutoCreate ? "on" : "off", nullptr, ""); };
    const auto find = [&]() -> std::string {
        try {
            return manager.Add("T={Lead={}}") ? "added" : "refused";
        } catch (char* text) {
            return text;
        }
    };
    return std::async(std::launch::async, find).get();
}

// However an operator leaves, the lock is free, the path is the operator's own and auto-create is off. Often,
// so that a value left on the stack each time would fill it.
TEST_F(Manager, EveryExitRestores) {
    const std::pair<const char*, std::function<bool(CLuaAccess&)>> exits[] = {
        {"the cursor throws inside a table",
         [](CLuaAccess& c) { return c.Enter("Tool") && c.Enter("Speed"); }},
        {"an exception", [](CLuaAccess& c) { return c.Enter("Tool") ? throw 5 : true; }},
        {"auto-create on", [](CLuaAccess& c) { return c.m_bAutoCreate = true; }},
        {"too few Leaves", [](CLuaAccess& c) { return c.Enter("Tool"); }},
        {"too many Leaves", [](CLuaAccess& c) { return c.Leave(), c.Leave(), c.Leave(), true; }},
        {"a call not made", [](CLuaAccess& c) { return c.StartCall(nullptr, "print", 0) && c.PushTable(); }}};
    for (const auto& [name, leave] : exits)
        for (int i = 0; i < 20; ++i) {
            lead.onAdd = leave;
            try {
                manager.Add("T={Lead={Tool={Speed=5}}}");
            } catch (...) { // of whatever kind
            }
            EXPECT_EQ(FindNext(manager, lead), "Lead.off ") << name;
        }
}

// Texts that were seen before, and others in between, are run anew each time, and among the globals.
TEST_F(Manager, RepeatedTextsAndAMillionRefusals) {
    double count = 0;
    lead.onAdd = [&count](CLuaAccess& c) { return c.Read(count, "Count", 0, 1e9); };
    for (int i = 1; i <= 3000; ++i) {
        ASSERT_TRUE(manager.Add("n=(n or 0)+1 T={Lead={Count=n}} _ENV={}"));
        ASSERT_EQ(count, i);
        ASSERT_FALSE(manager.Add("T={} --" + std::to_string(i)));
    }
    for (int i = 0; i < 1'000'000; ++i)
        ASSERT_FALSE(manager.Add(i % 100 == 0 ? "T={" : i % 2 ? "error{}" : "return {}, {}, T.x")) << i;
    EXPECT_TRUE(manager.Add("T={Lead={Count=7}}"));
    EXPECT_EQ(count, 7);
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
        EXPECT_TRUE(c.m_bAutoCreate);
        return Number(c, "Depth") == 1;
    };
    EXPECT_TRUE(manager.Add("T={Lead={Depth=1}}"));
    EXPECT_TRUE(HasTechnics(&object));
}

TEST_F(Manager, OperatorsThatJoinAWalkAreNotCalledInIt) {
    std::list<TestOperator> joined; // enough to move the manager's list
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
    manager.UpdataViewDataNotify(&objects);
    EXPECT_EQ(shown, (Objects{leaf, &group}));
    shown.clear();
    manager.UpdataViewDataNotify(&hollows);
    manager.UpdataViewDataNotify(nullptr);
    EXPECT_EQ(shown, Objects()) << "without a leaf nobody is called";
}

TEST_F(Manager, CopiesShareTheInterpreter) {
    lead.onAdd = [](CLuaAccess& cursor) { return Number(cursor, "N") == 7; };
    EXPECT_TRUE(manager.Add("n=7 T={Lead={N=7}}"));
    {
        TestManager copy(manager);
        manager.UnInitLuaEnv();
        EXPECT_FALSE(manager.Add("T={Lead={N=7}}")) << "it has let go";
        EXPECT_TRUE(copy.Add("T={Lead={N=n}}"));
        manager = copy;
    }
    EXPECT_TRUE(manager.Add("T={Lead={N=n}}")) << "the copy is gone";
    EXPECT_TRUE(manager.InitLuaEnv());
    EXPECT_FALSE(manager.Add("T={Lead={N=n}}")) << "a fresh interpreter";
}

} // namespace
