// Kept texts, so that a read by name needs no protected call.
//
// Lua offers no way to push a text without the risk of an error: even one that exists already is looked up in
// Lua's own table of strings, and that look-up is part of the function that may have to make it. What never
// raises is to copy a value from one stack to another. So the texts of names that have been used lie on the
// stack of a thread that runs nothing, and an array beside it holds where their characters lie.
//
// The slot follows from the address of the caller's text, since a program reads the same names from the same
// literals again and again; the characters are compared all the same, because a buffer is reused for other
// names. A name that is pushed out of its slot only takes the slower way. Hashing the characters instead
// would serve equal names at different addresses, but costs a pass over the text at each read.

#include "texts.h"

#include <new>

namespace qev {
namespace {

constexpr char kRegistryKey = 0;         // its address is the key
constexpr std::size_t kLongestKept = 64; // bytes; names are shorter, and no large value is held for long

} // namespace

LuaTexts* LuaTexts::Find(lua_State* L) {
    lua_rawgetp(L, LUA_REGISTRYINDEX, &kRegistryKey);
    lua_State* const thread = lua_tothread(L, -1);
    lua_pop(L, 1);
    return thread ? static_cast<LuaTexts*>(lua_touserdata(thread, kObject)) : nullptr;
}

LuaTexts* LuaTexts::Make(lua_State* L) {
    lua_State* const thread = lua_newthread(L);
    if (!lua_checkstack(thread, kFirstText + kSlots)) luaL_error(L, "not enough memory");
    auto* made = new (lua_newuserdata(L, sizeof(LuaTexts))) LuaTexts(thread);
    lua_xmove(L, thread, 1);
    lua_settop(thread, kFirstText + kSlots - 1);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &kRegistryKey);
    return made;
}

void LuaTexts::Push(lua_State* L, LuaTexts*& texts, const char* text) {
    if (!texts) texts = Find(L);
    if (!texts) texts = Make(L);
    lua_pushstring(L, text);
    if (std::strlen(text) <= kLongestKept) texts->Keep(L, text);
}

// Keeps the text on top.
void LuaTexts::Keep(lua_State* L, const char* text) {
    const int slot = SlotOf(text);
    m_szTexts[slot] = lua_tostring(L, -1);
    lua_pushvalue(L, -1);
    lua_xmove(L, m_pThread, 1);
    lua_replace(m_pThread, kFirstText + slot);
}

} // namespace qev
