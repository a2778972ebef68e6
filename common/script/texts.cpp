// Kept texts, so that a read by name needs no protected call.
//
// Lua offers no way to push a text without the risk of an error: even one that exists already is looked up in
// Lua's own table of strings, and that look-up is part of the function that may have to make it. What never
// raises is to copy a value from one stack to another. So the texts of names that have been used lie on the
// stack of a thread that runs nothing, one behind the other.
//
// The way from a caller's characters to a place on that stack is a hash table of our own: a text lies in one
// of the few slots from that of its hash on. The slots double when three quarters of them are taken, or all
// in such a window, up to a bound; from then on a new text takes the slot and the place of an older one,
// which is pushed the slower way the next time. So a look-up takes a few steps whatever texts somebody
// chooses.
//
// A program mostly reads the same names from the same literals. So what was found is remembered by the
// address of the caller's characters, which saves the hashing; they are compared all the same.
//
// A table of Lua in place of ours would take longer, and one of Lua 5.2 may lose values when memory is
// refused while it grows.

#include "texts.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

namespace qev {
namespace {

constexpr char kRegistryKey = 0; // its address is the key

// Places on the thread's stack; the texts follow.
constexpr int kObject = 1;
constexpr int kSlots = 2;

// Ten thousand names find room, and at the most a megabyte is taken.
constexpr std::size_t kFewestSlots = 256;
constexpr std::size_t kMostSlots = 32'768;

constexpr std::size_t kWindow = 32;      // slots where a text may lie, from that of its hash on
constexpr std::size_t kLongestKept = 64; // bytes; names are shorter, and no large value is held for long

// The half of a hash that does not lead to the slot.
std::uint32_t Check(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32);
}

} // namespace

// Takes eight characters at a time, the last of which may be some of those before. A product spreads its
// factors upwards only; its upper half is folded onto its lower one, and twice for the last part.
std::uint64_t LuaTexts::Hash(std::string_view text) {
    const auto load = [](const char* from, auto part) {
        std::memcpy(&part, from, sizeof part);
        return std::uint64_t{part};
    };
    const auto mix = [](std::uint64_t hash, std::uint64_t part) {
        const std::uint64_t product = (hash ^ part) * kSpread;
        return product ^ product >> 32;
    };
    const char *from = text.data(), *const end = from + text.size();
    std::uint64_t hash = text.size(), last = 0;
    for (; end - from > 8; from += 8) hash = mix(hash, load(from, std::uint64_t()));
    if (text.size() >= 8)
        last = load(end - 8, std::uint64_t());
    else if (text.size() >= 4)
        last = load(from, std::uint32_t()) << 32 | load(end - 4, std::uint32_t());
    else
        for (; from < end; ++from) last = last << 8 | static_cast<unsigned char>(*from);
    return mix(mix(hash, last), 0);
}

LuaTexts* LuaTexts::Find(lua_State* L) {
    lua_rawgetp(L, LUA_REGISTRYINDEX, &kRegistryKey);
    lua_State* const thread = lua_tothread(L, -1);
    lua_pop(L, 1);
    return thread ? static_cast<LuaTexts*>(lua_touserdata(thread, kObject)) : nullptr;
}

LuaTexts* LuaTexts::Make(lua_State* L) {
    lua_State* const thread = lua_newthread(L);
    auto* made = new (lua_newuserdata(L, sizeof(LuaTexts))) LuaTexts(thread);
    lua_pushnil(L); // where the slots go
    lua_xmove(L, thread, 2);
    made->Grow(L);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &kRegistryKey);
    return made;
}

LuaTexts* LuaTexts::Of(lua_State* L) {
    LuaTexts* const found = Find(L);
    return found ? found : Make(L);
}

void LuaTexts::Push(lua_State* L, LuaTexts*& texts, const char* text) {
    if (!texts) texts = Of(L);
    if (texts->TryPush(L, text)) return;
    lua_pushstring(L, text);
    if (std::strlen(text) <= kLongestKept) texts->Keep(L, text);
}

// Null when the text is not kept.
const LuaTexts::Slot* LuaTexts::Search(const char* text) const {
    const std::string_view wanted(text);
    if (wanted.size() > kLongestKept) return nullptr;
    const std::uint64_t hash = Hash(wanted);
    for (std::size_t i = 0; i < kWindow; ++i) {
        const Slot& slot = m_pSlots[(hash + i) & m_nMask];
        if (slot.place == 0) return nullptr;
        if (slot.check == Check(hash) && std::strcmp(slot.text, text) == 0) return &slot;
    }
    return nullptr;
}

// A free slot for a hash or, where there is none, the first one, which another text has.
LuaTexts::Slot& LuaTexts::SlotFor(std::uint64_t hash) const {
    for (std::size_t i = 0; i < kWindow; ++i)
        if (Slot& slot = m_pSlots[(hash + i) & m_nMask]; slot.place == 0) return slot;
    return m_pSlots[hash & m_nMask];
}

// Makes the first slots, or doubles them. Raises before anything has changed.
void LuaTexts::Grow(lua_State* L) {
    const std::size_t before = m_pSlots ? m_nMask + 1 : 0;
    const std::size_t count = std::max(2 * before, kFewestSlots);
    auto* const slots = static_cast<Slot*>(lua_newuserdata(L, count * sizeof(Slot)));
    std::uninitialized_fill_n(slots, count, Slot());
    lua_xmove(L, m_pThread, 1);
    lua_replace(m_pThread, kSlots); // those before are not collected as long as nothing asks for memory
    const Slot* const old = std::exchange(m_pSlots, slots);
    m_nMask = count - 1;
    for (std::size_t i = 0; i < before; ++i)
        if (old[i].place != 0) SlotFor(Hash(old[i].text)) = old[i];
}

// Keeps the text on top. Without memory for one more place on the stack it is not kept.
void LuaTexts::Keep(lua_State* L, std::string_view text) {
    const std::uint64_t hash = Hash(text);
    const bool isFull = 4 * static_cast<std::size_t>(lua_gettop(m_pThread)) > 3 * m_nMask;
    if (m_nMask + 1 < kMostSlots && (isFull || SlotFor(hash).place != 0)) Grow(L);
    if (!lua_checkstack(m_pThread, 1)) return;
    Slot& slot = SlotFor(hash);
    lua_pushvalue(L, -1);
    lua_xmove(L, m_pThread, 1);
    if (slot.place == 0) {
        slot.place = lua_gettop(m_pThread);
    } else {
        lua_replace(m_pThread, slot.place);
        std::fill(std::begin(m_stNear), std::end(m_stNear), Slot()); // they may know the text that goes
    }
    slot.text = lua_tostring(L, -1);
    slot.check = Check(hash);
}

} // namespace qev
