#include "texts.h"

#include <new>

namespace qev {
namespace {

// Its address is the registry's key. Longer texts are not kept, so that no large value is held.
constexpr char kRegistryKey = 0;
constexpr std::size_t kLongestKept = 64;

} // namespace

LuaTexts* LuaTexts::Find(lua_State* L) {
    lua_rawgetp(L, LUA_REGISTRYINDEX, &kRegistryKey);
    auto* texts = static_cast<LuaTexts*>(lua_touserdata(L, -1));
    lua_pop(L, 1);
    return texts;
}

void LuaTexts::Push(lua_State* L, LuaTexts*& texts, const char* text) {
    if (!texts) texts = Find(L);
    if (!texts) {
        auto* made = new (lua_newuserdata(L, sizeof(LuaTexts))) LuaTexts{};
        lua_rawsetp(L, LUA_REGISTRYINDEX, &kRegistryKey);
        texts = made;
    }
    lua_pushstring(L, text);
    if (std::strlen(text) <= kLongestKept) texts->Keep(L, text);
}

// Keeps the text on top.
void LuaTexts::Keep(lua_State* L, const char* text) {
    Slot& slot = m_slots[SlotOf(text)];
    slot = nullptr; // should Lua raise
    lua_pushvalue(L, -1);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &slot);
    slot = lua_tostring(L, -1);
}

} // namespace qev
