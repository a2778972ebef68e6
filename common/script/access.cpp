// The cursor itself: where it stands, and how it moves.
//
// The current table is the value on top of the Lua stack, so that the cursor needs no reference to it and a
// caller may push a table of its own to start from. An Enter pushes exactly one value and opens exactly one
// level whatever it finds, nil where there is no table: a caller may then write one Leave for each Enter and
// need not ask how the Enter went. Reading and writing a field, and what Lua may raise meanwhile, is the
// business of fields.h; the entered keys, for error texts, that of path.h.

#include <algorithm>
#include <new>
#include <utility>

#include <qev/script/access.h>

#include "fields.h"

namespace qev {
namespace {

// Steps into the table under a key; `shown` is the key that an error text ends with.
template <class Key>
bool EnterKey(CLuaAccess& cursor, Key key, const char* shown) {
    const LuaPath path(cursor);
    if (!path.HasRoom()) cursor.ErrorHandle(shown, nullptr, message::kTooDeep);
    const LuaFields fields(cursor);
    path.Open(key);
    const int type = fields.Fetch(key);
    if (type == LUA_TTABLE) return true;
    if (type == LUA_TNONE) {
        lua_pushnil(fields.L);
        return false;
    }
    if (type == LUA_TNIL && !cursor.m_bAutoCreate) return false;
    lua_pop(fields.L, 1);
    if (type != LUA_TNIL) cursor.ErrorHandle(shown, nullptr, message::kNoTable);
    fields.CreateTable(key);
    return true;
}

// The name of a key that is a text or a number, as error texts show it; empty for other keys.
std::string NameOf(lua_State* L, int index) {
    if (lua_type(L, index) == LUA_TSTRING) return lua_tostring(L, index);
    char number[LUAI_MAXNUMBER2STR];
    const char* const text = TextOf(L, index, number);
    return text ? std::string("[") + text + "]" : "";
}

std::string ShownValue(lua_State* L, int index) {
    if (lua_isboolean(L, index)) return lua_toboolean(L, index) ? "true" : "false";
    char number[LUAI_MAXNUMBER2STR];
    const char* const text = TextOf(L, index, number);
    return text ? text : luaL_typename(L, index);
}

// The fields of the table on top.
void CollectFromTop(lua_State* L, std::vector<CLuaAccess::FieldInfo>& found) {
    for (lua_pushnil(L); lua_next(L, -2); lua_pop(L, 1))
        if (std::string name = NameOf(L, -2); !name.empty())
            found.push_back({std::move(name), ShownValue(L, -1)});
}

} // namespace

CLuaAccess::CLuaAccess(lua_State* L) : m_pLuaState(L), m_nBaseTop(lua_gettop(L)) {
    if (lua_checkstack(L, 1)) m_pTexts = LuaTexts::Find(L);
}

CLuaAccess::~CLuaAccess() {
    // The stack may be lower than it was, and grows then.
    if (lua_checkstack(m_pLuaState, m_nBaseTop)) lua_settop(m_pLuaState, m_nBaseTop);
}

bool CLuaAccess::Enter(const char* name) {
    return EnterKey(*this, name, name);
}

bool CLuaAccess::Enter(int index) {
    return EnterKey(*this, index, nullptr);
}

// The table of the globals is put on the stack to be searched, and taken out from below what was found.
bool CLuaAccess::EnterGlobal(const char* name) {
    if (!LuaPath(*this).HasRoom()) ErrorHandle(name, nullptr, message::kTooDeep);
    const LuaFields fields(*this, 2);
    lua_rawgeti(m_pLuaState, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
    const int globals = lua_gettop(m_pLuaState);
    const auto removeGlobals = [&] { lua_remove(m_pLuaState, globals); };
    try {
        const bool isEntered = Enter(name);
        removeGlobals();
        return isEntered;
    } catch (...) {
        removeGlobals();
        throw;
    }
}

// lua_next raises nothing on a table that does not change. What the walk leaves is cut off when memory for
// the list is refused.
void CLuaAccess::CollectFields(std::vector<FieldInfo>& fields) {
    fields.clear();
    const LuaFields table(*this, 2);
    if (!table.IsTableOnTop()) return;
    const int top = lua_gettop(table.L);
    try {
        CollectFromTop(table.L, fields);
    } catch (const std::bad_alloc&) {
        lua_settop(table.L, top);
        throw;
    }
    std::sort(fields.begin(), fields.end(),
              [](const FieldInfo& a, const FieldInfo& b) { return a.name < b.name; });
}

void CLuaAccess::Leave() {
    if (m_nDepth >= 0) --m_nDepth; // its name is used again by the next Enter
    if (lua_gettop(m_pLuaState) > 0) lua_pop(m_pLuaState, 1);
}

void CLuaAccess::ErrorHandle(const char* key, const char* value, const char* message) {
    LuaPath(*this).Compose(key, value, message);
    ThrowText(m_szError);
}

} // namespace qev
