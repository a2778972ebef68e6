// Memory is refused in the allocator, where all of it passes; the time is checked by the reader, each time it
// has read a stretch of the text. Time is that of the thread, so that a busy machine does not refuse a text
// that would have been taken on an idle one.
//
// The time bounds a text only as far as a single step is short. Almost every step of the reader takes a time
// that its own bytes of the text bound. What does not is a key: Lua's hash of a number can be foreseen, and
// that of a long text skips characters, so that keys can be chosen which all collide. Each new one is then
// compared with all before it, and when the table grows, each with each. With kMostKeys that takes
// a few milliseconds, which is the overrun; with tens of thousands one growing table alone takes a second.
// Equal hashes cost less among the texts of the whole state, which grows without comparing them.
//
// The collector rests while a text is read. Its garbage is bounded anyway, and at the limit of memory a
// running collector would go through the whole heap at every further request before it is refused. What a
// text has left is collected before the next one, so that a text's limit does not depend on those before it.

#include "text_limits.h"

#include <cstdlib>

#include "platform/cpu_time.h"

namespace qev {

void* TextLimits::Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& limits = *static_cast<TextLimits*>(self);
    const std::size_t had = block ? oldSize : 0; // without a block it is the type of the new object
    const bool isOver = newSize > kLargestBlock || limits.m_nInUse + newSize > limits.m_nMost;
    if (limits.m_bOn && newSize > had && isOver) return nullptr; // Lua relies on a block that shrinks
    void* const moved = newSize ? std::realloc(block, newSize) : nullptr;
    if (!newSize) std::free(block);
    if (moved || !newSize) limits.m_nInUse += newSize - had;
    return moved;
}

void TextLimits::Start(lua_State* L) {
    if (m_nInUse > kLeft) lua_gc(L, LUA_GCCOLLECT, 0);
    lua_gc(L, LUA_GCSTOP, 0);
    m_bOn = true;
    m_nMost = m_nInUse + kMemory;
    m_dEnd = platform::ThreadSeconds() + kTime;
}

void TextLimits::Stop(lua_State* L) {
    m_bOn = false;
    lua_gc(L, LUA_GCRESTART, 0);
}

void TextLimits::CheckTime(lua_State* L) const {
    if (platform::ThreadSeconds() > m_dEnd) luaL_error(L, "the text takes too long");
}

} // namespace qev
