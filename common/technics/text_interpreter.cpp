// Runs technics texts, and remembers what it has made of them.
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
// A text that is taken as data is not run at all: data_text.h reads it, within text_limits.h. What it makes
// is always the same. So its table T itself is kept and handed out again, until somebody writes into a table
// of the state: only a cursor can, as there are no functions, and the cursors' writes are counted. After one
// of them all kept tables go, since which of them it went into is not known. A request within another one
// gets a table of its own, as either of the two may still write, and a thread of its own for its cursors.

#include "text_interpreter.h"

#include <algorithm>
#include <new>

#include "../script/protect.h"
#include "data_text.h"

namespace qev {
namespace {

constexpr char kChunkName[] = "=technics";      // in error texts
constexpr int kMostKept = 1024;                 // more different texts than drawings use to have
constexpr std::size_t kMostKeptBytes = 1 << 20; // of the texts, or of what was read from them
constexpr char kKept = 0;                       // its address is the key of the kept chunks or tables
constexpr char kThread = 0;                     // and this one's of the thread that requests for data share

// Makes the table of what is kept. May raise.
void MakeKept(lua_State* L) {
    lua_createtable(L, kMostKept, 0);
    lua_rawsetp(L, LUA_REGISTRYINDEX, &kKept);
}

} // namespace

TextInterpreter::TextInterpreter(bool dataOnly) {
    if (dataOnly) m_optLimits.emplace();
    m_pState.reset(dataOnly ? lua_newstate(TextLimits::Allocate, &*m_optLimits) : luaL_newstate());
    if (!m_pState) throw std::bad_alloc();
    if (dataOnly) return;
    auto makeKept = [](lua_State* L) {
        MakeKept(L);
        return 0;
    };
    if (!OpenLibraries(State()) || RunProtected(State(), 0, 0, makeKept) != LUA_OK) throw std::bad_alloc();
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

// Takes the table that was kept for the text or, without one, reads the text and keeps its table. Answers
// Lua's status; a failure leaves its message on the stack.
int TextInterpreter::RunData(std::string_view text) {
    const bool isAlone = lua_gettop(State()) == 0; // no other request has its table on the stack
    if (!m_bKeepsTables || !isAlone) return ReadData(text, false);
    if (!m_pTexts) {
        auto body = [this](lua_State* L) {
            MakeKept(L);
            lua_newthread(L);
            lua_rawsetp(L, LUA_REGISTRYINDEX, &kThread);
            m_pTexts = LuaTexts::Of(L);
            return 0;
        };
        if (const int status = RunProtected(State(), 0, 0, body); status != LUA_OK) return status;
    }
    if (m_nWrites != m_pTexts->CountedWrites()) DropKept();
    m_nWrites = m_pTexts->CountedWrites();
    if (const auto known = m_mapKept.find(text); known != m_mapKept.end()) {
        lua_rawgetp(State(), LUA_REGISTRYINDEX, &kKept);
        lua_rawgeti(State(), -1, known->second);
        lua_replace(State(), -2);
        lua_rawgetp(State(), LUA_REGISTRYINDEX, &kThread);
        return LUA_OK;
    }
    const std::size_t before = m_optLimits->BytesInUse();
    const int status = ReadData(text, true);
    if (status == LUA_OK) KeepTable(text, m_optLimits->BytesInUse() - before);
    return status;
}

// Reads the text as data, for a request that is alone or within another one. Answers Lua's status; a failure
// leaves its message on the stack.
int TextInterpreter::ReadData(std::string_view text, bool isAlone) {
    const auto room = std::make_unique_for_overwrite<char[]>(text.size() + 1);
    auto body = [&](lua_State* L) {
        ReadDataText(L, text, room.get(), *m_optLimits);
        if (isAlone)
            lua_rawgetp(L, LUA_REGISTRYINDEX, &kThread);
        else
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
    const auto known = m_mapKept.find(text);
    const bool isNew = known == m_mapKept.end();
    const int place = isNew ? PlaceFor(text.size()) : known->second;
    bool isCompiled = false;
    auto body = [&](lua_State* L) {
        lua_rawgetp(L, LUA_REGISTRYINDEX, &kKept);
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
    if (isCompiled) Keep(text, place, text.size());
    return status;
}

// Keeps the table below the top, which was read from a text and takes so many bytes.
void TextInterpreter::KeepTable(std::string_view text, std::size_t bytes) {
    if (bytes > kMostKeptBytes) return;
    const int place = PlaceFor(bytes);
    lua_rawgetp(State(), LUA_REGISTRYINDEX, &kKept);
    lua_pushvalue(State(), -3);
    lua_rawseti(State(), -2, place);
    lua_pop(State(), 1);
    Keep(text, place, bytes);
}

// A free place for what takes so many bytes.
int TextInterpreter::PlaceFor(std::size_t bytes) {
    if (m_mapKept.size() == kMostKept || m_nKeptBytes + bytes > kMostKeptBytes) DropKept();
    return static_cast<int>(m_mapKept.size()) + 1;
}

// Remembers where what was made of a text is. Without memory for that it is made again the next time, into
// that place.
void TextInterpreter::Keep(std::string_view text, int place, std::size_t bytes) try {
    m_mapKept.emplace(text, place);
    m_nKeptBytes += bytes;
} catch (const std::bad_alloc&) {
}

void TextInterpreter::DropKept() {
    const int last = std::min(static_cast<int>(m_mapKept.size()) + 1, kMostKept);
    lua_rawgetp(State(), LUA_REGISTRYINDEX, &kKept);
    for (int place = 1; place <= last; ++place) {
        lua_pushnil(State());
        lua_rawseti(State(), -2, place);
    }
    lua_pop(State(), 1);
    m_mapKept.clear();
    m_nKeptBytes = 0;
}

bool TextInterpreter::CanRead(const std::string& text, bool dataOnly, std::string& why) {
    if (dataOnly) {
        TextInterpreter reader(true);
        reader.m_bKeepsTables = false;
        return reader.Run(text, why);
    }
    const std::unique_ptr<lua_State, Close> state(luaL_newstate());
    if (!state) throw std::bad_alloc();
    const int status = luaL_loadbufferx(state.get(), text.data(), text.size(), kChunkName, nullptr);
    if (status == LUA_ERRMEM) throw std::bad_alloc();
    if (status != LUA_OK) why = ErrorText(state.get());
    return status == LUA_OK;
}

} // namespace qev
