/// \file
/// What the cursors of a state share: the texts that they have pushed before, and how often they have
/// written.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include <lua.hpp>

namespace qev {

/// Pushes a text that was pushed before without asking Lua for memory, and so without a protected call: Lua
/// itself finds an equal text only by hashing it, and may have to make it, which may raise. The values lie on
/// the stack of a thread that runs nothing; a table of slots leads from the characters to their places. Both
/// lie in the registry, as this object does, and end with the state.
class LuaTexts {
public:
    /// The state's, or null. Needs a free stack slot.
    static LuaTexts* Find(lua_State* L);
    /// The state's, which is made when there is none. May raise.
    static LuaTexts* Of(lua_State* L);
    /// Pushes a text and keeps it for TryPush, making the state's object if `texts` is null. May raise.
    static void Push(lua_State* L, LuaTexts*& texts, const char* text);

    /// Pushes a text that was kept, or pushes nothing and answers false.
    bool TryPush(lua_State* L, const char* text) {
        const auto address = std::uint64_t{reinterpret_cast<std::uintptr_t>(text)};
        Slot& near = m_stNear[address * kSpread >> (64 - kNearBits)];
        const auto check = static_cast<std::uint32_t>(address);
        if (near.check != check || near.place == 0 || std::strcmp(near.text, text) != 0) {
            const Slot* const found = Search(text);
            if (!found) return false;
            near = {found->text, check, found->place};
        }
        lua_pushvalue(m_pThread, near.place);
        lua_xmove(m_pThread, L, 1);
        return true;
    }

    /// Notes that a cursor of the state may have changed a table.
    void CountWrite() { ++m_nWrites; }
    /// How often cursors of the state may have changed a table. As long as it stays, so do all tables that no
    /// script changes.
    std::uint64_t CountedWrites() const { return m_nWrites; }

private:
    struct Slot {
        const char* text = nullptr; // the kept value's own characters
        std::uint32_t check = 0;    // what sets its hash, or its address, apart from most others
        int place = 0;              // of the value on the thread's stack; 0 in a free slot
    };

    static constexpr std::uint64_t kSpread = 0x9E37'79B9'7F4A'7C15; // the golden ratio's digits: as a factor
                                                                    // it lays regular numbers far apart
    static constexpr int kNearBits = 10; // the names of a program mostly without two in one slot

    explicit LuaTexts(lua_State* thread) : m_pThread(thread) {}
    static std::uint64_t Hash(std::string_view text);
    static LuaTexts* Make(lua_State* L);
    const Slot* Search(const char* text) const;
    Slot& SlotFor(std::uint64_t hash) const;
    void Grow(lua_State* L);
    void Keep(lua_State* L, std::string_view text);

    std::uint64_t m_nWrites = 0;
    lua_State* m_pThread;
    Slot* m_pSlots = nullptr;
    std::size_t m_nMask = 0;                    // one less than the number of slots, which is a power of two
    Slot m_stNear[std::size_t{1} << kNearBits]; // what was found lately, by the address of the caller's text
};

} // namespace qev
