/// \file
/// A Lua state for tests that watch the height of its stack, and memory for one that is refused on request.
#pragma once

#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include <qev/lua.h>

#include <gtest/gtest.h>
#include <lua.hpp>

namespace test {

/// Refuses every request for more memory once `left` of them have been granted.
struct Memory {
    int left = INT_MAX;
    long long inUse = 0;

    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize) {
        auto& memory = *static_cast<Memory*>(self);
        const auto growth = static_cast<long long>(newSize) - static_cast<long long>(block ? oldSize : 0);
        if (growth > 0 && memory.left <= 0) return nullptr;
        if (growth > 0) --memory.left;
        memory.inUse += growth;
        if (newSize != 0) return std::realloc(block, newSize);
        std::free(block);
        return nullptr;
    }
    /// Takes the blocks from operator new. One that shrinks stays.
    static void* AllocateByNew(void*, void* block, std::size_t oldSize, std::size_t newSize) {
        if (block && newSize != 0 && newSize <= oldSize) return block;
        void* const moved = newSize != 0 ? ::operator new(newSize, std::nothrow) : nullptr;
        if (block && moved) std::memcpy(moved, block, oldSize);
        if (moved || newSize == 0) ::operator delete(block);
        return moved;
    }
};

/// The text that a step throws; empty when it throws none.
template <class Step>
std::string Thrown(Step step) {
    try {
        step();
        return "";
    } catch (char* text) {
        return text;
    }
}

struct LuaTest : testing::Test {
    LuaTest() { luaL_openlibs(L); }
    /// Runs a text and puts the global T on the stack, alone.
    void Put(const std::string& text) {
        lua_settop(L, 0);
        ASSERT_EQ(luaL_dostring(L, text.c_str()), 0) << lua_tostring(L, -1);
        lua_getglobal(L, "T");
    }
    /// Whether an expression holds.
    static bool Holds(lua_State* L, const std::string& expression) {
        const bool holds = luaL_dostring(L, ("return " + expression).c_str()) == 0 && lua_toboolean(L, -1);
        lua_pop(L, 1);
        return holds;
    }
    /// What a step throws; it is to leave the stack as much higher as stated, which then is cut back if it
    /// threw.
    template <class Step>
    std::string Run(int growth, Step step) {
        const int top = lua_gettop(L);
        const std::string thrown = Thrown(step);
        EXPECT_EQ(lua_gettop(L), top + growth) << thrown;
        if (!thrown.empty()) lua_settop(L, top);
        return thrown;
    }

    const std::unique_ptr<lua_State, void (*)(lua_State*)> state{luaL_newstate(), lua_close};
    lua_State* const L = state.get();
    qev::CLuaAccess a{L};
};

/// Steps work one after the other, each answers true or each false, and the stack grows by so many in all.
#define EXPECT_STEPS(growth, answer, ...)                                                                    \
    EXPECT_EQ(Run(growth,                                                                                    \
                  [&] {                                                                                      \
                      for (const bool step : {__VA_ARGS__}) EXPECT_EQ(step, answer);                         \
                  }),                                                                                        \
              "")                                                                                            \
        << #__VA_ARGS__
/// A step throws a text; the stack grows as stated.
#define EXPECT_FAULT(growth, text, ...) EXPECT_EQ(Run(growth, [&] { __VA_ARGS__; }), text) << #__VA_ARGS__
#define EXPECT_HOLDS(expression) EXPECT_TRUE(Holds(L, expression)) << (expression)

} // namespace test
