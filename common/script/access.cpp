#include <algorithm>
#include <cstring>
#include <new>

#include <qev/script/access.h>

#include "fields.h"

namespace qev {

struct CLuaAccess::PathName {
    char text[128];
};

CLuaAccess::CLuaAccess(lua_State* L) : m_pLuaState(L), m_nBaseTop(lua_gettop(L)) {
    if (lua_checkstack(L, 1)) m_pTexts = LuaTexts::Find(L);
}

CLuaAccess::~CLuaAccess() {
    // The stack may be lower than it was, and grows then.
    if (lua_checkstack(m_pLuaState, m_nBaseTop)) lua_settop(m_pLuaState, m_nBaseTop);
}

// The next level's name, to be written to: a new one if there is none or a copy of the cursor shares it.
CLuaAccess::PathName& CLuaAccess::OwnLevel() try {
    std::shared_ptr<PathName>& level = m_szPath[m_nDepth];
    if (level.use_count() != 1) level = std::make_shared<PathName>();
    ++m_nDepth;
    return *level;
} catch (const std::bad_alloc&) {
    ErrorHandle("", nullptr, message::kNoMemory);
}

void CLuaAccess::SetLevel(const char* name) {
    PathName& level = OwnLevel();
    if (!name) name = "";
    const std::size_t length = std::min(std::strlen(name), sizeof level.text - 1);
    std::memcpy(level.text, name, length);
    level.text[length] = '\0';
}

void CLuaAccess::SetLevel(int index) {
    const KeyText text(index);
    std::memcpy(OwnLevel().text, text, std::strlen(text) + 1);
}

template <class Key>
bool CLuaAccess::EnterKey(Key key, const char* shown) {
    if (m_nDepth < 0 || m_nDepth >= kMaxDepth) ErrorHandle(shown, nullptr, message::kTooDeep);
    LuaFields fields(*this);
    SetLevel(key);
    if (!fields.Fetch(key)) {
        lua_pushnil(m_pLuaState);
        return false;
    }
    const int type = lua_type(m_pLuaState, -1);
    if (type == LUA_TTABLE) return true;
    if (type == LUA_TNIL && !m_bAutoCreate) return false;
    lua_pop(m_pLuaState, 1);
    if (type != LUA_TNIL) ErrorHandle(shown, nullptr, message::kNoTable);
    fields.CreateTable(key);
    return true;
}

bool CLuaAccess::Enter(const char* name) {
    return EnterKey(name, name);
}

bool CLuaAccess::Enter(int index) {
    return EnterKey(index, nullptr);
}

void CLuaAccess::Leave() {
    if (m_nDepth >= 0) --m_nDepth; // its name is used again by the next Enter
    if (lua_gettop(m_pLuaState) > 0) lua_pop(m_pLuaState, 1);
}

void CLuaAccess::ComposeError(const char* key, const char* value, const char* message) {
    std::size_t length = 0;
    const auto append = [&](const char* text) {
        const std::size_t fits = std::min(std::strlen(text), sizeof m_szError - 1 - length);
        std::memcpy(m_szError + length, text, fits);
        length += fits;
    };
    for (int level = 0; level < m_nDepth; ++level) {
        append(m_szPath[level]->text);
        append(".");
    }
    append(key ? key : "");
    if (value) {
        append(" = ");
        append(value);
    }
    append(" ");
    append(message ? message : "");
    m_szError[length] = '\0';
}

void CLuaAccess::ErrorHandle(const char* key, const char* value, const char* message) {
    ComposeError(key, value, message);
    ThrowText(m_szError);
}

} // namespace qev
