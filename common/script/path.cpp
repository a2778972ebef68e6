// The path of a cursor is an array of names, the open levels first. A level's name stays where it is when the
// level is left, so that the next Enter finds the memory for its own name there: a cursor that walks up and
// down a tree of tables asks for memory once for each depth that it reaches.
//
// Copies of a cursor share the names. A name that is shared is therefore never written to; the copy that
// enters a key first takes a new one for itself, and the other keeps seeing the path that it entered.

#include "path.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "fields.h"

namespace qev {

struct CLuaAccess::PathName {
    char text[128];
};

// Opens a level and answers its name, to be written to: a new one if there is none or a copy of the cursor
// shares it.
CLuaAccess::PathName& LuaPath::Own() const try {
    std::shared_ptr<CLuaAccess::PathName>& level = m_rCursor.m_szPath[m_rCursor.m_nDepth];
    if (level.use_count() != 1) level = std::make_shared<CLuaAccess::PathName>();
    ++m_rCursor.m_nDepth;
    return *level;
} catch (const std::bad_alloc&) {
    m_rCursor.ErrorHandle("", nullptr, message::kNoMemory);
}

void LuaPath::Open(const char* name) const {
    CLuaAccess::PathName& level = Own();
    if (!name) name = "";
    const std::size_t length = std::min(std::strlen(name), sizeof level.text - 1);
    std::memcpy(level.text, name, length);
    level.text[length] = '\0';
}

void LuaPath::Open(int index) const {
    const KeyText text(index);
    std::memcpy(Own().text, text, std::strlen(text) + 1);
}

void LuaPath::Compose(const char* key, const char* value, const char* message) const {
    char* const error = m_rCursor.m_szError;
    std::size_t length = 0;
    const auto append = [&](const char* text) {
        const std::size_t fits = std::min(std::strlen(text), CLuaAccess::kErrorSize - 1 - length);
        std::memcpy(error + length, text, fits);
        length += fits;
    };
    for (int level = 0; level < m_rCursor.m_nDepth; ++level) {
        append(m_rCursor.m_szPath[level]->text);
        append(".");
    }
    append(key ? key : "");
    if (value) {
        append(" = ");
        append(value);
    }
    append(" ");
    append(message ? message : "");
    error[length] = '\0';
}

} // namespace qev
