// Memory refused to the program and to its interpreters, whose blocks come from operator new as well.
#include <cmath>
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
    std::vector<CLuaAccess::FieldInfo> fields;
    access.CollectFields(fields);
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
    for (int table = 0; table < 2; ++table) access.PushTableLeave();
    access.EndCall();
    access.CallLuaFunc("string", "rep", "si>S", "z", 4, &buffer, 4);
    access.CallLuaFunc("math", "abs", "d>S", -0.5, &buffer, 4);
}

double RunScript() {
    CLuaScriptEngine engine, other;
    EXPECT_EQ(engine.GetLuaState() == nullptr, engine.GetLuaAccess() == nullptr);
    const double couldNot = std::nan("");
    if (!engine.GetLuaState() || !other.GetLuaState()) return couldNot;
    engine.DoFile("missing.lua");
    const int ran =
        engine.DoString("function f(t) return 'r' .. t.x, 5 end return { 7, a = { b = {} }, c = 'text' }");
    const int otherRan = other.DoString("return { a = { c = 5 } }");
    std::string thrown = test::Thrown([&] { CopyLuaTable(engine.GetLuaState(), other.GetLuaState()); });
    thrown += test::Thrown([&] { UseAccess(CLuaAccess(engine.GetLuaState())); });
    EXPECT_TRUE(thrown.empty() || thrown.find("not enough memory") != std::string::npos) << thrown;
    return ran + otherRan != 0 || !thrown.empty() ? couldNot : lua_gettop(engine.GetLuaState());
}

TEST(Refusal, LosesNothing) {
    test::ExpectNothingLeaksWhenRefused(RunScript);
}

} // namespace
