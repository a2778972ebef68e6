// Runs technics texts, and remembers what it has compiled.
//
// Objects of a drawing mostly carry the same few texts, and to compile one costs more than to run it. So
// compiled chunks are kept in a table of the state, at places that the characters of their texts lead to,
// until there are too many or their texts too long; then all of them go. To drop only the one that was used
// longest ago would need an order that is kept up to date at every run. The table has its final size from the
// start, so that a chunk is stored and dropped without memory; Lua's own references would ask for
// some, outside a protected call, and a table of Lua 5.2 may lose values when memory is refused while it
// grows.
//
// A chunk sees the globals through its first upvalue, which a text may have set to another table; it is set
// to the state's globals before each run, so that a kept chunk behaves like one just compiled.
//
// A text that is taken as data is not run at all: data_text.h reads it, within text_limits.h.

#include "text_interpreter.h"

#include <new>

#include "../script/protect.h"
#include "data_text.h"

namespace qev {
namespace {

constexpr char kChunkName[] = "=technics";       // in error texts
constexpr int kMostChunks = 1024;                // more different texts than drawings use to have
constexpr std::size_t kMostChunkBytes = 1 << 20; // of their texts
constexpr char kChunks = 0;                      // its address is the key of the kept chunks

} // namespace

TextInterpreter::TextInterpreter(bool dataOnly) {
    if (dataOnly) m_optLimits.emplace();
    m_pState.reset(dataOnly ? lua_newstate(TextLimits::Allocate, &*m_optLimits) : luaL_newstate());
    if (!m_pState) throw std::bad_alloc();
    if (dataOnly) return;
    auto makeChunks = [](lua_State* L) {
        lua_createtable(L, kMostChunks, 0);
        lua_rawsetp(L, LUA_REGISTRYINDEX, &kChunks);
        return 0;
    };
    if (!OpenLibraries(State()) || RunProtected(State(), 0, 0, makeChunks) != LUA_OK) throw std::bad_alloc();
}

bool TextInterpreter::Run(std::string_view text, std::string& why) {
    if (!lua_checkstack(State(), LUA_MINSTACK)) { // an operator that asks may have filled it
        why = "stack overflow";
        return false;
    }
    text = text.substr(0, text.find('\0'));
    const bool isTooLong = m_optLimits && text.size() > TextLimits::kLongestText;
    if (isTooLong) {
        why = "the text is too long";
        return false;
    }
    const int status = m_optLimits ? RunData(text) : RunChunk(text);
    if (status == LUA_OK) return true;
    why = ErrorText(State());
    lua_pop(State(), 1);
    return false;
}

// Reads the text as data. Answers Lua's status; a failure leaves its message on the stack.
int TextInterpreter::RunData(std::string_view text) {
    const auto room = std::make_unique_for_overwrite<char[]>(text.size() + 1);
    auto body = [&](lua_State* L) {
        ReadDataText(L, text, room.get(), *m_optLimits);
        lua_newthread(L);
        return 2;
    };
    m_optLimits->Start(State());
    const int status = RunProtected(State(), 0, 2, body);
    m_optLimits->Stop(State());
    return status;
}

// Runs the chunk that was kept for the text or, without one, compiles it and keeps it. Answers Lua's status;
// a failure leaves its message on the stack.
int TextInterpreter::RunChunk(std::string_view text) {
    const auto known = m_mapChunks.find(text);
    const bool isNew = known == m_mapChunks.end();
    if (isNew && (m_mapChunks.size() == kMostChunks || m_nChunkBytes + text.size() > kMostChunkBytes))
        DropChunks();
    const int place = isNew ? static_cast<int>(m_mapChunks.size()) + 1 : known->second;
    bool isCompiled = false;
    auto body = [&](lua_State* L) {
        lua_rawgetp(L, LUA_REGISTRYINDEX, &kChunks);
        if (isNew) {
            if (luaL_loadbufferx(L, text.data(), text.size(), kChunkName, nullptr) != LUA_OK) lua_error(L);
            lua_pushvalue(L, -1);
            lua_rawseti(L, -3, place);
            isCompiled = true;
        } else {
            lua_rawgeti(L, -1, place);
        }
        lua_rawgeti(L, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS); // a text may have changed its own before
        if (!lua_setupvalue(L, -2, 1)) lua_pop(L, 1);
        lua_call(L, 0, 0);
        lua_getglobal(L, "T");
        lua_newthread(L);
        return 2;
    };
    const int status = RunProtected(State(), 0, 2, body);
    if (isCompiled) Keep(text, place);
    return status;
}

// Remembers where the chunk of a text is. Without memory for that the text is compiled again the next time,
// into that place.
void TextInterpreter::Keep(std::string_view text, int place) try {
    m_mapChunks.emplace(text, place);
    m_nChunkBytes += text.size();
} catch (const std::bad_alloc&) {
}

void TextInterpreter::DropChunks() {
    lua_rawgetp(State(), LUA_REGISTRYINDEX, &kChunks);
    for (int place = 1; place <= kMostChunks; ++place) {
        lua_pushnil(State());
        lua_rawseti(State(), -2, place);
    }
    lua_pop(State(), 1);
    m_mapChunks.clear();
    m_nChunkBytes = 0;
}

bool TextInterpreter::CanRead(const std::string& text, bool dataOnly, std::string& why) {
    if (dataOnly) return TextInterpreter(true).Run(text, why);
    const std::unique_ptr<lua_State, Close> state(luaL_newstate());
    if (!state) throw std::bad_alloc();
    const int status = luaL_loadbufferx(state.get(), text.data(), text.size(), kChunkName, nullptr);
    if (status == LUA_ERRMEM) throw std::bad_alloc();
    if (status != LUA_OK) why = ErrorText(state.get());
    return status == LUA_OK;
}

} // namespace qev
