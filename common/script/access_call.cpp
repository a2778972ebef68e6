// Calls of Lua functions with typed arguments and results.
//
// A call is prepared on the Lua stack itself: StartCall puts the function there, each Push one argument
// behind it, and EndCall needs only their number. A table argument is filled by the ordinary Write, as it
// lies on top of the stack like any current table; inside an argument a table is pushed behind its key, and
// leaving it stores the two in the table below.
//
// CallLuaFunc takes the same way, with a letter for each argument and result. The letters are followed
// strictly from left to right, because the values lie in an argument list of C: after a letter that is
// unknown nothing behind it can be found any more, so that the call ends there with an error and does not
// guess. The results are read while they still lie on the stack; after an error they stay there, for the
// destructor to drop.

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <qev/script/access.h>

#include "fields.h"

namespace qev {
namespace {

// Resumes the state as callers have always relied on: a function on top of the stack runs, a script that has
// yielded goes on. Lua refuses it while a function runs in the state and after a resume has failed once,
// which is the ordinary case. It would then only push a text, to be dropped again, and set the state's count
// of nested calls to 0, so that such a state is not asked.
void ResumeIdly(lua_State* L) {
    const int status = lua_status(L);
    lua_Debug running;
    if (status == LUA_OK ? lua_getstack(L, 0, &running) != 0 : status != LUA_YIELD) return;
    const int top = lua_gettop(L);
    const int result = lua_resume(L, nullptr, 0);
    const bool failed = result != LUA_OK && result != LUA_YIELD;
    if (failed && lua_gettop(L) > top) lua_settop(L, top);
    if (lua_gettop(L) < 0) lua_settop(L, 0); // a script has made nil callable, and the stack was empty
}

// Turns the number in a stack slot into its text.
void MakeText(CLuaAccess& cursor, int index) {
    const LuaFields fields(cursor);
    lua_pushvalue(fields.L, index);
    fields.Protected("", 1, 1, [](lua_State* inner) {
        lua_tostring(inner, 2);
        return 1;
    });
    lua_replace(fields.L, index);
    lua_pop(fields.L, 1);
}

// The values behind the format of CallLuaFunc, one after the other.
struct Arguments {
    ~Arguments() { va_end(list); }
    template <class T>
    T Next() {
        return va_arg(list, T);
    }

    va_list list;
};

void PushTextOrNil(const LuaFields& fields, const char* text) {
    text ? fields.PushText(text) : lua_pushnil(fields.L);
}

// False for a letter that is none of an argument's.
bool PushArgument(const LuaFields& fields, char letter, Arguments& arguments) {
    switch (letter) {
    case 'b':
        lua_pushboolean(fields.L, arguments.Next<int>() != 0);
        return true;
    case 'i':
        lua_pushnumber(fields.L, arguments.Next<int>());
        return true;
    case 'd':
        lua_pushnumber(fields.L, arguments.Next<double>());
        return true;
    case 's':
        PushTextOrNil(fields, arguments.Next<const char*>());
        return true;
    default:
        return false;
    }
}

} // namespace

// The call that a cursor prepares and whose results it reads.
class LuaCall {
public:
    explicit LuaCall(CLuaAccess& cursor) : m_rCursor(cursor) {}

    // Has `push` push a value of the call, or does nothing before there is one.
    template <class Pusher>
    bool Push(Pusher push) const {
        if (!m_rCursor.m_bCallReady) return true;
        push(LuaFields(m_rCursor));
        ++m_rCursor.m_nPushCount[m_rCursor.m_nPushLevel];
        return true;
    }
    bool PushTable(const char* name) const;
    void PushArguments(std::string_view letters, Arguments& arguments) const;
    void PopResult(char letter, int index, Arguments& arguments) const;

private:
    template <class T>
    void PopInto(T* value, int index) const;
    void PopCopy(char** copy, int index) const;
    void PopInBuffer(char** buffer, int size, int index) const;

    CLuaAccess& m_rCursor;
};

// Pushes the key, a name or else the count, and the table.
bool LuaCall::PushTable(const char* name) const {
    if (m_rCursor.m_nDepth >= CLuaAccess::kMaxDepth) m_rCursor.ErrorHandle("", nullptr, message::kTooDeep);
    if (!m_rCursor.m_bCallReady) return false;
    int& level = m_rCursor.m_nPushLevel;
    int& count = m_rCursor.m_nPushCount[level];
    if (level == CLuaAccess::kMaxDepth - 1) m_rCursor.ErrorHandle("", nullptr, message::kTooDeep);
    LuaFields(m_rCursor).Protected("", 0, LUA_MULTRET, [&](lua_State* inner) {
        if (name)
            lua_pushstring(inner, name);
        else
            lua_pushnumber(inner, count);
        lua_createtable(inner, 0, 0);
        return level == 0 ? 1 : 2;
    });
    ++count;
    ++level;
    return true;
}

// The arguments themselves, which makes sure of the stack once.
void LuaCall::PushArguments(std::string_view letters, Arguments& arguments) const {
    const LuaFields fields(m_rCursor, static_cast<int>(letters.size()));
    for (const char letter : letters) {
        if (!PushArgument(fields, letter, arguments))
            m_rCursor.ErrorHandle("", nullptr, message::kWrongParameter);
        ++m_rCursor.m_nPushCount[0];
    }
}

// Reads a result into what the caller's pointer points to.
template <class T>
void LuaCall::PopInto(T* value, int index) const {
    if (!value) m_rCursor.ErrorHandle("", nullptr, message::kWrongResult);
    m_rCursor.Pop(*value, index);
}

void LuaCall::PopCopy(char** copy, int index) const {
    const char* text = nullptr;
    PopInto(copy ? &text : nullptr, index);
    const std::size_t size = std::strlen(text) + 1;
    auto* memory = static_cast<char*>(std::malloc(size)); // the caller calls free()
    if (!memory) m_rCursor.ErrorHandle("", nullptr, message::kNoMemory);
    *copy = static_cast<char*>(std::memcpy(memory, text, size));
}

void LuaCall::PopInBuffer(char** buffer, int size, int index) const {
    const char* text = nullptr;
    PopInto(buffer && *buffer ? &text : nullptr, index);
    const std::size_t length = std::strlen(text);
    if (size < 0 || length > static_cast<std::size_t>(size))
        m_rCursor.ErrorHandle("", nullptr, message::kBufferTooShort);
    std::memset(*buffer, 0, size);
    std::memcpy(*buffer, text, length);
}

void LuaCall::PopResult(char letter, int index, Arguments& arguments) const {
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
        m_rCursor.ErrorHandle("", nullptr, message::kWrongResult);
    }
}

bool CLuaAccess::StartCall(const char* table, const char* func, int resultCount) {
    std::fill_n(m_nPushCount, kMaxDepth, 0);
    m_bSavedAutoCreate = m_bAutoCreate;
    m_bAutoCreate = true;
    m_nResultCount = resultCount;
    m_nPushLevel = 0;
    ResumeIdly(m_pLuaState);
    if (!func) ErrorHandle("", nullptr, message::kNoFunction);
    const LuaFields fields(*this);
    lua_rawgeti(m_pLuaState, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
    int type = fields.Replace(table ? table : func);
    if (table) {
        if (type != LUA_TTABLE) ErrorHandle("", nullptr, message::kStartCallNoTable);
        type = fields.Replace(func);
    }
    if (type != LUA_TFUNCTION) ErrorHandle("", nullptr, message::kFunctionNotFound);
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
    if (results > arguments) LuaFields(*this).Reserve(results - arguments);
    if (lua_pcall(m_pLuaState, arguments, results, 0) != LUA_OK)
        ErrorHandle("", nullptr, ErrorText(m_pLuaState));
    return true;
}

bool CLuaAccess::Push(bool value) {
    return LuaCall(*this).Push([value](const LuaFields& fields) { lua_pushboolean(fields.L, value); });
}

bool CLuaAccess::Push(int value) {
    return Push(static_cast<double>(value));
}

bool CLuaAccess::Push(double value) {
    return LuaCall(*this).Push([value](const LuaFields& fields) { lua_pushnumber(fields.L, value); });
}

bool CLuaAccess::Push(const char* text) {
    return LuaCall(*this).Push([text](const LuaFields& fields) { PushTextOrNil(fields, text); });
}

bool CLuaAccess::PushTable() {
    return LuaCall(*this).PushTable(nullptr);
}

bool CLuaAccess::PushTable(const char* name) {
    return name && LuaCall(*this).PushTable(name);
}

bool CLuaAccess::PushTableLeave() {
    if (!m_bCallReady) return true;
    if (m_nPushLevel == 0) return false;
    if (m_nPushLevel != 1) {
        if (lua_gettop(m_pLuaState) < 3) return false;
        const LuaFields fields(*this);
        fields.CountWrite();
        fields.Protected("", 3, 0, [](lua_State* inner) {
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
    int isNumber = 0;
    const lua_Integer number = lua_tointegerx(m_pLuaState, index, &isNumber);
    if (!isNumber) ErrorHandle("", nullptr, message::kPopNoNumber);
    value = static_cast<int>(number);
    return true;
}

bool CLuaAccess::Pop(double& value, int index) {
    int isNumber = 0;
    const double number = lua_tonumberx(m_pLuaState, index, &isNumber);
    if (!isNumber) ErrorHandle("", nullptr, message::kPopNoNumber);
    value = number;
    return true;
}

bool CLuaAccess::Pop(const char*& text, int index) {
    if (!lua_isstring(m_pLuaState, index)) ErrorHandle("", nullptr, message::kPopNoText);
    if (lua_type(m_pLuaState, index) == LUA_TNUMBER) MakeText(*this, lua_absindex(m_pLuaState, index));
    text = lua_tostring(m_pLuaState, index);
    return true;
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
    LuaCall(*this).PushArguments(letters.substr(0, isTyped ? sign : 0), arguments);
    if (!EndCall()) return false;
    for (int i = 0; i < count; ++i) LuaCall(*this).PopResult(results[i], i - count, arguments);
    lua_pop(m_pLuaState, count);
    return true;
}

} // namespace qev
