// Writing fields. Each form only says what kind of value it writes; which key may be written, and how what
// Lua may raise is caught, is decided in one place for all of them, Store in fields.h. An int is written as a
// number because Lua 5.2 has no other: the two forms exist only so that an int argument is not ambiguous.

#include <qev/script/access.h>

#include "fields.h"

namespace qev {

bool CLuaAccess::Write(bool value, const char* name) {
    return LuaFields(*this).Store(name, value);
}

bool CLuaAccess::Write(bool value, int index) {
    return LuaFields(*this).Store(index, value);
}

bool CLuaAccess::Write(double value, const char* name) {
    return LuaFields(*this).Store(name, value);
}

bool CLuaAccess::Write(double value, int index) {
    return LuaFields(*this).Store(index, value);
}

bool CLuaAccess::Write(int value, const char* name) {
    return Write(static_cast<double>(value), name);
}

bool CLuaAccess::Write(int value, int index) {
    return Write(static_cast<double>(value), index);
}

bool CLuaAccess::Write(double value, const char* name, const EnumItem* items) {
    if (!name || !LuaFields(*this).IsTableOnTop()) return false;
    const EnumItem* item = items;
    while (item && item->name && item->value != value) ++item;
    if (!item || !item->name) ErrorHandle(name, nullptr, message::kUnnamedValue);
    return Write(item->name, name);
}

bool CLuaAccess::Write(const char* text, const char* name) {
    return text && LuaFields(*this).Store(name, text);
}

bool CLuaAccess::Write(const char* text, int index) {
    return text && LuaFields(*this).Store(index, text);
}

bool CLuaAccess::Write(void* pointer, const char* name) {
    return LuaFields(*this).Store(name, pointer);
}

} // namespace qev
