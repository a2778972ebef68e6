/// \file
/// A Lua state for tests, which counts what it has allocated, refuses memory on request, and watches the
/// stack.
#pragma once

#include <climits>
#include <cstdlib>
#include <memory>
#include <string>

#include <qev/lua.h>

#include <gtest/gtest.h>
#include <lua.hpp>

namespace qev::test {

/// Refuses every request for more memory once `left` of them have been granted.
struct Memory {
    int left = INT_MAX;
    long long inUse = 0;

    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
        auto& memory = *static_cast<Memory*>(self);
        if (!block) oldSize = 0; // it is a type code then
        if (newSize > oldSize && memory.left-- <= 0) {
            memory.left = 0;
            return nullptr;
        }
        memory.inUse += static_cast<long long>(newSize) - static_cast<long long>(oldSize);
        if (newSize == 0) {
            std::free(block);
            return nullptr;
        }
        return std::realloc(block, newSize);
    }
};

/// The text that a step throws; empty when it throws none.
template <class Step>
std::string Thrown(Step step) {
    try {
        step();
    } catch (char* text) {
        return text;
    }
    return "";
}

class LuaTest : public testing::Test {
protected:
    LuaTest() { Open(); }
    ~LuaTest() override { Close(); }
    /// Goes on with a fresh state.
    void Reopen() {
        Close();
        Open();
    }

    /// Runs a text, which works, and drops what it returns.
    void Run(const std::string& text, lua_State* state = nullptr) {
        if (!state) state = L;
        const int top = lua_gettop(state);
        ASSERT_EQ(luaL_dostring(state, text.c_str()), 0) << lua_tostring(state, -1);
        lua_settop(state, top);
    }
    /// Whether a Lua expression holds.
    bool Holds(const std::string& expression, lua_State* state = nullptr) {
        if (!state) state = L;
        const bool works = luaL_dostring(state, ("return " + expression).c_str()) == 0;
        const bool holds = works && lua_toboolean(state, -1);
        lua_pop(state, 1);
        return holds;
    }
    /// What a step answers; it leaves the stack as much higher as stated.
    template <class Step>
    auto Do(Step step, int growth = 0) {
        const int top = lua_gettop(L);
        const auto result = step();
        EXPECT_EQ(lua_gettop(L), top + growth);
        return result;
    }
    /// What a step throws; the stack is then as much higher as stated, and is brought back.
    template <class Step>
    std::string Fault(Step step, int growth = 0) {
        const int top = lua_gettop(L);
        const std::string text = Thrown(step);
        EXPECT_EQ(lua_gettop(L), top + growth) << text;
        lua_settop(L, top);
        return text;
    }

    Memory m_memory;
    lua_State* L = nullptr;

private:
    void Open() {
        L = lua_newstate(Memory::Allocate, &m_memory);
        luaL_openlibs(L);
    }
    void Close() {
        lua_close(L);
        EXPECT_EQ(m_memory.inUse, 0);
    }
};

} // namespace qev::test
