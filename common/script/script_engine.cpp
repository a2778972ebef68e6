// The process's interpreter.
//
// The instance is made and deleted by two statics and not by one that is local to GetLuaScript: a host may
// never ask for it, yet the libraries' load and unload is when it begins and ends, in every order of
// unloading.
//
// State and cursor are each shared by the copies of an engine. The cursor must go before its state, because
// its destructor restores the stack; so whoever holds the cursor holds the state too (it is captured by the
// cursor's deleter), and the order in which engines let go of the two does not matter.

#include <cstdio>
#include <new>

#include <qev/script/access.h>
#include <qev/script/script_engine.h>

#include "protect.h"

namespace qev {
namespace {

// Loads in a protected call, for making the message may raise, and runs what was loaded.
template <class Load>
int LoadAndRun(lua_State* L, const char* source, Load load) {
    if (!L || !lua_checkstack(L, 2)) return 1;
    auto body = [&](lua_State* inner) {
        if (!source) return luaL_error(inner, "nothing to run");
        return load(inner, source) == LUA_OK ? 1 : lua_error(inner);
    };
    if (RunProtected(L, 0, 1, body) != LUA_OK) return 1;
    return lua_pcall(L, 0, LUA_MULTRET, 0) == LUA_OK ? 0 : 1;
}

} // namespace

// NOLINTNEXTLINE(modernize-pass-by-value): hosts link to this signature
CScriptEngine::CScriptEngine(const std::string& language) : m_strLanguage(language) {}
CScriptEngine::~CScriptEngine() = default;

// In this order: the holder deletes the instance when the library is unloaded.
CLuaScriptEngine* CLuaScriptEngine::ms_pLuaScriptEngine = new (std::nothrow) CLuaScriptEngine;
CLuaScriptEngine::AutoRelease CLuaScriptEngine::ms_Auto;

CLuaScriptEngine::AutoRelease::~AutoRelease() {
    delete ms_pLuaScriptEngine;
    ms_pLuaScriptEngine = nullptr;
}

CLuaScriptEngine* CLuaScriptEngine::GetLuaScript() {
    return ms_pLuaScriptEngine;
}

CLuaScriptEngine::CLuaScriptEngine() : CScriptEngine("lua") {
    CLuaScriptEngine::InitLuaEnv();
}

CLuaScriptEngine::~CLuaScriptEngine() = default;

void CLuaScriptEngine::initialize() {
    InitLuaEnv();
}

bool CLuaScriptEngine::InitLuaEnv() try {
    lua_State* opened = luaL_newstate();
    if (!opened) return false;
    std::shared_ptr<lua_State> state(opened, lua_close);
    if (!OpenLibraries(opened)) return false;
    // The cursor restores its stack when it is deleted, and so holds on to the state.
    m_pLuaAccess = {new CLuaAccess(opened), [state](CLuaAccess* cursor) { delete cursor; }};
    m_pLuaState = std::move(state);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void CLuaScriptEngine::UnInitLuaEnv() {
    m_pLuaAccess.reset();
    m_pLuaState.reset();
}

int CLuaScriptEngine::DoFile(const char* path) {
    return LoadAndRun(GetLuaState(), path,
                      [](lua_State* L, const char* file) { return luaL_loadfile(L, file); });
}

int CLuaScriptEngine::DoString(const char* text) {
    return LoadAndRun(GetLuaState(), text, luaL_loadstring);
}

void CLuaScriptEngine::PrintLuaStack() {
    lua_State* const L = GetLuaState();
    const int top = L ? lua_gettop(L) : 0;
    std::printf("--Stack Top(v)(%d)--\n", top);
    for (int i = top; i > 0; --i) {
        char number[LUAI_MAXNUMBER2STR];
        const char* text = TextOf(L, i, number);
        std::printf("(i:%d) %s(%s)\n", i, luaL_typename(L, i), text ? text : "(null)");
    }
    std::printf("--Stack Bottom--\n");
}

} // namespace qev
