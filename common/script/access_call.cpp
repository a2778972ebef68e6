#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <qev/script/access.h>

#include "fields.h"

namespace qev {

// Resumes the state as callers have always relied on: a function on top of the stack runs, a script that has
// yielded goes on. Lua refuses it while a function runs in the state and after a resume has failed once,
// which is the ordinary case. It would then only push a text, to be dropped again, and set the state's count
// of nested calls to 0, so that such a state is not asked.
void CLuaAccess::ResumeIdly() {
    lua_State* const L = m_pLuaState;
    const int status = lua_status(L);
    lua_Debug running;
    if (status == LUA_OK ? lua_getstack(L, 0, &running) != 0 : status != LUA_YIELD) return;
    const int top = lua_gettop(L);
    const int result = lua_resume(L, nullptr, 0);
    const bool failed = result != LUA_OK && result != LUA_YIELD;
    if (failed && lua_gettop(L) > top) lua_settop(L, top);
    if (lua_gettop(L) < 0) lua_settop(L, 0); // a script has made nil callable, and the stack was empty
}

// Pushes a global, nil for a null name.
void CLuaAccess::PushGlobal(const char* name) {
    const LuaFields fields(*this);
    lua_rawgeti(m_pLuaState, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
    if (!fields.Fetch(name)) lua_pushnil(m_pLuaState);
    lua_remove(m_pLuaState, -2);
}

bool CLuaAccess::StartCall(const char* table, const char* func, int resultCount) {
    std::fill_n(m_nPushCount, kMaxDepth, 0);
    m_bSavedAutoCreate = m_bAutoCreate;
    m_bAutoCreate = true;
    m_nResultCount = resultCount;
    m_nPushLevel = 0;
    ResumeIdly();
    if (!func) ErrorHandle("", nullptr, message::kNoFunction);
    PushGlobal(table ? table : func);
    if (table) {
        if (!lua_istable(m_pLuaState, -1)) ErrorHandle("", nullptr, message::kStartCallNoTable);
        LuaFields(*this).Fetch(func);
        lua_remove(m_pLuaState, -2);
    }
    if (!lua_isfunction(m_pLuaState, -1)) ErrorHandle("", nullptr, message::kFunctionNotFound);
    m_bCallReady = true;
    return true;
}

bool CLuaAccess::EndCall() {
    m_bAutoCreate = m_bSavedAutoCreate;
    if (!m_bCallReady) return false;
    const int arguments = m_nPushCount[0];
    std::fill_n(m_nPushCount, kMaxDepth, 0);
    m_nPushLevel = 0;
    if (lua_gettop(m_pLuaState) <= arguments) return false;
    const int results = std::max(m_nResultCount, LUA_MULTRET);
    LuaFields(*this).Reserve(std::max(results, 0));
    if (lua_pcall(m_pLuaState, arguments, results, 0) != LUA_OK)
        ErrorHandle("", nullptr, ErrorText(m_pLuaState));
    return true;
}

// Pushes a value of the call being prepared, or nothing before there is one.
template <class Pusher>
bool CLuaAccess::PushWith(Pusher push) {
    if (!m_bCallReady) return true;
    push(LuaFields(*this));
    ++m_nPushCount[m_nPushLevel];
    return true;
}

bool CLuaAccess::Push(bool value) {
    return PushWith([value](const LuaFields& fields) { lua_pushboolean(fields.L, value); });
}

bool CLuaAccess::Push(int value) {
    return Push(static_cast<double>(value));
}

bool CLuaAccess::Push(double value) {
    return PushWith([value](const LuaFields& fields) { lua_pushnumber(fields.L, value); });
}

bool CLuaAccess::Push(const char* text) {
    return PushWith(
        [text](const LuaFields& fields) { text ? fields.PushText(text) : lua_pushnil(fields.L); });
}

// Pushes the key, a name or else the count, and the table.
bool CLuaAccess::PushNewTable(const char* name) {
    if (m_nDepth >= kMaxDepth) ErrorHandle("", nullptr, message::kTooDeep);
    if (!m_bCallReady) return false;
    if (m_nPushLevel == kMaxDepth - 1) ErrorHandle("", nullptr, message::kTooDeep);
    LuaFields(*this).Protected("", 0, LUA_MULTRET, [&](lua_State* inner) {
        if (name)
            lua_pushstring(inner, name);
        else
            lua_pushnumber(inner, m_nPushCount[m_nPushLevel]);
        lua_createtable(inner, 0, 0);
        return m_nPushLevel == 0 ? 1 : 2;
    });
    ++m_nPushCount[m_nPushLevel++];
    return true;
}

bool CLuaAccess::PushTable() {
    return PushNewTable(nullptr);
}

bool CLuaAccess::PushTable(const char* name) {
    return name && PushNewTable(name);
}

bool CLuaAccess::PushTableLeave() {
    if (!m_bCallReady) return true;
    if (m_nPushLevel == 0) return false;
    if (m_nPushLevel != 1) {
        if (lua_gettop(m_pLuaState) < 3) return false;
        LuaFields(*this).Protected("", 3, 0, [](lua_State* inner) {
            lua_settable(inner, 2);
            return 0;
        });
        lua_pop(m_pLuaState, 2);
    }
    --m_nPushLevel;
    return true;
}

bool CLuaAccess::Pop(bool& value, int index) {
    if (!lua_isboolean(m_pLuaState, index)) ErrorHandle("", nullptr, message::kPopNoBoolean);
    value = lua_toboolean(m_pLuaState, index) != 0;
    return true;
}

bool CLuaAccess::Pop(int& value, int index) {
    if (!lua_isnumber(m_pLuaState, index)) ErrorHandle("", nullptr, message::kPopNoNumber);
    value = static_cast<int>(lua_tointeger(m_pLuaState, index));
    return true;
}

bool CLuaAccess::Pop(double& value, int index) {
    if (!lua_isnumber(m_pLuaState, index)) ErrorHandle("", nullptr, message::kPopNoNumber);
    value = lua_tonumber(m_pLuaState, index);
    return true;
}

// Turns the number in a stack slot into its text.
void CLuaAccess::MakeText(int index) {
    const LuaFields fields(*this);
    lua_pushvalue(m_pLuaState, index);
    fields.Protected("", 1, 1, [](lua_State* inner) {
        lua_tostring(inner, 2);
        return 1;
    });
    lua_replace(m_pLuaState, index);
    lua_pop(m_pLuaState, 1);
}

bool CLuaAccess::Pop(const char*& text, int index) {
    if (!lua_isstring(m_pLuaState, index)) ErrorHandle("", nullptr, message::kPopNoText);
    if (lua_type(m_pLuaState, index) == LUA_TNUMBER) MakeText(lua_absindex(m_pLuaState, index));
    text = lua_tostring(m_pLuaState, index);
    return true;
}

struct CLuaAccess::Arguments {
    ~Arguments() { va_end(list); }
    template <class T>
    T Next() {
        return va_arg(list, T);
    }

    va_list list;
};

void CLuaAccess::PushArgument(char letter, Arguments& arguments) {
    switch (letter) {
    case 'b':
        Push(arguments.Next<int>() != 0);
        break;
    case 'i':
        Push(arguments.Next<int>());
        break;
    case 'd':
        Push(arguments.Next<double>());
        break;
    case 's':
        Push(arguments.Next<const char*>());
        break;
    default:
        ErrorHandle("", nullptr, message::kWrongParameter);
    }
}

// Reads a result into what the caller's pointer points to.
template <class T>
void CLuaAccess::PopInto(T* value, int index) {
    if (!value) ErrorHandle("", nullptr, message::kWrongResult);
    Pop(*value, index);
}

void CLuaAccess::PopCopy(char** copy, int index) {
    const char* text = nullptr;
    PopInto(copy ? &text : nullptr, index);
    const std::size_t size = std::strlen(text) + 1;
    auto* memory = static_cast<char*>(std::malloc(size)); // the caller calls free()
    if (!memory) ErrorHandle("", nullptr, message::kNoMemory);
    *copy = static_cast<char*>(std::memcpy(memory, text, size));
}

void CLuaAccess::PopInBuffer(char** buffer, int size, int index) {
    const char* text = nullptr;
    PopInto(buffer && *buffer ? &text : nullptr, index);
    const std::size_t length = std::strlen(text);
    if (size < 0 || length > static_cast<std::size_t>(size))
        ErrorHandle("", nullptr, message::kBufferTooShort);
    std::memset(*buffer, 0, size);
    std::memcpy(*buffer, text, length);
}

void CLuaAccess::PopResult(char letter, int index, Arguments& arguments) {
    switch (letter) {
    case 'b':
        return PopInto(arguments.Next<bool*>(), index);
    case 'i':
        return PopInto(arguments.Next<int*>(), index);
    case 'd':
        return PopInto(arguments.Next<double*>(), index);
    case 's':
        return PopCopy(arguments.Next<char**>(), index);
    case 'S': {
        char** buffer = arguments.Next<char**>();
        return PopInBuffer(buffer, arguments.Next<int>(), index);
    }
    default:
        ErrorHandle("", nullptr, message::kWrongResult);
    }
}

bool CLuaAccess::CallLuaFunc(const char* table, const char* func, const char* format, ...) {
    Arguments arguments;
    va_start(arguments.list, format);
    const std::string_view letters(format ? format : "");
    const std::size_t sign = letters.find('>');
    const bool isTyped = sign != std::string_view::npos;
    const std::string_view results = isTyped ? letters.substr(sign + 1) : "";
    const int count = static_cast<int>(results.size());
    StartCall(table, func, count);
    for (const char letter : letters.substr(0, isTyped ? sign : 0)) PushArgument(letter, arguments);
    if (!EndCall()) return false;
    for (int i = 0; i < count; ++i) PopResult(results[i], i - count, arguments);
    lua_pop(m_pLuaState, count);
    return true;
}

} // namespace qev
