/// \file
/// The interpreter in which technics texts are run.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include <qev/script/access.h>

#include <lua.hpp>

#include "text_limits.h"

namespace qev {

/// A Lua state, a cursor over it, and the chunks that were compiled lately.
class TextInterpreter {
public:
    /// With the standard libraries or, for texts taken as data, with no function at all and under limits.
    /// Throws std::bad_alloc when memory is refused.
    explicit TextInterpreter(bool dataOnly);

    /// The state, which stays the interpreter's.
    lua_State* State() const { return m_pState.get(); }
    /// The cursor over the state, which stays the interpreter's.
    CLuaAccess& Cursor() { return *m_pCursor; }

    /// Runs a text; what it returns is dropped. False, with the reason, when it cannot be compiled or fails.
    bool Run(std::string_view text, std::string& why);

private:
    struct Close {
        void operator()(lua_State* L) const { lua_close(L); }
    };
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    int RunLimited(std::string_view text, int& chunk);
    int RunChunk(std::string_view text, int& chunk);
    int Load(lua_State* L, std::string_view text);
    void Keep(std::string_view text, int chunk);
    void DropChunks();

    std::optional<TextLimits> m_optLimits; // the state's memory, so that it goes last
    std::unique_ptr<lua_State, Close> m_pState;
    std::unique_ptr<CLuaAccess> m_pCursor;
    std::unordered_map<std::string, int, Hash, std::equal_to<>> m_mapChunks; // places in the registry
    std::size_t m_nChunkBytes = 0;                                           // of their texts
};

} // namespace qev
