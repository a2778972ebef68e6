// A plug-in that uses the libraries for as long as it is loaded, also in its own static's destructor.
#include <qev/qev.h>

#include <lua.hpp>

#include "log.h"

namespace {

struct AtUnload {
    ~AtUnload() {
        if (qev::CLuaScriptEngine::GetLuaScript()) ++g_lifetimeCounts.enginesSeen;
    }
} s_atUnload;

} // namespace

// How many of the library's two statics live. Calls into each of them.
extern "C" QEV_EXPORT int CountStaticsAlive() {
    const auto callback = [](const char*, void*, int, const char*) { return 0; };
    qev::CTestDataHandle::SetIgnoreList({"Late"}); // frees the list that was there, while it lives
    const int id = qev::SubscribeMsgTopic("Late", callback, nullptr);
    const int called = qev::PublishMsgTopic("Late", 0, "");
    qev::UnsubscribeMsgTopic(id);
    return called + (UnitSystem::GetUnitSystem() != nullptr ? 1 : 0);
}

// Code of each library that must go with this one.
extern "C" QEV_EXPORT const void* CodeOf(int library) {
    const void* const codes[] = {reinterpret_cast<const void*>(&math::RegularizeRadian),
                                 reinterpret_cast<const void*>(&qev::GetContourDirectionEx),
                                 reinterpret_cast<const void*>(&qev::PolyPosToDouble)};
    return codes[library];
}

// Leaves something in the script engine that is collected when the engine closes.
extern "C" QEV_EXPORT void WatchEngine() {
    lua_State* L = qev::CLuaScriptEngine::GetLuaScript()->GetLuaState();
    lua_newuserdata(L, 0);
    lua_createtable(L, 0, 1);
    lua_pushcfunction(L, CountClosedEngine);
    lua_setfield(L, -2, "__gc");
    lua_setmetatable(L, -2);
    lua_setfield(L, LUA_REGISTRYINDEX, "lifetime");
}
