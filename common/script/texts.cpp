#include "texts.h"

#include <new>

namespace qev {
namespace {

constexpr char kRegistryKey = 0;         // its address is the key
constexpr std::size_t kLongestKept = 64; // so that no large value is held

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
    m_texts[slot] = lua_tostring(L, -1);
    lua_pushvalue(L, -1);
    lua_xmove(L, m_pThread, 1);
    lua_replace(m_pThread, kFirstText + slot);
}

} // namespace qev
