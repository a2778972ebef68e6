/// \file
/// One operation's work on the table on top of a cursor's stack. What cannot raise (a value that is there, or
/// is missing from a table without a metatable) is done at once, everything else in a protected call.
#pragma once

#include <charconv>
#include <type_traits>

#include <qev/script/access.h>

#include "messages.h"
#include "path.h"
#include "protect.h"
#include "texts.h"

namespace qev {

/// A key as error texts show it: a name, or an index in brackets.
class KeyText {
public:
    explicit KeyText(const char* name) : m_szText(name) {}
    explicit KeyText(int index) : m_szText(m_szBuffer) {
        char* end = std::to_chars(m_szBuffer + 1, m_szBuffer + sizeof m_szBuffer - 2, index).ptr;
        *end++ = ']';
        *end = '\0';
    }
    KeyText(const KeyText&) = delete;
    operator const char*() const { return m_szText; }

private:
    char m_szBuffer[16] = "[";
    const char* m_szText;
};

/// Works on the stack of a cursor; made for each operation.
class LuaFields {
public:
    /// Makes sure of the stack slots that an operation needs, beside those for what it leaves, or throws.
    explicit LuaFields(CLuaAccess& cursor, int left = 1) : L(cursor.m_pLuaState), m_rCursor(cursor) {
        Reserve(kSlots + left);
    }

    bool IsTableOnTop() const { return lua_istable(L, -1); }

    /// Pushes the value under a key of the table on top and answers its type; LUA_TNONE, with nothing pushed,
    /// when there is no table or the name is null.
    template <class Key>
    int Fetch(Key key) const {
        if (IsNull(key) || !IsTableOnTop()) return LUA_TNONE;
        if (TryPushRaw(key)) {
            const int type = lua_type(L, -1);
            if (type != LUA_TNIL || !lua_getmetatable(L, -2)) return type;
            lua_pop(L, 2);
        }
        FetchProtected(key);
        return lua_type(L, -1);
    }

    /// Replaces the table on top by the value under a name, never null, and answers its type. Throws what a
    /// metatable raises.
    int Replace(const char* name) const {
        const int type = Fetch(name);
        lua_replace(L, -2);
        return type;
    }

    /// Writes a value under a key of the table on top. A key that holds none is only written where the cursor
    /// creates keys. False when nothing is written; no table and a null name are no errors.
    template <class Key, class Value>
    bool Store(Key key, Value value) const {
        if (IsNull(key) || !IsTableOnTop()) return false;
        CountWrite();
        return TryReplace(key, value) || StoreProtected(key, value);
    }

    /// Pushes a text.
    void PushText(const char* text) const {
        if (TryPush(text)) return;
        Protected("", 0, 1, [&](lua_State* inner) {
            Push(inner, text);
            return 1;
        });
    }

    /// Pushes a new table and writes it under a key of the table on top.
    template <class Key>
    void CreateTable(Key key) const {
        CountWrite();
        Protected("", 1, 1, [&](lua_State* inner) {
            lua_createtable(inner, 0, 0);
            lua_pushvalue(inner, -1);
            SetNew(inner, key);
            return 1;
        });
    }

    /// Takes the value off the top and writes it under a key of the table below it. An index is written
    /// without asking a metatable.
    template <class Key>
    void StoreTop(Key key) const {
        CountWrite();
        Protected(KeyText(key), 2, 0, [&](lua_State* inner) {
            SetNew(inner, key);
            return 0;
        });
        lua_pop(L, 1);
    }

    /// RunProtected; what Lua raises is thrown, and the stack then is as it was before.
    template <class Body>
    void Protected(const char* key, int count, int results, Body body) const {
        static_assert(std::is_trivially_destructible_v<Body>);
        if (RunProtected(L, count, results, body) != LUA_OK) RaiseFromTop(key);
    }

    /// Makes sure of a number of free stack slots, or throws.
    void Reserve(int slots) const {
        if (!lua_checkstack(L, slots)) m_rCursor.ErrorHandle("", nullptr, message::kStackFull);
    }

    /// Notes that a table may change. A state whose tables somebody keeps an eye on has its texts.
    void CountWrite() const {
        if (m_rCursor.m_pTexts) m_rCursor.m_pTexts->CountWrite();
    }

    lua_State* const L; ///< the cursor's

private:
    static constexpr int kSlots = 7;

    static bool IsNull(const char* name) { return !name; }
    static bool IsNull(int) { return false; }

    // The value under a key as the table itself holds it. False, with nothing pushed, when the key cannot be
    // pushed without memory.
    bool TryPushRaw(const char* name) const {
        if (!TryPush(name)) return false;
        lua_rawget(L, -2);
        return true;
    }
    bool TryPushRaw(int index) const {
        lua_rawgeti(L, -1, index);
        return true;
    }

    // Writes a key that the table itself holds, which asks neither for memory nor for a metatable.
    template <class Value>
    bool TryReplace(const char* name, Value value) const {
        if (!TryPush(name)) return false;
        lua_pushvalue(L, -1);
        lua_rawget(L, -3);
        const bool isThere = !lua_isnil(L, -1);
        lua_pop(L, 1);
        if (isThere && TryPush(value)) {
            lua_rawset(L, -3);
            return true;
        }
        lua_pop(L, 1);
        return false;
    }
    template <class Value>
    bool TryReplace(int index, Value value) const {
        lua_rawgeti(L, -1, index);
        const bool isThere = !lua_isnil(L, -1);
        lua_pop(L, 1);
        if (!isThere || !TryPush(value)) return false;
        lua_rawseti(L, -2, index);
        return true;
    }

    // The protected ways. No object with a destructor may live in these bodies.
    template <class Key>
    void FetchProtected(Key key) const {
        Protected(KeyText(key), 1, 1, [&](lua_State* inner) {
            Push(inner, key);
            lua_gettable(inner, 2);
            return 1;
        });
    }
    template <class Key, class Value>
    bool StoreProtected(Key key, Value value) const {
        bool stored = false;
        Protected(KeyText(key), 1, 0, [&](lua_State* inner) {
            Push(inner, key);
            if (!m_rCursor.m_bAutoCreate) {
                lua_pushvalue(inner, -1);
                lua_gettable(inner, 2);
                if (lua_isnil(inner, -1)) return 0;
                lua_pop(inner, 1);
            }
            Push(inner, value);
            lua_settable(inner, 2);
            stored = true;
            return 0;
        });
        return stored;
    }

    // Writes the value on top of a protected stack. An index never asks a metatable.
    static void SetNew(lua_State* inner, const char* name) { lua_setfield(inner, 2, name); }
    static void SetNew(lua_State* inner, int index) { lua_rawseti(inner, 2, index); }

    // Pushes on a protected stack, where Lua may raise.
    void Push(lua_State* inner, const char* text) const { LuaTexts::Push(inner, m_rCursor.m_pTexts, text); }
    static void Push(lua_State* inner, int index) { lua_pushnumber(inner, index); }
    static void Push(lua_State* inner, bool value) { lua_pushboolean(inner, value); }
    static void Push(lua_State* inner, double value) {
        if (value == value)
            lua_pushnumber(inner, value);
        else
            lua_pushnil(inner);
    }
    static void Push(lua_State* inner, void* value) { lua_pushlightuserdata(inner, value); }
    // Pushes only what needs no memory.
    bool TryPush(const char* text) const {
        return m_rCursor.m_pTexts && m_rCursor.m_pTexts->TryPush(L, text);
    }
    template <class Value>
    bool TryPush(Value value) const {
        Push(L, value);
        return true;
    }

    // Throws the error on top and drops it.
    [[noreturn]] void RaiseFromTop(const char* key) const {
        LuaPath(m_rCursor).Compose(key, nullptr, ErrorText(L));
        lua_pop(L, 1);
        ThrowText(m_rCursor.m_szError);
    }

    CLuaAccess& m_rCursor;
};

} // namespace qev
