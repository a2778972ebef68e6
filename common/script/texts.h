/// \file
/// The texts that the cursors of a state have pushed before.
#pragma once

#include <cstdint>
#include <cstring>

#include <lua.hpp>

namespace qev {

/// Pushes a text that was pushed before without asking Lua for memory, and so without a protected call: Lua
/// itself finds an equal text only by hashing it, and may have to make it, which may raise. A slot is chosen
/// by the address of the caller's text and knows the text of the value with its number on the stack of a
/// thread, which holds nothing else. (A table would take longer, and one of Lua 5.2 may lose values when
/// memory is refused while it grows.) The thread and this object lie in the registry and end with the state.
class LuaTexts {
public:
    /// The state's, or null. Needs a free stack slot.
    static LuaTexts* Find(lua_State* L);
    /// Pushes a text and keeps it for TryPush, making the state's object if `texts` is null. May raise.
    static void Push(lua_State* L, LuaTexts*& texts, const char* text);

    /// Pushes a text that was kept, or pushes nothing and answers false.
    bool TryPush(lua_State* L, const char* text) const {
        const int slot = SlotOf(text);
        if (!m_szTexts[slot] || std::strcmp(m_szTexts[slot], text) != 0) return false;
        lua_pushvalue(m_pThread, kFirstText + slot);
        lua_xmove(m_pThread, L, 1);
        return true;
    }

private:
    static constexpr int kSlots = 256; // a program's names, mostly without two in one slot
    static constexpr int kObject = 1;  // on the thread's stack; the texts follow
    static constexpr int kFirstText = 2;

    explicit LuaTexts(lua_State* thread) : m_pThread(thread) {}
    static int SlotOf(const char* text) {
        const auto address = reinterpret_cast<std::uintptr_t>(text);
        return static_cast<int>((address ^ (address >> 8)) % kSlots);
    }
    static LuaTexts* Make(lua_State* L);
    void Keep(lua_State* L, const char* text);

    lua_State* m_pThread;
    const char* m_szTexts[kSlots] = {};
};

} // namespace qev
