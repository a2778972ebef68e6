#include <cstring>

#include "script/lua_fixture.h"

namespace {

using namespace qev;

class Call : public test::LuaTest {
protected:
    Call() {
        Run("function all(...) Got = { n = select('#', ...), ... } return ... end\n"
            "function sum(a, b) return (a or 0) + (b or 0) end\n"
            "function fail() error('no luck', 0) end\n"
            "Tool = setmetatable({ sum = sum }, { __index = function(_, key) error('no ' .. key, 0) end })");
    }
};

TEST_F(Call, StepByStep) {
    CLuaAccess access(L);
    EXPECT_FALSE(Do([&] { return access.EndCall() || access.PushTable() || access.PushTable("x"); }));
    EXPECT_TRUE(Do([&] { return access.Push(1) && access.PushTableLeave(); })) << "nothing is pushed yet";
    for (int pass = 0; pass < 2; ++pass) {
        access.m_bAutoCreate = false;
        EXPECT_TRUE(Do([&] { return access.StartCall(nullptr, "all", 0); }, 1));
        EXPECT_TRUE(access.m_bAutoCreate);
        access.Push(true);
        access.Push(-3);
        access.Push(0.5);
        access.Push("text");
        access.Push(static_cast<const char*>(nullptr));
        EXPECT_TRUE(Do([&] { return access.PushTable() && access.Write(1.0, "x"); }, 1));
        EXPECT_TRUE(Do([&] { return access.PushTable("named") && access.Write(2.0, 1); }, 2));
        EXPECT_TRUE(Do([&] { return access.PushTable() && access.PushTableLeave(); }));
        EXPECT_TRUE(Do([&] { return access.PushTableLeave(); }, -2));
        EXPECT_TRUE(Do([&] { return access.PushTable() && access.PushTableLeave(); }));
        EXPECT_TRUE(Do([&] { return access.PushTableLeave(); }));
        EXPECT_FALSE(Do([&] { return access.PushTableLeave(); })) << "no table is open";
        EXPECT_TRUE(Do([&] { return access.EndCall(); }, -7));
        EXPECT_FALSE(access.m_bAutoCreate);
        EXPECT_TRUE(
            Holds("Got.n == 6 and Got[1] == true and Got[2] == -3 and Got[3] == 0.5 and Got[4] == 'text'"));
        EXPECT_TRUE(Holds("Got[6].x == 1 and Got[6].named[1] == 2 and Got[6].named[0] and Got[6][1]"))
            << "unnamed tables are keyed by what was pushed before";
    }
    EXPECT_TRUE(access.StartCall(nullptr, "all", -5) && access.Push(1) && access.Push(2));
    EXPECT_TRUE(Do([&] { return access.EndCall(); }, -1)) << "all results";
}

TEST_F(Call, PushLevelsAreBounded) {
    CLuaAccess access(L);
    access.StartCall(nullptr, "all", 0);
    for (int i = 0; i < 15; ++i) ASSERT_TRUE(access.PushTable());
    EXPECT_NE(Fault([&] { access.PushTable(); }), "");
    for (int i = 0; i < 15; ++i) ASSERT_TRUE(access.PushTableLeave());
    EXPECT_TRUE(access.EndCall());
    for (int i = 0; i < 16; ++i) access.Enter("x");
    EXPECT_NE(Fault([&] { access.PushTable("x"); }), "") << "levels entered count too";
}

TEST_F(Call, ByFormat) {
    CLuaAccess access(L);
    bool flag = false;
    int integer = 0;
    double number = 0;
    char *copy = nullptr, *digits = nullptr;
    char area[] = "~~~~~~~~";
    char* buffer = area;
    const auto values = [&] {
        return access.CallLuaFunc(nullptr, "all", "bidsis>bidsSs", 7, -3, 0.5, "text", 42, "abc", &flag,
                                  &integer, &number, &copy, &buffer, 5, &digits);
    };
    EXPECT_TRUE(Do(values));
    EXPECT_TRUE(flag && integer == -3 && number == 0.5);
    EXPECT_STREQ(copy, "text");
    EXPECT_STREQ(digits, "abc");
    EXPECT_EQ(std::string(area, 8), std::string("42\0\0\0~~~", 8)) << "zeros up to its size, and not further";
    std::free(copy);
    std::free(digits);
    EXPECT_TRUE(Do([&] { return access.CallLuaFunc("Tool", "sum", "id>d", 3, 0.5, &number); })
                && number == 3.5);
    for (const char* untyped : {"id", "", static_cast<const char*>(nullptr)})
        EXPECT_TRUE(Do([&] { return access.CallLuaFunc(nullptr, "all", untyped, 3, 0.5); })
                    && Holds("Got.n == 0"));
    EXPECT_TRUE(Do([&] { return access.CallLuaFunc(nullptr, "all", "s>S", "12345", &buffer, 5); }));
    EXPECT_EQ(std::string(area, 8), "12345~~~") << "fits without a final zero";
}

TEST_F(Call, Faults) {
    CLuaAccess access(L);
    double number = 0;
    bool flag = false;
    char* text = nullptr;
    char area[4] = "~~~";
    char* buffer = area;
    char* noBuffer = nullptr;
    double* nowhere = nullptr;
    const auto call = [&](const char* table, const char* func, const char* format, auto... rest) {
        return [=, &access] { access.CallLuaFunc(table, func, format, rest...); };
    };
    EXPECT_EQ(Fault(call(nullptr, "fail", ">"), 1), " no luck");
    EXPECT_EQ(Fault(call("Tool", "other", ">"), 1), "other no other");
    EXPECT_EQ(Fault(call(nullptr, "all", "ix>", 1, 2), 2), " CallLuaFunc: wrong parameter.");
    EXPECT_EQ(Fault(call(nullptr, "all", "i>x", 1), 1), " CallLuaFunc: Return wrong parameter.");
    EXPECT_EQ(Fault(call(nullptr, "all", "i>b", 1, &flag), 1), " Pop Failded: not a boolean.");
    EXPECT_EQ(Fault(call(nullptr, "all", "s>d", "x", &number), 1), " Pop Failded: not a number.");
    EXPECT_EQ(Fault(call(nullptr, "all", "b>s", 1, &text), 1), " Pop Failded: not a String.");
    EXPECT_EQ(Fault(call(nullptr, "all", "s>S", "12345", &buffer, 4), 1),
              " CallLuaFunc: Input string length too short.");
    EXPECT_EQ(Fault(call(nullptr, "all", "s>S", "", &buffer, -1), 1),
              " CallLuaFunc: Input string length too short.");
    EXPECT_EQ(Fault(call(nullptr, "all", "i>d", 1, nowhere), 1), " CallLuaFunc: Return wrong parameter.");
    EXPECT_EQ(Fault(call(nullptr, "all", "i>S", 1, &noBuffer, 4), 1),
              " CallLuaFunc: Return wrong parameter.");
    EXPECT_STREQ(area, "~~~");
    Run("function fail() error({}) end");
    EXPECT_EQ(Fault(call(nullptr, "fail", ">"), 1), " (error object is a table value)");
    EXPECT_EQ(Fault([&] { access.StartCall(nullptr, "all", INT_MAX), access.EndCall(); }, 1),
              " stack overflow");
    access.StartCall(nullptr, "all", 0);
    access.Push(1);
    lua_settop(L, 0);
    EXPECT_FALSE(access.EndCall()) << "the function is gone";
}

// Two million calls on one cursor, whatever state the idle resume finds.
TEST_F(Call, StackStaysWhereItWas) {
    lua_pushinteger(L, 1);
    CLuaAccess access(L);
    const auto calls = [&](int count) {
        for (int i = 0; i < count; ++i) access.StartCall(nullptr, "sum", 0), access.EndCall();
        return 0;
    };
    Do([&] { return calls(2000000); });
    lua_settop(L, 0);
    Do([&] { return calls(2); });
}

TEST_F(Call, IdleResume) {
    CLuaAccess access(L);
    luaL_loadstring(L, "Ran = true return 1, 2");
    EXPECT_TRUE(Do([&] { return access.StartCall(nullptr, "sum", 0); }, 2))
        << "two results for the function, and sum";
    EXPECT_TRUE(Holds("Ran"));
    lua_State* script = lua_newthread(L); // one that yields goes on
    CLuaAccess inner(script);
    luaL_loadstring(script, "Step = 1 coroutine.yield() Step = 2 coroutine.yield() Step = 3");
    for (const char* step : {"Step == 1", "Step == 2", "Step == 3"}) {
        EXPECT_TRUE(inner.CallLuaFunc(nullptr, "sum", nullptr));
        EXPECT_TRUE(Holds(step)) << step;
    }
}

// A function of the host that is called by a script, many frames deep, calls the script in turn.
TEST_F(Call, FromWithinAScript) {
    lua_register(L, "host", [](lua_State* inner) {
        double total = 0;
        CLuaAccess(inner).CallLuaFunc(nullptr, "sum", "dd>d", 1.0, 2.0, &total);
        lua_pushnumber(inner, total);
        return 1;
    });
    Run("local t = setmetatable({}, { __index = function(t, n) if n == 0 then return host() end return t[n - "
        "1] end }) "
        "for i = 1, 5 do table.sort({ 3, 1, 2 }, function(a, b) Result = t[20] return a < b end) end");
    EXPECT_TRUE(Holds("Result == 3"));
}

} // namespace
