/// \file
/// The texts that the cursors of a state have pushed before.
#pragma once

#include <cstdint>
#include <cstring>

#include <lua.hpp>

namespace qev {

/// Pushes a text that was pushed before without asking Lua for memory, and so without a protected call: Lua
/// finds an equal text only by hashing it and may have to make it, which may raise. A slot, chosen by the
/// address of the caller's text, points to Lua's own copy, which the registry holds under the slot's address.
/// (Not under a number: a table of Lua 5.2 may lose numbers when it is refused memory while it grows.) The
/// object lies in a userdata in the registry, so that it ends with the state.
class LuaTexts {
public:
    /// The state's, or null. Needs a free stack slot.
    static LuaTexts* Find(lua_State* L);
    /// Pushes a text and keeps it for TryPush, making the state's object if `texts` is null. May raise.
    static void Push(lua_State* L, LuaTexts*& texts, const char* text);

    /// Pushes a text that was kept, or pushes nothing and answers false.
    bool TryPush(lua_State* L, const char* text) const {
        const Slot& slot = m_slots[SlotOf(text)];
        if (!slot || std::strcmp(slot, text) != 0) return false;
        lua_rawgetp(L, LUA_REGISTRYINDEX, &slot);
        return true;
    }

private:
    using Slot = const char*;
    static constexpr std::size_t kSlots = 256;

    static std::size_t SlotOf(const char* text) {
        const auto address = reinterpret_cast<std::uintptr_t>(text);
        return (address ^ (address >> 8)) % kSlots;
    }
    void Keep(lua_State* L, const char* text);

    Slot m_slots[kSlots];
};

} // namespace qev
