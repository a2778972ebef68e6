#include <cfloat>
#include <cstdlib>

#include <qev/lua.h>

#include <lua.hpp>

#include "support/pair.h"

namespace {

using benchmark::State;
using qev::CLuaAccess;
using qev::bench::Pair;

constexpr char kScript[] =
    "T = { Speed = 12, Mode = 'Fast', [3] = 7, Tool = { Cut = { Lead = { Length = 3 } } } }\n"
    "function Add(a, b) return a + b end";

// A state with the script's globals, and its table T on top.
class Script {
public:
    Script() : L(luaL_newstate()) {
        luaL_openlibs(L);
        if (luaL_dostring(L, kScript)) std::abort();
        lua_getglobal(L, "T");
    }
    Script(const Script&) = delete;
    ~Script() { lua_close(L); }

    lua_State* const L;
};

// Runs a step on a state of its own, over and over.
template <class Step>
void RunRaw(State& state, Step step) {
    const Script script;
    for (auto _ : state) benchmark::DoNotOptimize(step(script.L));
}
template <class Step>
void RunOurs(State& state, Step step) {
    const Script script;
    CLuaAccess access(script.L);
    for (auto _ : state) benchmark::DoNotOptimize(step(access));
}

double NumberOnTop(lua_State* L) {
    const double number = lua_isnumber(L, -1) ? lua_tonumber(L, -1) : 0;
    lua_pop(L, 1);
    return number;
}

const bool read = Pair(
    "read a number", 1.15,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            lua_getfield(L, -1, "Speed");
            return NumberOnTop(L);
        });
    },
    [](State& state) {
        RunOurs(state, [](CLuaAccess& access) {
            double speed = 0;
            access.Read(speed, "Speed", 0, 3000);
            return speed;
        });
    });

const bool readIndex = Pair(
    "read a number by index", 1.15,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            lua_pushnumber(L, 3);
            lua_gettable(L, -2);
            return NumberOnTop(L);
        });
    },
    [](State& state) {
        RunOurs(state, [](CLuaAccess& access) {
            double number = 0;
            access.Read(number, 3, 0, 3000);
            return number;
        });
    });

const bool readDeep = Pair(
    "enter three tables and read", 1.5,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            double length = 0;
            for (const char* key : {"Tool", "Cut", "Lead"}) {
                lua_getfield(L, -1, key);
                if (!lua_istable(L, -1)) std::abort();
            }
            lua_getfield(L, -1, "Length");
            length = NumberOnTop(L);
            for (int i = 0; i < 3; ++i) lua_pop(L, 1);
            return length;
        });
    },
    [](State& state) {
        RunOurs(state, [](CLuaAccess& access) {
            double length = 0;
            for (const char* key : {"Tool", "Cut", "Lead"}) access.Enter(key);
            access.Read(length, "Length", 0, 100);
            for (int i = 0; i < 3; ++i) access.Leave();
            return length;
        });
    });

// The key is looked up first: a new one is not written unless the host asks for it, and takes memory, which
// the raw way has to ask for in a protected call.
bool SetIfThere(lua_State* L) {
    lua_getfield(L, -1, "Speed");
    const bool isThere = !lua_isnil(L, -1);
    lua_pop(L, 1);
    if (!isThere) return false;
    lua_pushnumber(L, 13);
    lua_setfield(L, -2, "Speed");
    return true;
}

void WriteAny(State& state) {
    RunOurs(state, [](CLuaAccess& access) {
        access.m_bAutoCreate = true;
        return access.Write(13.0, "Speed");
    });
}

const bool writeExisting = Pair(
    "write a number that is there", 1.35, [](State& state) { RunRaw(state, SetIfThere); },
    [](State& state) { RunOurs(state, [](CLuaAccess& access) { return access.Write(13.0, "Speed"); }); });

const bool writeAny = Pair(
    "write a number that may be new", 1.35,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            if (SetIfThere(L)) return 0;
            lua_pushcfunction(L, [](lua_State* inner) {
                lua_pushnumber(inner, 13);
                lua_setfield(inner, -2, "Speed");
                return 0;
            });
            lua_pushvalue(L, -2);
            return lua_pcall(L, 1, 0, 0);
        });
    },
    WriteAny);

// Beside a set that aborts the process when memory is refused.
const bool writeUnprotected = Pair(
    "write beside an unprotected set", 2,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            lua_pushnumber(L, 13);
            lua_setfield(L, -2, "Speed");
            return 0;
        });
    },
    WriteAny);

const bool writeText = Pair(
    "text beside an unprotected set", 2,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            lua_pushstring(L, "Slow");
            lua_setfield(L, -2, "Mode");
            return 0;
        });
    },
    [](State& state) {
        RunOurs(state, [](CLuaAccess& access) {
            access.m_bAutoCreate = true;
            return access.Write("Slow", "Mode");
        });
    });

const bool call = Pair(
    "call by name", 2.5,
    [](State& state) {
        RunRaw(state, [](lua_State* L) {
            lua_getglobal(L, "Add");
            lua_pushnumber(L, 1);
            lua_pushnumber(L, 2);
            if (lua_pcall(L, 2, 1, 0)) std::abort();
            return NumberOnTop(L);
        });
    },
    [](State& state) {
        RunOurs(state, [](CLuaAccess& access) {
            double sum = 0;
            access.CallLuaFunc(nullptr, "Add", "dd>d", 1.0, 2.0, &sum);
            return sum;
        });
    });

} // namespace
