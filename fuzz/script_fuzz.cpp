// Any bytes as a script, whose tables are then read, written, copied and called. The bridge may throw its
// texts and nothing else.
#include <cfloat>

#include "sandbox.h"

namespace {

using qev::CLuaAccess;

constexpr CLuaAccess::EnumItem kModes[] = {{"Fast", 1}, {"Slow", 2}, {nullptr, 0}};

// Reads, writes and calls under names and places that a script is likely to have, with buffers that are too
// small.
void Exercise(fuzz::Sandbox& L, fuzz::Sandbox& target) {
    CLuaAccess access(L);
    access.m_bAutoCreate = true;
    lua_getglobal(L, "T");
    double number = 0;
    char text[8], *buffer = text;
    L.Try([&] { access.Read(number, "Speed", 0, 10); });
    L.Try([&] { access.Read(number, "Mode", kModes); });
    L.Try([&] { access.Read(text, sizeof text, 1); });
    L.Try([&] { access.Write("text", "Name"); });
    L.Try([&] { access.Write(1.0, 2); });
    L.Try([&] { access.Enter("Tool"); });
    L.Try([&] { access.Read(number, 3, -DBL_MAX, DBL_MAX); });
    access.Leave();
    L.Try([&] { access.CallLuaFunc(nullptr, "f", "ds>S", 0.5, "text", &buffer, 8); });
    L.Try([&] { access.CallLuaFunc("T", "f", "i>b", 1, reinterpret_cast<bool*>(text)); });
    lua_getglobal(L, "T");
    lua_newtable(target);
    L.Try([&] { qev::CopyLuaTable(L, target); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    fuzz::Sandbox L, target;
    const auto* script = reinterpret_cast<const char*>(data);
    if (luaL_loadbufferx(L, script, size, "script", "t") == LUA_OK) lua_pcall(L, 0, 1, 0);
    Exercise(L, target);
    return 0;
}
