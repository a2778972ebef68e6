/// \file
/// A piece of work with somebody else's cursor.
#pragma once

#include <qev/script/access.h>

#include <lua.hpp>

#include "fields.h"

namespace qev {

/// Brings a cursor and its stack back to where they were, however the scope is left.
class CursorScope {
public:
    explicit CursorScope(CLuaAccess& cursor)
        : m_rCursor(cursor), m_nTop(lua_gettop(cursor.m_pLuaState)), m_nDepth(cursor.m_nDepth),
          m_bAutoCreate(cursor.m_bAutoCreate) {}
    CursorScope(const CursorScope&) = delete;
    CursorScope& operator=(const CursorScope&) = delete;
    ~CursorScope() {
        lua_State* const L = m_rCursor.m_pLuaState;
        if (lua_checkstack(L, m_nTop)) lua_settop(L, m_nTop); // may grow, as a Leave too many pops
        m_rCursor.m_nDepth = m_nDepth;
        m_rCursor.m_bAutoCreate = m_bAutoCreate;
    }

    /// Pushes a global, or nil; throws what a metatable raises.
    void PushGlobal(const char* name) const { LuaFields(m_rCursor).PushGlobal(name); }

private:
    CLuaAccess& m_rCursor;
    int m_nTop;
    int m_nDepth;
    bool m_bAutoCreate;
};

} // namespace qev
