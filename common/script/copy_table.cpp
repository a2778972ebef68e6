// Copies a table between two states. As a rule they share nothing, so that a value of one is never pushed on
// the other's stack: each is read as C knows it and written again. What has no such form (functions,
// userdata, threads) cannot be copied and is an error, not a gap in the copy.
//
// Each table is walked by a cursor of its own, whose destructor restores the stack of its state when an error
// is thrown in the middle of a deep table. The depth is bounded, which also ends a table that contains
// itself: to remember the tables on the way would find cycles sooner, but deep recursion has to be refused
// anyhow, and so one limit serves for both.
//
// A table that the source holds in several places is copied to each of them, as a key of the target may stand
// for several of the source and what is merged into one place must not show in another. To share the copy, as
// the source does, was rejected for that. But 30 tables that each hold the next one twice would take a
// billion steps: so the entries of tables that are met again are counted, and too many are refused like too
// deep ones.

#include <cstdio>
#include <cstdlib>
#include <new>
#include <type_traits>
#include <unordered_set>

#include <qev/script/access.h>
#include <qev/script/copy_table.h>

#include "fields.h"

namespace qev {
namespace {

constexpr int kMaxNesting = 200;    // tables in tables; as many as Lua itself nests calls of C functions
constexpr int kMostAgain = 250'000; // entries of tables that are met again; some tenths of a second

// The int that the text of a number begins with. Drawings hold tables that were stored under such keys, so
// that large and broken numbers keep the odd key that this gives them.
int IndexOf(double key) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", key);
    return std::atoi(text);
}

// One copy from a state to another.
class TableCopy {
public:
    TableCopy(lua_State* from, lua_State* to) : m_pFrom(from), m_pTo(to) {}
    // Copies the table on top of the source's stack, so deep in the one that is copied, into the one on top
    // of the target's.
    void Copy(int depth);

private:
    template <class Key>
    void CopyValue(CLuaAccess& target, Key key, int depth);

    lua_State* const m_pFrom;
    lua_State* const m_pTo;
    std::unordered_set<const void*> m_setMet; // tables of the source
    int m_nAgain = 0;                         // entries of those that were met again
};

// Copies the value on top of the source's stack.
template <class Key>
void TableCopy::CopyValue(CLuaAccess& target, Key key, int depth) {
    switch (lua_type(m_pFrom, -1)) {
    case LUA_TBOOLEAN:
        target.Write(lua_toboolean(m_pFrom, -1) != 0, key);
        break;
    case LUA_TNUMBER:
        target.Write(lua_tonumber(m_pFrom, -1), key);
        break;
    case LUA_TSTRING:
        target.Write(lua_tostring(m_pFrom, -1), key);
        break;
    case LUA_TTABLE:
        if (target.Enter(key))
            Copy(depth + 1);
        else if (std::is_same_v<Key, int>)
            ThrowText(message::kEnterFailed);
        target.Leave();
        break;
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

void TableCopy::Copy(int depth) {
    if (depth > kMaxNesting) ThrowText(message::kTooDeep);
    const bool isMetAgain = !m_setMet.insert(lua_topointer(m_pFrom, -1)).second;
    CLuaAccess source(m_pFrom), target(m_pTo); // both restore their stacks
    target.m_bAutoCreate = true;
    const LuaFields fields(source);
    lua_pushnil(m_pFrom);
    while (Next(fields)) {
        if (isMetAgain && ++m_nAgain > kMostAgain) ThrowText(message::kTooDeep);
        // lua_tostring is only asked of texts: it would turn a number key into a text and confuse lua_next
        const int type = lua_type(m_pFrom, -2);
        if (type == LUA_TNUMBER)
            CopyValue(target, IndexOf(lua_tonumber(m_pFrom, -2)), depth);
        else if (type == LUA_TSTRING)
            CopyValue(target, lua_tostring(m_pFrom, -2), depth);
        else
            ThrowText(message::kUnknownKeyType);
        lua_pop(m_pFrom, 1);
    }
}

} // namespace

bool CopyLuaTable(lua_State* from, lua_State* to) try {
    if (from == to) return true;
    if (!lua_istable(from, -1)) return false;
    const CLuaAccess restoring(to);
    if (lua_gettop(to) == 0) lua_pushnil(to); // no table, so that what is to be written is refused
    TableCopy(from, to).Copy(1);
    return true;
} catch (const std::bad_alloc&) {
    ThrowText(message::kNoMemory);
}

} // namespace qev
