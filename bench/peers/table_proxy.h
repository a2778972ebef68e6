/// \file
/// A table of Lua as binding libraries for C++ hold it: a reference in the registry, fields read and written
/// through it, types looked at. Debian packages none of these libraries, so that what they do stands here.
#pragma once

#include <initializer_list>

#include <lua.hpp>

namespace qev::bench {

/// A table that lay on top of the stack. The state must outlive it.
class TableProxy {
public:
    explicit TableProxy(lua_State* state) : L(state) {
        lua_pushvalue(L, -1);
        m_nReference = luaL_ref(L, LUA_REGISTRYINDEX);
    }
    TableProxy(const TableProxy&) = delete;
    TableProxy& operator=(const TableProxy&) = delete;

    /// A number of the table; 0 when it is none.
    double Get(const char* key) const { return Get({}, key); }
    /// A number of a table in tables; 0 when one of them is none.
    double Get(std::initializer_list<const char*> tables, const char* key) const {
        const int top = lua_gettop(L);
        lua_rawgeti(L, LUA_REGISTRYINDEX, m_nReference);
        for (const char* table : tables) {
            if (lua_type(L, -1) != LUA_TTABLE) break;
            lua_getfield(L, -1, table);
        }
        double number = 0;
        if (lua_type(L, -1) == LUA_TTABLE) {
            lua_getfield(L, -1, key);
            int isNumber = 0;
            number = lua_tonumberx(L, -1, &isNumber);
            if (!isNumber) number = 0;
        }
        lua_settop(L, top);
        return number;
    }
    /// Sets a number of the table.
    void Set(const char* key, double number) const {
        lua_rawgeti(L, LUA_REGISTRYINDEX, m_nReference);
        lua_pushnumber(L, number);
        lua_setfield(L, -2, key);
        lua_pop(L, 1);
    }

private:
    lua_State* const L;
    int m_nReference = LUA_NOREF;
};

} // namespace qev::bench
