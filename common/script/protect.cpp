// What the bridge needs where Lua must not raise: opening the libraries, and texts of values and errors.
//
// A text is thrown from memory of the thread. To throw from the memory of whoever has composed it would hand
// out a pointer into a cursor that the throw itself destroys, and to throw a copy from the heap would leave
// hosts that catch `char*` with memory that nobody frees.

#include "protect.h"

#include <cstdio>

namespace qev {

bool OpenLibraries(lua_State* L) {
    auto open = [](lua_State* inner) {
        luaL_openlibs(inner);
        return 0;
    };
    const bool opened = RunProtected(L, 0, 0, open) == LUA_OK;
    lua_settop(L, 0);
    return opened;
}

const char* TextOf(lua_State* L, int index, char* buffer) {
    if (lua_type(L, index) == LUA_TSTRING) return lua_tostring(L, index);
    if (lua_type(L, index) != LUA_TNUMBER) return nullptr;
    std::snprintf(buffer, LUAI_MAXNUMBER2STR, LUA_NUMBER_FMT, lua_tonumber(L, index));
    return buffer;
}

const char* ErrorText(lua_State* L) {
    static thread_local char buffer[64];
    if (const char* text = TextOf(L, -1, buffer)) return text;
    std::snprintf(buffer, sizeof buffer, "(error object is a %s value)", luaL_typename(L, -1));
    return buffer;
}

void ThrowText(const char* text) {
    static thread_local char thrown[256];
    std::snprintf(thrown, sizeof thrown, "%s", text);
    throw static_cast<char*>(thrown); // NOLINT(misc-throw-by-value-catch-by-reference): hosts catch char*
}

} // namespace qev
