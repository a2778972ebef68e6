// Three limits, because none of them alone bounds a hostile text. Memory is refused in the allocator, where
// all of it passes; instructions are counted by a hook of Lua; the time is checked in the hook and between
// the pieces that a text is read in. Time is that of the thread, so that a busy machine does not refuse a
// text that would have been taken on an idle one.
//
// The least overrun follows from how long one step may take unchecked: kCheckEach instructions on strings of
// at most kLongestString bytes and tables of at most kMemory. A text at its limit of memory would have Lua
// collect garbage at every further request, each time through the whole heap, and so the first refusal is
// final until the next text starts. Shrinking a block is always granted, as Lua relies on it.

#include "text_limits.h"

#include <cstdlib>

#include "platform/cpu_time.h"

namespace qev {

void* TextLimits::Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& limits = *static_cast<TextLimits*>(self);
    const std::size_t had = block ? oldSize : 0; // without a block it is the type of the new object
    if (newSize > had && !limits.Grants(newSize - had, !block && oldSize == LUA_TSTRING)) return nullptr;
    void* const moved = newSize ? std::realloc(block, newSize) : nullptr;
    if (!newSize) std::free(block);
    if (moved || !newSize) limits.m_nInUse += newSize - had;
    return moved;
}

bool TextLimits::Grants(std::size_t growth, bool isString) {
    if (!m_bOn) return true;
    if (isString && growth > kLongestString) return false;
    m_bSpent = m_bSpent || m_nInUse + growth > kMemory;
    return !m_bSpent;
}

void TextLimits::Start(lua_State* L) {
    if (m_nInUse > kMemory / 2) lua_gc(L, LUA_GCCOLLECT, 0); // what earlier texts have left
    m_bOn = true;
    m_bSpent = false;
    m_nInstructions = kInstructions;
    m_dEnd = platform::ThreadSeconds() + kTime;
    lua_sethook(L, CountInstructions, LUA_MASKCOUNT, kCheckEach);
}

void TextLimits::Stop(lua_State* L) {
    lua_sethook(L, nullptr, 0, 0);
    m_bOn = false;
}

void TextLimits::CheckTime(lua_State* L) const {
    if (platform::ThreadSeconds() > m_dEnd) luaL_error(L, "the text takes too long");
}

void TextLimits::CountInstructions(lua_State* L, lua_Debug*) {
    void* self = nullptr;
    lua_getallocf(L, &self);
    auto& limits = *static_cast<TextLimits*>(self);
    limits.m_nInstructions -= kCheckEach;
    if (limits.m_nInstructions < 0) luaL_error(L, "the text runs too many instructions");
    limits.CheckTime(L);
}

} // namespace qev
