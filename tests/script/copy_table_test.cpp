#include "script/lua_fixture.h"

using namespace qev;

namespace {

struct Copy : test::LuaTest {
    Copy() { luaL_openlibs(to); }
    ~Copy() override { lua_close(to); }

    // What copying one table into another throws, or "false"; both stacks stay as they are.
    std::string Apply(const std::string& source, const std::string& target) {
        Put("T = " + source);
        EXPECT_EQ(luaL_dostring(to, ("T = " + target).c_str()), 0);
        lua_getglobal(to, "T");
        bool result = true;
        const std::string thrown = Run(0, [&] { result = CopyLuaTable(L, to); });
        EXPECT_EQ(lua_gettop(to), 1);
        lua_settop(to, 0);
        return result ? thrown : "false";
    }

    lua_State* const to = luaL_newstate();
};

TEST_F(Copy, Entries) {
    const struct {
        const char *source, *target;
        const char* holds;  // of the target afterwards
        const char* thrown; // or "false"
    } cases[] = {
        {"{ 5, 'b', name = true }", "{ name = 1, own = 2 }",
         "T[1] == 5 and T[2] == 'b' and T.name == true and T.own", ""},
        {"{ [2.7] = 'a', [-1.5] = 'b', [1000000] = 'c' }", "{}",
         "T[2] == 'a' and T[-1] == 'b' and T[1] == 'c'", ""},
        {"{ ['1'] = 'text' }", "{ 'number' }", "T['1'] == 'text' and T[1] == 'number'", ""},
        {"{ a = { b = { 1, { c = 2 } } } }", "{ a = { own = 3 } }", "T.a.b[2].c == 2 and T.a.own == 3", ""},
        {"{ a = 1, b = {} }", "5", "T == 5", ""},
        {"5", "{}", "true", "false"},
        {"{ a = print }", "{}", "true", "Lua Unknow value type!"},
        {"{ [true] = 1 }", "{}", "true", "Lua Unknow key type!"},
        {"{ {} }", "5", "true", "Enter Lua Table Error!"},
        {"{ a = 1 }", "setmetatable({}, { __newindex = function() error('shut', 0) end })", "T", "a shut"}};
    for (const auto& [source, target, holds, thrown] : cases) {
        EXPECT_EQ(Apply(source, target), thrown) << source;
        EXPECT_TRUE(Holds(to, holds)) << source;
    }
    EXPECT_TRUE(CopyLuaTable(L, L));
}

// A table that is met again is copied again: what another key merges into one copy does not show in others.
TEST_F(Copy, SharedTables) {
    EXPECT_EQ(
        Apply("(function() local t = { x = 1 } return { t, t, [1000000] = { y = 2, b = t } } end)()", "{}"),
        "");
    for (const char* holds :
         {"T[1].y == 2", "T[1].b.x == 1", "T[1].b.b == nil", "T[2].x == 1", "T[2].y == nil"})
        EXPECT_TRUE(Holds(to, holds)) << holds;
    Put("function twice(n) local t = {} for i = 1, n do t = { a = t, b = t } end return t end");
    EXPECT_EQ(Apply("twice(12)", "{}"), "");
    EXPECT_NE(Apply("twice(100)", "{}"), "") << "more than there is room for";
}

TEST_F(Copy, DepthIsBounded) {
    Put("function nested(n, t) t = t or {} for i = 2, n do t = { t } end return t end");
    EXPECT_EQ(Apply("nested(200)", "{}"), "");
    EXPECT_NE(Apply("nested(201)", "{}"), "");
    EXPECT_NE(Apply("(function() local t = {} t.a, t.b = t, t return t end)()", "{}"), "") << "a cycle";
    Put("t = nested(150)");
    EXPECT_NE(Apply("{ t, nested(51, t) }", "{}"), "") << "too deep where it is met again";
}

} // namespace
