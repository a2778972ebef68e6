// Runs technics texts, and remembers what it has compiled.
//
// Objects of a drawing mostly carry the same few texts, and to compile one costs more than to run it. So
// compiled chunks are kept in Lua's registry under the characters of their text, until there are too many or
// their texts too long; then all of them go. To drop only the one that was used longest ago would need an
// order that is kept up to date at every run.
//
// A chunk sees the globals through its first upvalue, which a text may have set to another table; it is set
// to the state's globals before each run, so that a kept chunk behaves like one just compiled.
//
// A text that is taken as data finds nothing that it did not make: the state opens no libraries, the globals
// are a fresh table for every text, and chunks in binary form are refused, since they could hold instructions
// that no compiler makes. What it may use up is limited by text_limits.h.

#include "text_interpreter.h"

#include <new>

#include "../script/protect.h"

namespace qev {
namespace {

constexpr char kChunkName[] = "=technics";       // in error texts
constexpr std::size_t kMostChunks = 1024;        // more different texts than drawings use to have
constexpr std::size_t kMostChunkBytes = 1 << 20; // of their texts

// A text that is handed to Lua in pieces, between which the time is checked.
struct Source {
    static constexpr std::size_t kPiece = 1024;

    static const char* NextPiece(lua_State* L, void* self, std::size_t* size) {
        auto& source = *static_cast<Source*>(self);
        if (source.limits) source.limits->CheckTime(L);
        const std::string_view piece = source.left.substr(0, source.limits ? kPiece : source.left.size());
        source.left.remove_prefix(piece.size());
        *size = piece.size();
        return piece.data();
    }

    std::string_view left;
    const TextLimits* limits;
};

} // namespace

TextInterpreter::TextInterpreter(bool dataOnly) {
    if (dataOnly) m_optLimits.emplace();
    m_pState.reset(dataOnly ? lua_newstate(TextLimits::Allocate, &*m_optLimits) : luaL_newstate());
    if (!m_pState || (!dataOnly && !OpenLibraries(State()))) throw std::bad_alloc();
    m_pCursor = std::make_unique<CLuaAccess>(State());
}

bool TextInterpreter::Run(std::string_view text, std::string& why) {
    if (!lua_checkstack(State(), LUA_MINSTACK)) { // an operator that asks may have filled it
        why = "stack overflow";
        return false;
    }
    text = text.substr(0, text.find('\0'));
    const auto known = m_mapChunks.find(text);
    int chunk = known == m_mapChunks.end() ? LUA_NOREF : known->second;
    const int status = m_optLimits ? RunLimited(text, chunk) : RunChunk(text, chunk);
    if (status != LUA_OK) {
        why = ErrorText(State());
        lua_pop(State(), 1);
    }
    if (known == m_mapChunks.end() && chunk != LUA_NOREF) Keep(text, chunk);
    return status == LUA_OK;
}

// Runs a chunk under the limits, with globals of its own, which nothing but its table T keeps afterwards.
int TextInterpreter::RunLimited(std::string_view text, int& chunk) {
    lua_State* const L = State();
    auto freshGlobals = [](lua_State* inner) {
        lua_newtable(inner);
        lua_rawseti(inner, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
        return 0;
    };
    int status = RunProtected(L, 0, 0, freshGlobals);
    if (status != LUA_OK) return status;
    m_optLimits->Start(L);
    status = RunChunk(text, chunk);
    m_optLimits->Stop(L);
    if (chunk != LUA_NOREF) { // a kept chunk would keep this text's globals alive, and hand them to the next
        lua_rawgeti(L, LUA_REGISTRYINDEX, chunk);
        lua_pushnil(L);
        lua_setupvalue(L, -2, 1);
        lua_pop(L, 1);
    }
    return status;
}

// Runs the chunk in a place of the registry or, without one, compiles the text and gives it a place. Answers
// Lua's status; a failure leaves its message on the stack.
int TextInterpreter::RunChunk(std::string_view text, int& chunk) {
    auto body = [&](lua_State* L) {
        if (chunk != LUA_NOREF) {
            lua_rawgeti(L, LUA_REGISTRYINDEX, chunk);
        } else {
            if (Load(L, text) != LUA_OK) return lua_error(L);
            lua_pushvalue(L, -1);
            chunk = luaL_ref(L, LUA_REGISTRYINDEX);
        }
        lua_rawgeti(L, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS); // a text may have changed its own before
        if (!lua_setupvalue(L, -2, 1)) lua_pop(L, 1);
        lua_call(L, 0, 0);
        return 0;
    };
    return RunProtected(State(), 0, 0, body);
}

// Compiles a text, as text only where it is data, and pushes the chunk or an error message. Answers Lua's
// status.
int TextInterpreter::Load(lua_State* L, std::string_view text) {
    Source source{text, m_optLimits ? &*m_optLimits : nullptr};
    return lua_load(L, Source::NextPiece, &source, kChunkName, m_optLimits ? "t" : nullptr);
}

// Remembers a compiled chunk under its text. Without memory for that the chunk is forgotten, and the text
// compiled again the next time.
void TextInterpreter::Keep(std::string_view text, int chunk) try {
    if (m_mapChunks.size() == kMostChunks || m_nChunkBytes + text.size() > kMostChunkBytes) DropChunks();
    m_mapChunks.emplace(text, chunk);
    m_nChunkBytes += text.size();
} catch (const std::bad_alloc&) {
    luaL_unref(State(), LUA_REGISTRYINDEX, chunk);
}

void TextInterpreter::DropChunks() {
    for (const auto& [text, chunk] : m_mapChunks) luaL_unref(State(), LUA_REGISTRYINDEX, chunk);
    m_mapChunks.clear();
    m_nChunkBytes = 0;
}

} // namespace qev
