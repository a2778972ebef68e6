// Reading fields. Every Read fetches the value onto the stack, looks at it there without converting it in
// place (a number that Lua turns into a text in its slot would need memory, and would change a key that a
// walk over the table still needs), and takes it off again. Where an error is thrown the value stays on the
// stack, as the caller has been promised; so nothing between the fetch and the throw may hold an object with
// a destructor that touches the stack.
//
// Bounds are compared with the number as Lua holds it, before it is cut to an int, and written so that a NaN
// on either side compares false and counts as inside.

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstdio>
#include <cstring>

#include <qev/script/access.h>

#include "fields.h"

namespace qev {
namespace {

constexpr std::size_t kLongestShown = 256; // bytes of a key, as an error text has

// A value counts as a boolean only if it is one; everything in Lua may be taken for one in a condition.
template <class Key>
bool ReadBool(const LuaFields& fields, bool& value, Key key) {
    const int type = fields.Fetch(key);
    if (type == LUA_TNONE) return false;
    const bool isBoolean = type == LUA_TBOOLEAN;
    if (isBoolean) value = lua_toboolean(fields.L, -1) != 0;
    lua_pop(fields.L, 1);
    return isBoolean;
}

// Throws that a number is outside its bounds; `format` is the message with a place for each of them.
[[noreturn]] void RaiseRange(CLuaAccess& cursor, const char* key, double value, double min, double max,
                             const char* format) {
    char shown[32], text[96];
    std::snprintf(shown, sizeof shown, "%g", value);
    std::snprintf(text, sizeof text, format, min, max);
    cursor.ErrorHandle(key, shown, text);
}

template <class Key>
bool ReadNumber(CLuaAccess& cursor, double& value, Key key, double min, double max, const char* format) {
    const LuaFields fields(cursor);
    if (fields.Fetch(key) == LUA_TNONE) return false;
    int isNumber = 0;
    const double number = lua_tonumberx(fields.L, -1, &isNumber);
    if (isNumber) {
        value = number;
        if (min > number || number > max) RaiseRange(cursor, KeyText(key), number, min, max, format);
    }
    lua_pop(fields.L, 1);
    return isNumber != 0;
}

template <class Key>
bool ReadText(CLuaAccess& cursor, char* buffer, unsigned long long size, Key key) {
    const LuaFields fields(cursor);
    if (!buffer || size == 0 || fields.Fetch(key) == LUA_TNONE) return false;
    char number[LUAI_MAXNUMBER2STR];
    const char* text = TextOf(fields.L, -1, number);
    if (text) {
        const std::size_t length = std::strlen(text);
        const std::size_t fits = std::min<unsigned long long>(length, size - 1);
        char shown[kLongestShown]; // the name may lie in the buffer
        if (fits < length) std::snprintf(shown, sizeof shown, "%s", static_cast<const char*>(KeyText(key)));
        std::memcpy(buffer, text, fits);
        buffer[fits] = '\0';
        if (fits < length) cursor.ErrorHandle(shown, buffer, message::kTextTooLong);
    }
    lua_pop(fields.L, 1);
    return text != nullptr;
}

// Cut towards zero, and to the nearest int outside the range of int; a NaN is 0. To convert such numbers as
// they are would be undefined.
int ToInt(double value) {
    if (value != value) return 0;
    return static_cast<int>(std::clamp<double>(value, INT_MIN, INT_MAX));
}

} // namespace

bool CLuaAccess::Read(bool& value, const char* name) {
    return ReadBool(LuaFields(*this), value, name);
}

bool CLuaAccess::Read(bool& value, int index) {
    return ReadBool(LuaFields(*this), value, index);
}

bool CLuaAccess::Read(double& value, const char* name, double min, double max) {
    return ReadNumber(*this, value, name, min, max, message::kRangeByName);
}

bool CLuaAccess::Read(double& value, int index, double min, double max) {
    return ReadNumber(*this, value, index, min, max, message::kRangeByIndex);
}

bool CLuaAccess::Read(int& value, const char* name, double min, double max) {
    double number = 0;
    if (!Read(number, name, min, max)) return false;
    value = ToInt(number);
    return true;
}

bool CLuaAccess::Read(int& value, int index) {
    double number = 0;
    if (!Read(number, index, -DBL_MAX, DBL_MAX)) return false;
    value = ToInt(number);
    return true;
}

bool CLuaAccess::Read(double& value, const char* name, const EnumItem* items) {
    const LuaFields fields(*this);
    if (fields.Fetch(name) == LUA_TNONE) return false;
    char number[LUAI_MAXNUMBER2STR];
    const char* text = TextOf(fields.L, -1, number);
    if (text) {
        const EnumItem* item = items;
        while (item && item->name && std::strcmp(item->name, text) != 0) ++item;
        if (!item || !item->name) ErrorHandle(name, text, message::kUnknownName);
        value = item->value;
    }
    lua_pop(fields.L, 1);
    return text != nullptr;
}

bool CLuaAccess::Read(int& value, const char* name, const EnumItem* items) {
    double number = 0;
    if (!Read(number, name, items)) return false;
    value = ToInt(number);
    return true;
}

bool CLuaAccess::Read(char* buffer, unsigned long long size, const char* name) {
    return ReadText(*this, buffer, size, name);
}

bool CLuaAccess::Read(char* buffer, unsigned long long size, int index) {
    return ReadText(*this, buffer, size, index);
}

bool CLuaAccess::Read(void** pointer, const char* name) {
    const LuaFields fields(*this);
    if (!pointer || fields.Fetch(name) == LUA_TNONE) return false;
    const bool isUserdata = lua_isuserdata(fields.L, -1);
    if (isUserdata) *pointer = lua_touserdata(fields.L, -1);
    lua_pop(fields.L, 1);
    return isUserdata;
}

} // namespace qev
