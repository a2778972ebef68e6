#include "script/lua_fixture.h"

namespace {

using namespace qev;

class Copy : public test::LuaTest {
protected:
    Copy() : m_target(luaL_newstate()) { luaL_openlibs(m_target); }
    ~Copy() override { lua_close(m_target); }

    // Copies the table `source` into `target`; both stacks stay as they are.
    bool Apply(const std::string& source, const std::string& target) {
        Run("T = " + source);
        Run("T = " + target, m_target);
        lua_getglobal(L, "T");
        lua_getglobal(m_target, "T");
        const auto copy = [&] { return CopyLuaTable(L, m_target); };
        bool result = false;
        m_thrown = Fault([&] { result = copy(); });
        EXPECT_EQ(lua_gettop(m_target), 1);
        lua_settop(L, 0);
        lua_settop(m_target, 0);
        return result;
    }

    lua_State* m_target;
    std::string m_thrown;
};

TEST_F(Copy, Entries) {
    const struct {
        const char *source, *target, *holds;
    } cases[] = {
        {"{ 5, 'b', name = true }", "{ name = 1, own = 2 }",
         "T[1] == 5 and T[2] == 'b' and T.name == true and T.own == 2"},
        {"{ [2.7] = 'a', [-1.5] = 'b', [1000000] = 'c' }", "{}",
         "T[2] == 'a' and T[-1] == 'b' and T[1] == 'c'"},
        {"{ ['1'] = 'text' }", "{ 'number' }", "T['1'] == 'text' and T[1] == 'number'"},
        {"{ a = { b = { 1, { c = 2 } } } }", "{ a = { own = 3 } }", "T.a.b[2].c == 2 and T.a.own == 3"},
        {"{ a = 0 / 0 }", "{ a = 1 }", "T.a == nil"},
        {"{}", "{ 1 }", "T[1] == 1"},
        {"{ a = 1, b = {} }", "5", "T == 5"},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(Apply(c.source, c.target)) << c.source << m_thrown;
        EXPECT_TRUE(Holds(c.holds, m_target)) << c.source;
    }
    EXPECT_TRUE(CopyLuaTable(L, L));
    EXPECT_FALSE(CopyLuaTable(L, m_target)) << "empty stack";
}

TEST_F(Copy, Faults) {
    const struct {
        const char *source, *target, *thrown;
    } cases[] = {
        {"{ a = print }", "{}", "Lua Unknow value type!"},
        {"{ a = { io.stdout } }", "{}", "Lua Unknow value type!"},
        {"{ [true] = 1 }", "{}", "Lua Unknow key type!"},
        {"{ {} }", "5", "Enter Lua Table Error!"},
        {"{ a = 1 }", "setmetatable({}, { __newindex = function() error('closed', 0) end })", "a closed"},
    };
    for (const auto& c : cases) {
        Apply(c.source, c.target);
        EXPECT_EQ(m_thrown, c.thrown) << c.source;
    }
}

TEST_F(Copy, DepthIsBounded) {
    const std::string nested = "(function(n) local t = {} for i = 2, n do t = { t } end return t end)";
    EXPECT_TRUE(Apply(nested + "(200)", "{}"));
    EXPECT_FALSE(Apply(nested + "(201)", "{}"));
    EXPECT_NE(m_thrown, "");
    EXPECT_FALSE(Apply("(function() local t = {} t.a, t.b = t, t return t end)()", "{}")) << "a cycle";
    EXPECT_NE(m_thrown, "");
}

// Two threads of one state may even share the table.
TEST_F(Copy, IntoItself) {
    Run("T = { [0.3] = 1 } for i = 1, 50 do T[i + 0.5] = i end");
    lua_State* thread = lua_newthread(L);
    lua_getglobal(thread, "T");
    lua_getglobal(L, "T");
    Fault([&] { CopyLuaTable(L, thread); });
    EXPECT_EQ(lua_gettop(thread), 1);
    EXPECT_TRUE(Holds("T[0.3] == 1"));
}

} // namespace
