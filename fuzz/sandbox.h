/// \file
/// A Lua state in which any script may be run, and the texts that the bridge throws.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <qev/lua.h>

#include <lua.hpp>

#include "input.h"

namespace fuzz {

/// A state without files and processes, whose scripts end after some thousand steps, and whose memory at 64
/// MB.
class Sandbox {
public:
    /// Opens the state.
    Sandbox() : m_pState(lua_newstate(Allocate, &m_nBytes), lua_close) {
        constexpr luaL_Reg kLibraries[] = {{"_G", luaopen_base},
                                           {"string", luaopen_string},
                                           {"table", luaopen_table},
                                           {"coroutine", luaopen_coroutine},
                                           {"debug", luaopen_debug}};
        for (const luaL_Reg& library : kLibraries) luaL_requiref(*this, library.name, library.func, 1);
        (void)luaL_dostring(*this, "dofile, loadfile, print, string.rep, debug.sethook = nil");
        lua_settop(*this, 0);
        lua_sethook(*this, End, LUA_MASKCOUNT, 5000);
    }
    /// The state, which stays the sandbox's.
    operator lua_State*() const { return m_pState.get(); }

    /// Runs a step; a text that the bridge throws ends it, and the stack is cut back then. Whether it ended.
    template <class Step>
    bool Try(const Step& step) {
        const int top = lua_gettop(*this);
        try {
            step();
            return true;
        } catch (char* text) {
            Expect(std::strlen(text) <= 255, "a text that is thrown has 255 bytes at most");
        }
        if (lua_gettop(*this) > top) lua_settop(*this, top);
        return false;
    }

private:
    // From the first time on at every step, so that no protected call goes on.
    static void End(lua_State* L, lua_Debug*) {
        lua_sethook(L, End, LUA_MASKCOUNT, 1);
        luaL_error(L, "too long");
    }
    static void* Allocate(void* bytes, void* block, std::size_t before, std::size_t after) {
        auto& inUse = *static_cast<std::size_t*>(bytes);
        const std::size_t had = block ? before : 0;
        if (after > had && inUse + after - had > std::size_t{1} << 26) return nullptr;
        inUse += after - had;
        if (after > 0) return std::realloc(block, after);
        std::free(block);
        return nullptr;
    }

    std::size_t m_nBytes = 0;
    std::unique_ptr<lua_State, void (*)(lua_State*)> m_pState;
};

} // namespace fuzz
