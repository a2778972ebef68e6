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
        {"an exception", [](CLuaAccess& c) { return c.Enter("Tool") ? throw 5 : true; }}};
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

// An operator leaves its cursor anywhere, or loads other objects; the next one finds its own table all the
// same.
TEST_F(Manager, LoadingOperatorsDoNotMeet) {
    const std::pair<const char*, std::function<void(CLuaAccess&)>> ways[] = {
        {"too few Leaves", [](CLuaAccess& c) { c.Enter("Tool"); }},
        {"too many Leaves", [](CLuaAccess& c) { c.Leave(), c.Leave(), c.Leave(), c.Leave(); }},
        {"auto-create on", [](CLuaAccess& c) { c.m_bAutoCreate = true; }},
        {"a call not made", [](CLuaAccess& c) { c.StartCall(nullptr, "print", 0), c.PushTable(); }}};
    CCadGroup object, inner;
    for (const bool isNested : {false, true})
        for (const auto& [name, leave] : ways) {
            object.SetTechnicsString("T={Lead={Tool={}},Joint={Depth=2}}");
            inner.SetTechnicsString("T={Lead={},Joint={Depth=3}}");
            std::vector<double> depths;
            int level = 0;
            lead.onCreate = [&, leave = leave](CLuaAccess& c) {
                for (int i = 0; i < 12; ++i) c.m_bAutoCreate = true, c.Enter("Deep");
                if (++level == 1 && isNested) manager.LoadTechnics(&inner);
                for (int i = 0; i < 12; ++i) c.Leave();
                leave(c);
                return nullptr;
            };
            joint.onCreate = [&](CLuaAccess& c) {
                depths.push_back(c.m_bAutoCreate ? -1 : Number(c, "Depth"));
                return nullptr;
            };
            EXPECT_NO_THROW(manager.LoadTechnics(&object)) << name;
            EXPECT_EQ(depths, isNested ? std::vector<double>({3, 2}) : std::vector<double>({2})) << name;
        }
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
struct Writing : CTechnics {
    explicit Writing(std::function<void(std::ostream&)> itsWrite) : write(std::move(itsWrite)) {
        m_nType = 7;
    }
    void Write(std::ostream& out) const override { write(out); }
    std::function<void(std::ostream&)> write;
};
CTechnics* Text(const char* text) {
    return new Writing([text](std::ostream& out) { out << text; });
}

TEST_F(Manager, SaveAndLoad) {
    lead.onCreate = [](CLuaAccess& c) {
        return Number(c, "Speed") == 1.5 ? Text("Lead={Speed=1.5},") : nullptr;
    };
    CCadGroup object;
    for (const char* text : {"T={", "error()", "T={Lead=nil}", "T={Lead={Speed=1.5},};"}) {
        object.SetTechnicsString(text);
        manager.LoadTechnics(&object);
    }
    EXPECT_EQ(object.GetTechnicsList().size(), 1u);
    manager.SaveTechnics(&object);
    EXPECT_EQ(object.GetTechnicsString(), "T={Lead={Speed=1.5},};");
    manager.SaveTechnics(nullptr);
}

TEST_F(Manager, SavesWhatCanBeRead) {
    const struct {
        const char *name, *first, *second, *saved;
        bool isFine = true;
    } cases[] = {{"as they are", "A={},", "B={},\n", "T={A={},B={},\n};"},
                 {"a comma is missing", "A={}", "B={} ", "T={A={},B={} ,};"},
                 {"only one is missing", "A={},", "B={}", "T={A={},B={}};"},
                 {"commas would change it", "A=f", "{1},", "T={A=f{1},};"},
                 {"nothing helps", "A={", "B=1", "T={A={B=1};", false},
                 {"nothing written", "", "A={}", "T={A={}};"}};
    for (const auto& each : cases) {
        CCadGroup object;
        for (const char* text : {each.first, each.second}) object.AddTechnics(Text(text));
        manager.SaveTechnics(&object);
        EXPECT_EQ(object.GetTechnicsString(), each.saved) << each.name;
        EXPECT_EQ(manager.GetLastErrorText().empty(), each.isFine) << each.name << manager.GetLastErrorText();
    }
}

// What one technics does to its stream is its own matter: the next one writes plainly, and where a text
// cannot be stored the old one stays.
TEST_F(Manager, ATechnicsSpoilsItsOwnStream) {
    const struct {
        const char* name;
        std::function<void(std::ostream&)> write;
        const char *saved, *error;
    } cases[] = {
        {"hex", [](std::ostream& out) { out << std::hex; }, "T={20};", ""},
        {"a locale",
         [](std::ostream& out) {
             out.imbue({std::locale(), new Comma});
         },
         "T={20};", ""},
        {"a null", [](std::ostream& out) { out << static_cast<const char*>(nullptr); }, "old", "type 7"},
        {"a failure", [](std::ostream& out) { out.setstate(std::ios::failbit); }, "old", "type 7"},
        {"a zero byte", [](std::ostream& out) { out << '\0'; }, "old", "type 7"}};
    for (const auto& each : cases) {
        CCadGroup object;
        object.SetTechnicsString("old");
        object.AddTechnics(new Writing(each.write));
        object.AddTechnics(new Writing([](std::ostream& out) { out << 20; }));
        manager.SaveTechnics(&object);
        EXPECT_EQ(object.GetTechnicsString(), each.saved) << each.name;
        EXPECT_NE(manager.GetLastErrorText().find(each.error), std::string::npos) << each.name;
    }
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

TEST_F(Manager, ViewDataOfWhatIsLeftOnTheList) {
    auto* const group = new CCadGroup;
    CCadLine first({0, 0}, {1, 0});
    group->PushBack(new CCadLine({0, 0}, {2, 0}));
    Objects objects = {&first, group};
    for (CCadObject* each : Objects{&first, group, group->GetMembers()->front()})
        each->AddTechnics(new CTechnics);
    int calls = 0;
    lead.onNotify = [&](CCadObject*) {
        ++calls;
        objects.clear();
        delete group;
    };
    joint.onNotify = [](CCadObject*) { ADD_FAILURE() << "the object is off the list"; };
    manager.UpdataViewDataNotify(&objects);
    EXPECT_EQ(calls, 1);
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
