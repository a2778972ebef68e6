/// \file
/// Protected steps. Lua raises an error with a longjmp, which skips destructors and aborts the process when
/// nothing is there to catch it, so that whatever may raise runs in here and holds nothing destructible.
#pragma once

#include <lua.hpp>

namespace qev {

/// Calls body(L), an int(lua_State*) as a Lua C function is, in protected mode on a stack of its own, where
/// it finds copies of the top `count` values from index 2 upwards. Answers Lua's status; the results asked
/// for, or else the error value, are pushed. Needs count + 2 free slots.
template <class Body>
int RunProtected(lua_State* L, int count, int results, Body& body) {
    lua_pushcfunction(
        L, [](lua_State* inner) { return (*static_cast<Body*>(lua_touserdata(inner, 1)))(inner); });
    lua_pushlightuserdata(L, &body);
    for (int i = 0; i < count; ++i) lua_pushvalue(L, -2 - count);
    return lua_pcall(L, 1 + count, results, 0);
}

/// Opens the standard libraries; false when memory is refused.
bool OpenLibraries(lua_State* L);

/// The text of a value: a text itself, which stays Lua's; a number in Lua's own format, in the buffer (of at
/// least LUAI_MAXNUMBER2STR bytes) and not converted in place, which could raise; null for other values.
const char* TextOf(lua_State* L, int index, char* buffer);

/// What the error value on top of the stack says. Valid while it lies there.
const char* ErrorText(lua_State* L);

/// Throws a copy of a text that belongs to the thread, so that it outlives whoever composed it.
[[noreturn]] void ThrowText(const char* text);

} // namespace qev
