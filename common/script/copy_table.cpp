// Copies a table between two states. As a rule they share nothing, so that a value of one is never pushed on
// the other's stack: each is read as C knows it and written again. What has no such form (functions,
// userdata, threads) cannot be copied and is an error, not a gap in the copy.
//
// Each table is walked by a cursor of its own, whose destructor restores the stack of its state when an error
// is thrown in the middle of a deep table. The depth is bounded, which also ends a table that contains
// itself: to remember the tables on the way would find cycles sooner, but deep recursion has to be refused
// anyhow, and so one limit serves for both.

#include <cstdio>
#include <cstdlib>
#include <type_traits>

#include <qev/script/access.h>
#include <qev/script/copy_table.h>

#include "fields.h"

namespace qev {
namespace {

constexpr int kMaxNesting = 200; // tables in tables; as many as Lua itself nests calls of C functions

bool CopyTable(lua_State* from, lua_State* to, int nesting);

// The int that the text of a number begins with. Drawings hold tables that were stored under such keys, so
// that large and broken numbers keep the odd key that this gives them.
int IndexOf(double key) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", key);
    return std::atoi(text);
}

// Copies the table on top of the source's stack into the one under a key.
template <class Key>
bool CopySubTable(lua_State* from, lua_State* to, CLuaAccess& target, Key key, int nesting) {
    const bool isEntered = target.Enter(key);
    if (!isEntered && std::is_same_v<Key, int>) ThrowText(message::kEnterFailed);
    const bool result = !isEntered || CopyTable(from, to, nesting + 1);
    target.Leave();
    return result;
}

// Copies the value on top of the source's stack.
template <class Key>
bool CopyValue(lua_State* from, lua_State* to, CLuaAccess& target, Key key, int nesting) {
    switch (lua_type(from, -1)) {
    case LUA_TBOOLEAN:
        target.Write(lua_toboolean(from, -1) != 0, key);
        return true;
    case LUA_TNUMBER:
        target.Write(lua_tonumber(from, -1), key);
        return true;
    case LUA_TSTRING:
        target.Write(lua_tostring(from, -1), key);
        return true;
    case LUA_TTABLE:
        return CopySubTable(from, to, target, key, nesting);
    default:
        ThrowText(message::kUnknownValueType);
    }
}

// Replaces the key on top by the next key of the table below it, and its value. False, with the key gone, at
// the end. Protected, because the target may be the same table through another thread of the same state.
bool Next(const LuaFields& source) {
    const int key = lua_gettop(source.L);
    source.Protected("", 2, LUA_MULTRET, [](lua_State* inner) { return lua_next(inner, 2) ? 2 : 0; });
    lua_remove(source.L, key);
    return lua_gettop(source.L) > key;
}

bool CopyTable(lua_State* from, lua_State* to, int nesting) {
    if (nesting > kMaxNesting) ThrowText(message::kTooDeep);
    CLuaAccess source(from), target(to); // both restore their stacks
    target.m_bAutoCreate = true;
    const LuaFields fields(source);
    bool result = true;
    lua_pushnil(from);
    while (Next(fields)) {
        // lua_tostring is only asked of texts: it would turn a number key into a text and confuse lua_next
        const int type = lua_type(from, -2);
        if (type == LUA_TNUMBER)
            result &= CopyValue(from, to, target, IndexOf(lua_tonumber(from, -2)), nesting);
        else if (type == LUA_TSTRING)
            result &= CopyValue(from, to, target, lua_tostring(from, -2), nesting);
        else
            ThrowText(message::kUnknownKeyType);
        lua_pop(from, 1);
    }
    return result;
}

} // namespace

bool CopyLuaTable(lua_State* from, lua_State* to) {
    if (from == to) return true;
    return lua_istable(from, -1) && CopyTable(from, to, 1);
}

} // namespace qev
