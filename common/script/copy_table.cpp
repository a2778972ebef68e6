// Copies a table between two states. As a rule they share nothing, so that a value of one is never pushed on
// the other's stack: each is read as C knows it and written again. What has no such form (functions,
// userdata, threads) cannot be copied and is an error, not a gap in the copy.
//
// Each table is walked by a cursor of its own, whose destructor restores the stack of its state when an error
// is thrown in the middle of a deep table. The depth is bounded, which also ends a table that contains
// itself: to remember the tables on the way would find cycles sooner, but deep recursion has to be refused
// anyhow, and so one limit serves for both.
//
// A table that is met again is not walked again, or 30 tables that each hold the next one twice would take
// a billion steps. Where the target has nothing under the key it gets the copy that was made before, so that
// the copy shares as the source does; where it has a table that this one was merged into before there is
// nothing to do. Copies that were merged into what the target held are not shared: they may hold more. How
// many levels a finished table holds is kept with it, so that the limit on the depth does not depend on the
// order of a walk.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>
#include <type_traits>
#include <utility>

#include <qev/script/access.h>
#include <qev/script/copy_table.h>

#include "fields.h"

namespace qev {
namespace {

constexpr int kMaxNesting = 200; // tables in tables; as many as Lua itself nests calls of C functions

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
    TableCopy(lua_State* from, lua_State* to);
    // Copies the table on top of the source's stack into the one on top of the target's. Answers how many
    // levels of tables it holds, itself included; all of them lie within the limit, this one at a depth.
    int Copy(int depth);

private:
    // A table of the source, and that of the target it was merged into; null for a copy of its own.
    using Way = std::pair<const void*, const void*>;
    struct Finished {
        int levels;
        int place; // among the tables that are kept
    };

    template <class Key>
    void CopyValue(CLuaAccess& target, Key key, int depth, int& levels);
    template <class Key>
    int CopySubTable(CLuaAccess& target, Key key, int depth);
    int CopyOnce(const LuaFields& fields, const Way& way, int depth);

    lua_State* const m_pFrom;
    lua_State* const m_pTo;
    CLuaAccess m_stTarget;             // restores the stack
    int m_nKept;                       // where on it the table of the target's tables lies
    std::map<Way, Finished> m_mapDone; // of the tables in the table that is copied
};

// Throws where a table at a depth holds too many levels, or else answers them.
int WithinDepth(int depth, int levels) {
    if (depth + levels - 1 > kMaxNesting) ThrowText(message::kTooDeep);
    return levels;
}

// The table of those that are kept goes below the target, which stays on top.
TableCopy::TableCopy(lua_State* from, lua_State* to)
    : m_pFrom(from), m_pTo(to), m_stTarget(to), m_nKept(lua_gettop(to) + 1) {
    const LuaFields fields(m_stTarget);
    fields.Protected("", 0, 1, [](lua_State* inner) {
        lua_newtable(inner);
        return 1;
    });
    if (m_nKept > 1)
        lua_pushvalue(to, -2);
    else
        lua_pushnil(to);
}

// Copies a table into the one that has been entered, unless that was done before.
int TableCopy::CopyOnce(const LuaFields& fields, const Way& way, int depth) {
    if (const auto found = m_mapDone.find(way); found != m_mapDone.end())
        return WithinDepth(depth, found->second.levels);
    const int levels = Copy(depth);
    const int place = static_cast<int>(m_mapDone.size()) + 1;
    lua_pushvalue(fields.L, m_nKept);
    lua_pushvalue(fields.L, -2);
    fields.StoreTop(place);
    lua_pop(fields.L, 1);
    m_mapDone.emplace(way, Finished{levels, place});
    return levels;
}

// Copies the table on top of the source's stack into the one under a key, or shares the copy it has.
template <class Key>
int TableCopy::CopySubTable(CLuaAccess& target, Key key, int depth) {
    const LuaFields fields(target);
    const void* const source = lua_topointer(m_pFrom, -1);
    bool isFree = false;
    if (const int type = fields.Fetch(key); type != LUA_TNONE) {
        isFree = type == LUA_TNIL;
        lua_pop(fields.L, 1);
    }
    if (const auto found = m_mapDone.find({source, nullptr}); isFree && found != m_mapDone.end()) {
        lua_rawgeti(fields.L, m_nKept, found->second.place);
        fields.StoreTop(key);
        return WithinDepth(depth, found->second.levels);
    }
    const bool isEntered = target.Enter(key);
    if (!isEntered && std::is_same_v<Key, int>) ThrowText(message::kEnterFailed);
    const void* const into = isFree ? nullptr : lua_topointer(fields.L, -1);
    const int levels = isEntered ? CopyOnce(fields, {source, into}, depth) : 0;
    target.Leave();
    return levels;
}

// Copies the value on top of the source's stack; `levels` becomes those of a table that has more.
template <class Key>
void TableCopy::CopyValue(CLuaAccess& target, Key key, int depth, int& levels) {
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
        levels = std::max(levels, CopySubTable(target, key, depth));
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

int TableCopy::Copy(int depth) {
    WithinDepth(depth, 1);
    CLuaAccess source(m_pFrom), target(m_pTo); // both restore their stacks
    target.m_bAutoCreate = true;
    const LuaFields fields(source);
    int levels = 0;
    lua_pushnil(m_pFrom);
    while (Next(fields)) {
        // lua_tostring is only asked of texts: it would turn a number key into a text and confuse lua_next
        const int type = lua_type(m_pFrom, -2);
        if (type == LUA_TNUMBER)
            CopyValue(target, IndexOf(lua_tonumber(m_pFrom, -2)), depth + 1, levels);
        else if (type == LUA_TSTRING)
            CopyValue(target, lua_tostring(m_pFrom, -2), depth + 1, levels);
        else
            ThrowText(message::kUnknownKeyType);
        lua_pop(m_pFrom, 1);
    }
    return levels + 1;
}

} // namespace

bool CopyLuaTable(lua_State* from, lua_State* to) try {
    if (from == to) return true;
    if (!lua_istable(from, -1)) return false;
    TableCopy(from, to).Copy(1);
    return true;
} catch (const std::bad_alloc&) {
    ThrowText(message::kNoMemory);
}

} // namespace qev
