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
    EXPECT_EQ(GetTechnicsManager(), &manager) << "the first that was made";
    EXPECT_EQ(manager.GetTehchnicsOperator(1), &joint);
    for (const int type : {16, 17, 48}) EXPECT_EQ(manager.GetTehchnicsOperator(type), &lead) << type;
    for (const int type : {2, 32}) EXPECT_EQ(manager.GetTehchnicsOperator(type), nullptr) << type;
    EXPECT_FALSE(manager.RemoveTechnics(nullptr, 2, nullptr, nullptr, manager.message));
}

TEST_F(Manager, TheFirstOperatorWithATableAdds) {
    EXPECT_TRUE(manager.Add("T={Joint={},Lead={}}"));
    EXPECT_EQ(manager.message, "Lead");
    EXPECT_TRUE(manager.Add("T={Joint={},Lead=nil} return 1, 2"));
    EXPECT_EQ(manager.message, "Joint");
    EXPECT_FALSE(manager.Add("T={Late={}}"));
    EXPECT_FALSE(manager.Add("T=5"));
    EXPECT_FALSE(manager.AddTechnics(nullptr, "T={Lead={}}", "", nullptr, nullptr, manager.message));
}

TEST_F(Manager, NothingInATextIsPassedOver) {
    ASSERT_TRUE(manager.SetDataOnly(true));
    CCadGroup object;
    const Objects objects = {&object};
    const auto answer = [&](const char* text) {
        std::string message;
        const bool added = manager.AddAllTechnics(&objects, text, "", nullptr, nullptr, message);
        EXPECT_EQ(manager.KnowsTechnics(text), added) << text;
        return added ? message : manager.GetLastErrorText();
    };
    struct {
        const char *text, *answer;
    } const cases[] = {
        {"T={Joint={},Lead={}}", "Lead\nJoint"},
        {"T={Joint={}}", "Joint"},
        {"T={Joint={},Laed={}}", "there is no technics Laed; loaded are Lead, Joint"},
        {"T={Joint={},Joint={}}", "technics: Joint is there twice"},
        {"T={Joint={},Lead=5}", "Lead = 5 is not a table of parameters"},
        {"T={Joint={}} T={Lead={}}", "technics: T is there twice"},
        {"T={}", "the text holds no technics, as T={Name={}} does"},
        {"T={\nJoint=?}", "technics:2: a value expected near '?}'"},
    };
    for (const char* time : {"first", "again"})
        for (const auto& [text, expected] : cases) EXPECT_EQ(answer(text), expected) << text << time;
    lead.onAdd = [](CLuaAccess&) { return false; };
    std::string message;
    EXPECT_FALSE(manager.AddAllTechnics(&objects, cases[0].text, "", nullptr, nullptr, message));
    EXPECT_EQ(message, "Lead\nJoint") << "one refusal does not keep the others from adding";
}

TEST_F(Manager, MouseIsWrittenIntoTheTable) {
    std::vector<double> read;
    lead.onAdd = [&read](CLuaAccess& c) {
        read = {Number(c, "MouseSegment"), Number(c, "MouseRatio"), Number(c, "StartX"), Number(c, "StartY")};
        return !c.m_bAutoCreate;
    };
    EXPECT_TRUE(manager.Add("T={Lead={MouseRatio=0.25,StartY=7}}", "MouseSegment=3;StartX=-2;"));
    EXPECT_EQ(read, (std::vector<double>{3, 0, -2, 7}));
    EXPECT_THROW(manager.Add("T={Lead={StartY=1/0}}"), char*);
}

// Whatever refused texts leave, and others in between: texts that were seen before are run anew each time,
// and among the globals. A long one has the others dropped, of which nothing is left then.
TEST_F(Manager, RepeatedTextsAndAMillionRefusals) {
    for (int i = 0; i < 1'000'000; ++i)
        ASSERT_FALSE(manager.Add(i % 100 == 0 ? "T={" : i % 2 ? "error{}" : "return {}, {}, T.x")) << i;
    EXPECT_FALSE(manager.Add("w=setmetatable({}, {__mode='k'})")) << "has no T";
    double count = 0;
    lead.onAdd = [&count](CLuaAccess& c) { return c.Read(count, "Count", 0, 1e9); };
    for (int i = 1; i <= 3000; ++i) {
        ASSERT_TRUE(manager.Add("n=(n or 0)+1 T={Lead={Count=n}} _ENV={}"));
        ASSERT_EQ(count, i);
        ASSERT_FALSE(manager.Add("w[debug.getinfo(1).func]=1 T={} --" + std::to_string(i)));
    }
    EXPECT_TRUE(manager.Add(std::string(1 << 20, ' ') + "collectgarbage()T=not next(w)and{Lead={Count=0}}"));
}

// An operator loads other objects, of another text or its own, and leaves its cursor anywhere, with
// auto-create on or a call not made; the next one finds its own table all the same, and as the text has it.
TEST_F(Manager, LoadingOperatorsDoNotMeet) {
    CCadGroup object, inner;
    object.SetTechnicsString("T={Lead={},Joint={Depth=2}}");
    bool isData = false;
    int calls = 0;
    lead.onCreate = [&](CLuaAccess& c) {
        const int call = ++calls;
        if (call % 2 == 1 && isData) manager.LoadTechnics(&inner); // before anything is written
        for (int i = 0; i < 12; ++i) c.m_bAutoCreate = true, c.Enter("Deep");
        if (call % 2 == 1 && !isData) manager.LoadTechnics(&inner);
        for (int i = 0; i < 4 * call; ++i) c.Leave(); // too few, then too many
        if (call == 3 && !isData) c.StartCall(nullptr, "print", 0), c.PushTable();
        return nullptr;
    };
    std::vector<double> depths;
    joint.onCreate = [&](CLuaAccess& c) {
        depths.push_back(c.m_bAutoCreate ? -1 : Number(c, "Depth"));
        c.Write(9.0, "Depth");
        return nullptr;
    };
    for (const double depth : {2, 3, 2, 3}) {
        inner.SetTechnicsString(depth == 2 ? "T={Lead={},Joint={Depth=2}}" : "T={Lead={},Joint={Depth=3}}");
        calls = 0, depths.clear();
        for (int i = 0; i < 3; ++i) manager.LoadTechnics(&object);
        EXPECT_EQ(depths, (std::vector<double>{depth, 2, depth, 2, depth, 2})) << isData;
        if (depth == 3) manager.SetDataOnly(isData = true);
    }
}

template <class Value>
auto Says(Value value) {
    return [value](std::ostream& out) { out << value; };
}

// Has a stream write numbers as some languages do.
void SayCommas(std::ostream& out) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    out.imbue(std::locale(std::locale::classic(), new Comma));
}

// A missing comma is mended where that helps. What one technics does to its stream is its own matter: the
// next one writes plainly, and where a text cannot be stored the old one stays.
TEST_F(Manager, SavesWhatCanBeRead) {
    const char* const null = nullptr;
    const struct {
        const char* name;
        std::function<void(std::ostream&)> first, second;
        const char *saved, *error;
    } cases[] = {
        {"as they are", Says("A={},"), Says("B={},\n"), "T={A={},B={},\n};", ""},
        {"a comma is missing", Says("A={}"), Says("B={} "), "T={A={},B={} ,};", ""},
        {"commas would change it", Says("A=f"), Says("{1},"), "T={A=f{1},};", ""},
        {"nothing helps", Says("A={"), Says("B=1"), "T={A={B=1};", "cannot be read"},
        {"hex", [](std::ostream& out) { out << std::hex; }, Says(20), "T={20};", ""},
        {"commas in numbers", SayCommas, Says(20.5), "T={20.5};", ""},
        {"a null", Says(null), Says(20), "old", "type 7"},
        {"failed", [](std::ostream& out) { out.setstate(std::ios::failbit); }, Says(20), "old", "type 7"},
        {"a zero byte", Says('\0'), Says(20), "old", "type 7"}};
    for (const auto& each : cases) {
        CCadGroup object;
        object.SetTechnicsString("old");
        for (const auto& write : {each.first, each.second}) object.AddTechnics(new Writing(write));
        manager.SaveTechnics(&object);
        EXPECT_EQ(object.GetTechnicsString(), each.saved) << each.name;
        EXPECT_EQ(manager.GetLastErrorText().empty(), *each.error == '\0') << each.name;
        EXPECT_NE(manager.GetLastErrorText().find(each.error), std::string::npos) << each.name;
    }
}

TEST_F(Manager, TellsOfChangesAndKeepsTheHostsValues) {
    int calls = 0;
    for (TestOperator* each : {&lead, &joint}) each->onNotify = [&](CCadObject*) { ++calls; };
    manager.MultipleMudifyNotify(nullptr, nullptr, 0);
    EXPECT_EQ(calls, 2);
    manager.SetTarvelEnvContext({1, 2, 3, "four"});
    EXPECT_EQ(manager.GetTarvelEnvContext().third, 3u);
    EXPECT_EQ(manager.GetTarvelEnvContext().fourth, CString("four"));
    manager.SetTarvelEnvContext({});
}

TEST_F(Manager, ViewDataOfLeavesThenOfGroups) {
    CCadGroup group;
    auto* leaf = new CCadLine({0, 0}, {1, 0});
    group.PushBack(leaf);
    group.PushBack(new CCadLine({0, 0}, {2, 0}));
    Objects shown, objects = {&group, nullptr};
    for (CCadObject* each : Objects{leaf, &group}) each->AddTechnics(new CTechnics);
    joint.onNotify = [&](CCadObject* object) { shown.push_back(object); };
    manager.UpdataViewDataNotify(&objects);
    EXPECT_EQ(shown, (Objects{leaf, &group}));
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

// Each call deletes the next object and puts another in its place, in a long list or in a group on a short
// one: that one is not touched any more, nor is the other one.
TEST_F(Manager, ViewDataOfWhatIsNotDestroyed) {
    for (const bool isGrouped : {false, true}) {
        CCadGroup group;
        Objects own = {&group};
        Objects& lines = isGrouped ? group.GetObjectsList() : own = {};
        const auto newLine = [] {
            auto* const line = new CCadLine({0, 0}, {1, 0});
            line->AddTechnics(new CTechnics);
            return line;
        };
        for (int i = 0; i < 3000; ++i) lines.push_back(newLine());
        auto next = lines.begin();
        lead.onNotify = [&](CCadObject* object) {
            ASSERT_TRUE(next != lines.end());
            ASSERT_EQ(object, *next++);
            delete std::exchange(*next++, newLine());
        };
        manager.UpdataViewDataNotify(&own);
        EXPECT_TRUE(next == lines.end()) << isGrouped;
        if (!isGrouped) group.GetObjectsList().swap(own);
    }
}

// Objects that give their places to others are not touched any more: at once in a short list or with its last
// one, soon inside of a long one. So many are left at the end.
TEST_F(Manager, ViewDataOfAListThatKeepsItsLength) {
    for (const auto& [length, left, most] : {std::tuple{5, 1, 2}, {5000, 1, 6}, {5000, 0, 1}}) {
        std::list<CCadLine> lines;
        Objects objects;
        for (int i = 0; i < length; ++i) {
            objects.push_back(&lines.emplace_back(math::DPOINT2{0, 0}, math::DPOINT2{1, 0}));
            objects.back()->AddTechnics(new CTechnics);
        }
        CCadLine other({0, 0}, {2, 0});
        int calls = 0;
        const auto end = std::prev(objects.end(), left);
        lead.onNotify = [&](CCadObject*) {
            if (++calls == 1) std::fill(++objects.begin(), end, &other);
        };
        manager.UpdataViewDataNotify(&objects);
        EXPECT_LE(calls, most) << length << " objects, " << left << " left at the end";
    }
}

TEST_F(Manager, NothingToDo) {
    EXPECT_FALSE(manager.RemoveTechnics(nullptr, 1, nullptr, nullptr, manager.message)) << "no list for it";
    EXPECT_NO_THROW(manager.LoadTechnics(nullptr));
    EXPECT_NO_THROW(manager.SaveTechnics(nullptr));
    EXPECT_NO_THROW(manager.UpdataViewDataNotify(nullptr));
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
}

} // namespace
