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
    if (moved || !newSize) limits.m_inUse += newSize - had;
    return moved;
}

bool TextLimits::Grants(std::size_t growth, bool isString) {
    if (!m_isOn) return true;
    if (isString && growth > kLongestString) return false;
    m_isSpent = m_isSpent || m_inUse + growth > kMemory;
    return !m_isSpent;
}

void TextLimits::Start(lua_State* L) {
    if (m_inUse > kMemory / 2) lua_gc(L, LUA_GCCOLLECT, 0); // what earlier texts have left
    m_isOn = true;
    m_isSpent = false;
    m_instructions = kInstructions;
    m_end = platform::ThreadSeconds() + kTime;
    lua_sethook(L, CountInstructions, LUA_MASKCOUNT, kCheckEach);
}

void TextLimits::Stop(lua_State* L) {
    lua_sethook(L, nullptr, 0, 0);
    m_isOn = false;
}

void TextLimits::CheckTime(lua_State* L) const {
    if (platform::ThreadSeconds() > m_end) luaL_error(L, "the text takes too long");
}

void TextLimits::CountInstructions(lua_State* L, lua_Debug*) {
    void* self = nullptr;
    lua_getallocf(L, &self);
    auto& limits = *static_cast<TextLimits*>(self);
    limits.m_instructions -= kCheckEach;
    if (limits.m_instructions < 0) luaL_error(L, "the text runs too many instructions");
    limits.CheckTime(L);
}

} // namespace qev
