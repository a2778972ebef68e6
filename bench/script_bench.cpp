// Values of Lua tables read and written through the bridge, beside raw Lua and beside a proxy of a table, as
// binding libraries have it.
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <qev/lua.h>

#include <lua.hpp>

#include "peers/table_proxy.h"
#include "support/work.h"

namespace {

using namespace qev::bench;
using qev::CLuaAccess;

// As many keys as a technics text has, and more than a cache of a few hundred texts holds.
constexpr int kFewKeys = 60, kManyKeys = 1000;

constexpr char kFill[] = R"lua(
T = { Mode = 'Fast' }
for i = 1, keys do
    T[i] = i
    T['Speed' .. i] = i
    T['T' .. i] = { Cut = { Lead = { Length = i } } }
end
function Add(a, b) return a + b end
)lua";

// A state with the table T on top, whose key i holds the number i, and whose key "Ti" a table of tables.
class Script {
public:
    explicit Script(int keys) : L(luaL_newstate()) {
        luaL_openlibs(L);
        const std::string fill = "local keys = " + std::to_string(keys) + kFill;
        if (luaL_dostring(L, fill.c_str())) std::abort();
        lua_getglobal(L, "T");
        for (int i = 1; i <= keys; ++i) {
            numbers.push_back(std::string("Speed").append(std::to_string(i)));
            tables.push_back(std::string("T").append(std::to_string(i)));
        }
    }
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;
    ~Script() { lua_close(L); }

    lua_State* const L;
    std::vector<std::string> numbers, tables;
};

// Rows whose step(L or cursor or proxy, script, i) answers a number.
template <class Step>
Row Raw(int keys, Step step) {
    return Ask([=] {
        return [=, script = std::make_shared<Script>(keys)](int i) { return step(script->L, *script, i); };
    });
}
template <class Step>
Row Bridge(int keys, Step step) {
    return Ask([=] {
        const auto script = std::make_shared<Script>(keys);
        const auto access = std::make_shared<CLuaAccess>(script->L);
        return [=](int i) { return step(*access, *script, i); };
    });
}
template <class Step>
Row Proxy(int keys, Step step) {
    return Ask([=] {
        const auto script = std::make_shared<Script>(keys);
        const auto table = std::make_shared<TableProxy>(script->L);
        return [=](int i) { return step(*table, *script, i); };
    });
}

double NumberOnTop(lua_State* L) {
    const double number = lua_isnumber(L, -1) ? lua_tonumber(L, -1) : 0;
    lua_pop(L, 1);
    return number;
}
double RawField(lua_State* L, const char* key) {
    lua_getfield(L, -1, key);
    return NumberOnTop(L);
}

bool AddRead(int keys) {
    return Add({"Lua read, " + std::to_string(keys) + " keys",
                Bridge(keys,
                       [](CLuaAccess& access, const Script& script, int i) {
                           double number = 0;
                           access.Read(number, script.numbers[i].c_str(), 0, 3000);
                           return number;
                       }),
                {{"proxy", Proxy(keys, [](TableProxy& table, const Script& script,
                                          int i) { return table.Get(script.numbers[i].c_str()); })}},
                Raw(keys, [](lua_State* L, const Script& script,
                             int i) { return RawField(L, script.numbers[i].c_str()); }),
                {1, 1.1},
                0,
                keys});
}

// A key is looked up first, as a new one is not written unless the host asks for it.
bool RawSetIfThere(lua_State* L, const char* key, double number) {
    lua_getfield(L, -1, key);
    const bool isThere = !lua_isnil(L, -1);
    lua_pop(L, 1);
    if (!isThere) return false;
    lua_pushnumber(L, number);
    lua_setfield(L, -2, key);
    return true;
}
bool AddWrite(int keys) {
    return Add({"Lua write, " + std::to_string(keys) + " keys",
                Bridge(keys, [](CLuaAccess& access, const Script& script,
                                int i) { return access.Write(13.0, script.numbers[i].c_str()); }),
                {{"proxy", Proxy(keys,
                                 [](TableProxy& table, const Script& script, int i) {
                                     table.Set(script.numbers[i].c_str(), 13.0);
                                     return true;
                                 })}},
                Raw(keys, [](lua_State* L, const Script& script,
                             int i) { return RawSetIfThere(L, script.numbers[i].c_str(), 13); }),
                {1, 1.3},
                0,
                keys});
}

bool AddDeepRead(int keys) {
    return Add({"Lua deep read, " + std::to_string(keys) + " keys",
                Bridge(keys,
                       [](CLuaAccess& access, const Script& script, int i) {
                           double length = 0;
                           for (const char* key : {script.tables[i].c_str(), "Cut", "Lead"})
                               access.Enter(key);
                           access.Read(length, "Length", 0, 3000);
                           for (int level = 0; level < 3; ++level) access.Leave();
                           return length;
                       }),
                {{"proxy", Proxy(keys,
                                 [](TableProxy& table, const Script& script, int i) {
                                     return table.Get({script.tables[i].c_str(), "Cut", "Lead"}, "Length");
                                 })}},
                Raw(keys,
                    [](lua_State* L, const Script& script, int i) {
                        for (const char* key : {script.tables[i].c_str(), "Cut", "Lead"}) {
                            lua_getfield(L, -1, key);
                            if (!lua_istable(L, -1)) std::abort();
                        }
                        const double length = RawField(L, "Length");
                        for (int level = 0; level < 3; ++level) lua_pop(L, 1);
                        return length;
                    }),
                {1, 1.4},
                0,
                keys});
}

const bool tables = [] {
    for (const int keys : {kFewKeys, kManyKeys}) AddRead(keys), AddWrite(keys), AddDeepRead(keys);
    return true;
}();

const bool readIndex = Add({"Lua read by index",
                            Bridge(kFewKeys,
                                   [](CLuaAccess& access, const Script&, int i) {
                                       double number = 0;
                                       access.Read(number, i + 1, 0, 3000);
                                       return number;
                                   }),
                            {},
                            Raw(kFewKeys,
                                [](lua_State* L, const Script&, int i) {
                                    lua_pushnumber(L, i + 1);
                                    lua_gettable(L, -2);
                                    return NumberOnTop(L);
                                }),
                            {0, 1.1},
                            0,
                            kFewKeys});

// A new key takes memory, for which the raw way has to ask in a protected call.
bool WriteAny(CLuaAccess& access, const Script& script, int i) {
    access.m_bAutoCreate = true;
    return access.Write(13.0, script.numbers[i].c_str());
}
const bool writeAny = Add({"Lua write, may be new",
                           Bridge(kFewKeys, WriteAny),
                           {},
                           Raw(kFewKeys,
                               [](lua_State* L, const Script& script, int i) {
                                   const char* key = script.numbers[i].c_str();
                                   if (RawSetIfThere(L, key, 13)) return true;
                                   lua_pushcfunction(L, [](lua_State* inner) {
                                       lua_pushnumber(inner, 13);
                                       lua_setfield(inner, -3, lua_tostring(inner, -2));
                                       return 0;
                                   });
                                   lua_pushvalue(L, -2);
                                   lua_pushstring(L, key);
                                   return lua_pcall(L, 2, 0, 0) == 0;
                               }),
                           {0, 1.3},
                           0,
                           kFewKeys});
// Beside a set that aborts the process when memory is refused.
const bool writeText = Add(
    {"Lua text, beside an unprotected set",
     Bridge(kFewKeys, [](CLuaAccess& access, const Script&, int) { return access.Write("Slow", "Mode"); }),
     {},
     Raw(kFewKeys,
         [](lua_State* L, const Script&, int) {
             lua_pushstring(L, "Slow");
             lua_setfield(L, -2, "Mode");
             return true;
         }),
     {0, 2}});

const bool call =
    Add({"Lua call by format",
         Bridge(kFewKeys,
                [](CLuaAccess& access, const Script&, int i) {
                    double sum = 0;
                    access.CallLuaFunc(nullptr, "Add", "dd>d", 1.0, static_cast<double>(i), &sum);
                    return sum;
                }),
         {},
         Raw(kFewKeys,
             [](lua_State* L, const Script&, int i) {
                 lua_getglobal(L, "Add");
                 lua_pushnumber(L, 1);
                 lua_pushnumber(L, i);
                 if (lua_pcall(L, 2, 1, 0)) std::abort();
                 return NumberOnTop(L);
             }),
         {0, 1.5}});

} // namespace
