// Any bytes as a script, whose tables are then read, written, copied and called. The bridge may throw its
// texts and nothing else, and a text is at most 255 bytes long.
#include <cfloat>
#include <cstring>

#include <qev/lua.h>

#include <lua.hpp>

namespace {

using qev::CLuaAccess;

constexpr CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Slow", 2}, {nullptr, 0}};

// A Lua state without files and processes, whose scripts end after some thousand steps.
lua_State* Open() {
    lua_State* L = luaL_newstate();
    constexpr luaL_Reg kLibraries[] = {{"_G", luaopen_base},
                                       {"string", luaopen_string},
                                       {"table", luaopen_table},
                                       {"coroutine", luaopen_coroutine},
                                       {"debug", luaopen_debug}};
    for (const luaL_Reg& library : kLibraries) luaL_requiref(L, library.name, library.func, 1);
    luaL_dostring(L, "dofile, loadfile, print = nil");
    lua_settop(L, 0);
    lua_sethook(
        L, [](lua_State* hooked, lua_Debug*) { luaL_error(hooked, "too long"); }, LUA_MASKCOUNT, 5000);
    return L;
}

// Runs a step and catches what the bridge throws.
template <class Step>
void Try(Step step) {
    try {
        step();
    } catch (char* text) {
        if (std::strlen(text) > 255) __builtin_trap();
    }
}

// Reads, writes and calls under names and places that a script is likely to have, with buffers that are too
// small.
void Exercise(lua_State* L, lua_State* target) {
    CLuaAccess access(L);
    access.m_bAutoCreate = true;
    lua_getglobal(L, "T");
    double number = 0;
    char text[8], *buffer = text;
    Try([&] { access.Read(number, "Speed", 0, 10); });
    Try([&] { access.Read(number, "Mode", kModes); });
    Try([&] { access.Read(text, sizeof text, 1); });
    Try([&] { access.Write("text", "Name"); });
    Try([&] { access.Write(1.0, 2); });
    Try([&] { access.Enter("Tool"); });
    Try([&] { access.Read(number, 3, -DBL_MAX, DBL_MAX); });
    access.Leave();
    Try([&] { access.CallLuaFunc(nullptr, "f", "ds>S", 0.5, "text", &buffer, 8); });
    Try([&] { access.CallLuaFunc("T", "f", "i>b", 1, reinterpret_cast<bool*>(text)); });
    lua_getglobal(L, "T");
    lua_newtable(target);
    Try([&] { qev::CopyLuaTable(L, target); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const auto* script = reinterpret_cast<const char*>(data);
    lua_State* L = Open();
    lua_State* target = Open();
    if (luaL_loadbufferx(L, script, size, "script", "t") == LUA_OK) lua_pcall(L, 0, 1, 0);
    Exercise(L, target);
    lua_close(target);
    lua_close(L);
    return 0;
}
