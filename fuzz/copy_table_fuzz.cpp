// Tables of any shape, some of them in several places, copied into another state: the copy holds what the
// source does, and both stacks end as they were.
#include <map>
#include <vector>

#include "sandbox.h"

namespace {

using namespace fuzz;

// Builds tables of a state, all reachable from the first.
struct Builder {
    Input& in;
    lua_State* L;
    bool isTame;

    void PushKey() {
        const int kind = in.Int(0, 7);
        if (kind == 0 && !isTame) return lua_pushboolean(L, 1);
        if (kind == 1 && !isTame)
            return lua_pushnumber(L, in.Int(0, 1) ? 0.5 + in.Int(-9, 9) : 1e15 * in.Int(1, 9));
        if (kind < 5) return lua_pushinteger(L, in.Int(-3, 9));
        lua_pushlstring(L, "a\0b1", in.Int(0, isTame ? 1 : 4));
    }
    void PushValue(int places) {
        const int kind = in.Int(0, 7);
        if (kind == 0 && !isTame) return lua_pushcfunction(L, [](lua_State*) { return 0; });
        if (kind == 1) return lua_pushboolean(L, in.Coin());
        if (kind == 2) return lua_pushnumber(L, in.Number());
        if (kind == 3) return void(lua_pushlstring(L, isTame ? "some text" : "text\0text", in.Int(0, 9)));
        lua_pushvalue(L, in.Int(1, places));
    }
    // Leaves the first table alone on the stack.
    void Build() {
        const int count = in.Int(1, 7);
        for (int i = 0; i < count; ++i) lua_newtable(L);
        for (int i = count; i >= 1; --i)
            for (int fields = in.Int(0, 5); fields > 0; --fields) {
                PushKey();
                isTame ? PushLater(i, count) : PushValue(count);
                lua_rawset(L, i);
            }
        lua_settop(L, 1);
    }
    // A value that is no cycle.
    void PushLater(int i, int count) {
        PushValue(count);
        if (!lua_istable(L, -1)) return;
        lua_pop(L, 1);
        i < count ? lua_pushvalue(L, in.Int(i + 1, count)) : lua_pushinteger(L, i);
    }
};

// The table on top as text, its keys sorted.
std::string Written(lua_State* L) {
    std::map<std::string, std::string> fields;
    for (lua_pushnil(L); lua_next(L, -2) != 0; lua_pop(L, 1)) {
        const bool isText = lua_type(L, -2) == LUA_TSTRING;
        std::string& value =
            fields[isText ? lua_tostring(L, -2) : std::to_string(lua_tointeger(L, -2)) + "#"];
        value = lua_istable(L, -1) ? Written(L)
                                   : std::string(luaL_typename(L, -1)).append(luaL_tolstring(L, -1, nullptr));
        if (!lua_istable(L, -1)) lua_pop(L, 1);
    }
    std::string text = "{";
    for (const auto& [key, value] : fields) text.append(key).append("=").append(value).append(",");
    return text + "}";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    Sandbox from, to;
    Builder{in, from, !in.IsHostile()}.Build();
    const bool isNew = in.Coin();
    isNew ? lua_newtable(to) : Builder{in, to, true}.Build();
    const bool copied = from.Try([&] { Expect(qev::CopyLuaTable(from, to), "there is a table to copy"); });
    Expect(lua_gettop(from) == 1 && lua_gettop(to) == 1, "both stacks are as they were");
    if (in.IsHostile()) return 0;
    Expect(copied || !isNew, "a plain table can be copied");
    if (copied && isNew) Expect(Written(from) == Written(to), "the copy holds what the source does");
    return 0;
}
