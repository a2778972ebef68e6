#include "script/lua_fixture.h"

using namespace qev;

namespace {

struct Call : test::LuaTest {
    Call() {
        Put("function all(...) T = { n = select('#', ...), ... } return ... end\n"
            "function sum(a, b) return (a or 0) + (b or 0) end\n"
            "function fail(object) error(object, 0) end\n"
            "Tool = setmetatable({ sum = sum }, { __index = function(_, key) error('no ' .. key, 0) end })");
    }
};

TEST_F(Call, StepByStep) {
    EXPECT_STEPS(0, false, a.EndCall(), a.PushTable(), a.PushTable("x")) << "no call yet";
    for (int pass = 0; pass < 2; ++pass) {
        a.m_bAutoCreate = false;
        EXPECT_STEPS(4, true, a.StartCall(nullptr, "all", 0), a.Push(true), a.Push(-3), a.Push(0.5));
        EXPECT_STEPS(1, true, a.Push("text"));
        EXPECT_STEPS(2, true, a.Push(static_cast<const char*>(nullptr)), a.PushTable(), a.Write(1.0, "x"));
        EXPECT_STEPS(2, true, a.PushTable("named")); // its key and itself
        EXPECT_STEPS(0, true, a.Write(2.0, 1));
        for (const int growth : {-2, 0}) { // of the named one, then of the argument, which stays
            EXPECT_STEPS(0, true, a.PushTable(), a.PushTableLeave());
            EXPECT_STEPS(growth, true, a.PushTableLeave());
        }
        EXPECT_STEPS(0, false, a.PushTableLeave());
        EXPECT_TRUE(a.m_bAutoCreate);
        EXPECT_STEPS(-7, true, a.EndCall());
        EXPECT_FALSE(a.m_bAutoCreate);
        for (const char* holds :
             {"T.n == 6", "T[1] == true", "T[2] == -3", "T[3] == 0.5", "T[4] == 'text'", "T[5] == nil",
              "T[6].x == 1", "T[6].named[1] == 2", "T[6].named[0]", "T[6][1]"})
            EXPECT_HOLDS(holds); // the last two got the counts before them as their keys
    }
    EXPECT_STEPS(3, true, a.StartCall(nullptr, "all", -5), a.Push(1), a.Push(2));
    EXPECT_STEPS(-1, true, a.EndCall()) << "both results";
    EXPECT_STEPS(1, true, a.Push(1)) << "an argument of no call";
    EXPECT_STEPS(2, true, a.StartCall(nullptr, "all", 0), a.Push(1));
    lua_settop(L, 0);
    EXPECT_FALSE(a.EndCall()) << "the function is gone";
}

TEST_F(Call, LevelsAreBounded) {
    a.Enter("x");
    a.StartCall(nullptr, "all", 0);
    for (int i = 0; i < 15; ++i) ASSERT_TRUE(a.PushTable()) << i;
    EXPECT_NE(Run(0, [&] { a.PushTable(); }), "");
}

TEST_F(Call, ByFormat) {
    bool flag = false;
    int integer = 0;
    double number = 0;
    char area[] = "~~~~~~~~", *buffer = area, *copy = nullptr;
    const auto all = [&](auto... arguments) { return a.CallLuaFunc(nullptr, "all", arguments...); };
    EXPECT_STEPS(0, true, all("bids>bids", 7, -3, 0.5, "text", &flag, &integer, &number, &copy));
    EXPECT_TRUE(flag);
    EXPECT_EQ(integer, -3);
    EXPECT_EQ(number, 0.5);
    EXPECT_STREQ(copy, "text");
    std::free(copy);
    EXPECT_STEPS(0, true, a.CallLuaFunc("Tool", "sum", "id>d", 3, 0.5, &number));
    EXPECT_EQ(number, 3.5);
    EXPECT_STEPS(0, true, all("i>S", 42, &buffer, 5));
    EXPECT_EQ(std::string(area, 8), std::string("42\0\0\0~~~", 8)) << "zeros up to its size, and not further";
    EXPECT_STEPS(0, true, all("s>S", "12345", &buffer, 5));
    EXPECT_EQ(std::string(area, 8), "12345~~~") << "fits without a final zero";
    for (const char* untyped : {"id", "", static_cast<const char*>(nullptr)}) {
        EXPECT_STEPS(0, true, all(untyped, 3, 0.5));
        EXPECT_HOLDS("T.n == 0"); // no arguments without a sign
    }
}

TEST_F(Call, Faults) {
    const auto all = [&](auto... arguments) { a.CallLuaFunc(nullptr, "all", arguments...); };
    const char noReturn[] = " CallLuaFunc: Return wrong parameter.";
    double number = 0, *nowhere = nullptr;
    bool flag = false;
    char area[] = "~~~", *buffer = area, *noBuffer = nullptr, *text = nullptr;
    EXPECT_FAULT(1, " no luck", a.CallLuaFunc(nullptr, "fail", "s>", "no luck"));
    EXPECT_FAULT(1, "other no other", a.CallLuaFunc("Tool", "other", ">"));
    EXPECT_FAULT(2, " CallLuaFunc: wrong parameter.", all("ix>", 1, 2));
    EXPECT_FAULT(1, noReturn, all("i>x", 1));
    EXPECT_FAULT(1, noReturn, all("i>d", 1, nowhere));
    EXPECT_FAULT(1, noReturn, all("i>S", 1, &noBuffer, 4));
    EXPECT_FAULT(1, " Pop Failded: not a boolean.", all("i>b", 1, &flag));
    EXPECT_FAULT(1, " Pop Failded: not a number.", all("s>d", "x", &number));
    EXPECT_FAULT(1, " Pop Failded: not a String.", all("b>s", 1, &text));
    for (const int size : {4, -1})
        EXPECT_FAULT(1, " CallLuaFunc: Input string length too short.", all("s>S", "12345", &buffer, size));
    EXPECT_STREQ(area, "~~~");
    EXPECT_FAULT(2, " stack overflow", a.StartCall(nullptr, "all", INT_MAX); a.Push(1); a.EndCall());
    while (lua_checkstack(L, 1)) lua_pushnil(L);
    EXPECT_FAULT(0, " stack overflow", a.Read(flag, "x"));
}

TEST_F(Call, IdleResume) {
    lua_State* script = lua_newthread(L); // one that yields goes on
    CLuaAccess inner(script);
    luaL_loadstring(script, "Step = 1 coroutine.yield() Step = 2 coroutine.yield() Step = 3");
    for (const char* step : {"Step == 1", "Step == 2", "Step == 3"}) {
        EXPECT_TRUE(inner.CallLuaFunc(nullptr, "sum", nullptr));
        EXPECT_HOLDS(step);
    }
}

// A function of the host that is called by a script, many calls deep, calls the script in turn.
TEST_F(Call, FromWithinAScript) {
    lua_register(L, "host", [](lua_State* inner) {
        double total = 0;
        CLuaAccess(inner).CallLuaFunc(nullptr, "sum", "dd>d", 1.0, 2.0, &total);
        lua_pushnumber(inner, total);
        return 1;
    });
    Put("local t = setmetatable({}, { __index = function(t, n) return n == 0 and host() or t[n - 1] end }) "
        "table.sort({ 3, 1, 2 }, function(a, b) T = t[20] return a < b end)");
    EXPECT_HOLDS("T == 3");
}

} // namespace
