// Memory refused to the program and to its interpreters, whose blocks come from operator new as well.
#include <memory>

#include <qev/qev.h>

#include "script/lua_fixture.h"
#include "support/refuse_memory.h"

using namespace qev;

// The program's luaL_newstate comes first.
extern "C" QEV_EXPORT lua_State* luaL_newstate() {
    return lua_newstate(test::Memory::AllocateByNew, nullptr);
}

namespace {

void UseAccess(CLuaAccess access) {
    access.m_bAutoCreate = true;
    double number = 0;
    char text[4], *buffer = text;
    access.Read(number, "a name that nobody has used", 0, 9);
    access.Read(text, sizeof text, 1);
    access.Write("a text that nobody has written", "a new key");
    for (int i = 2; i < 20; ++i) access.Write(1.0, i);
    access.Enter("created");
    access.Write(true, "deep inside");
    access.StartCall(nullptr, "f", 2);
    access.PushTable();
    access.Write("y", "x");
    access.PushTable("inner table");
    access.EndCall();
    access.CallLuaFunc("string", "rep", "si>S", "z", 4, &buffer, 4);
    access.CallLuaFunc("math", "abs", "d>S", -0.5, &buffer, 4);
}

void RunScript() {
    CLuaScriptEngine engine, other;
    EXPECT_EQ(engine.GetLuaState() == nullptr, engine.GetLuaAccess() == nullptr);
    if (!engine.GetLuaState() || !other.GetLuaState()) return;
    engine.DoFile("missing.lua");
    engine.DoString("function f(t) return 'r' .. t.x, 5 end return { 7, a = { b = {} }, c = 'text' }");
    other.DoString("return { a = { c = 5 } }");
    test::Thrown([&] { CopyLuaTable(engine.GetLuaState(), other.GetLuaState()); });
    test::Thrown([&] { UseAccess(CLuaAccess(engine.GetLuaState())); });
}

void Subscribe() {
    const auto ignore = [](const char*, void*, int, const char*) { return 0; };
    UnsubscribeMsgTopic(SubscribeMsgTopic("A topic of thirty characters", ignore, nullptr));
}

void SortTestData() {
    CCadGroup target;
    CZoneManager zones;
    zones.SetTargetGroup(&target);
    CTestDataHandle::SetIgnoreList({"An ignored test's name"});
    for (int i = 0; i < 2; ++i) {
        auto group = std::make_unique<CCadGroup>();
        group->SetKey("TestName", "Another test's long name");
        CTestDataHandle::AddToZoneManager(group.release(), &zones);
    }
}

TEST(Refusal, LosesNothing) {
    for (const auto call : {RunScript, Subscribe, SortTestData}) {
        call(); // what lasts as long as the program is made once
        test::ExpectNothingLeaksWhenRefused(call);
    }
    CTestDataHandle::SetIgnoreList({});
}

} // namespace
