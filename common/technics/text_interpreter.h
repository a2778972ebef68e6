/// \file
/// The interpreter in which technics texts are run.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include <lua.hpp>

#include "../script/texts.h"
#include "text_limits.h"

namespace qev {

/// A Lua state, and the chunks or tables that were made of texts lately.
class TextInterpreter {
public:
    /// With the standard libraries or, for texts taken as data, with no function at all and under limits.
    /// Throws std::bad_alloc when memory is refused.
    explicit TextInterpreter(bool dataOnly);

    /// The state, which stays the interpreter's.
    lua_State* State() const { return m_pState.get(); }

    /// Runs a text, up to its first zero byte, and pushes its table T (whatever its type, nil when there is
    /// none) and on top of it a thread that no other request uses, on whose stack a cursor may work. What the
    /// text returns is dropped. False, with the reason and nothing pushed, when it cannot be compiled or
    /// fails. Throws std::bad_alloc when memory outside the state is refused; what is on the stack then is
    /// the caller's to drop.
    bool Run(std::string_view text, std::string& why);

    /// Whether a text can be compiled or, when it is to be taken as data, read. False with the reason. Throws
    /// std::bad_alloc when memory is refused.
    static bool CanRead(const std::string& text, bool dataOnly, std::string& why);

private:
    struct Close {
        void operator()(lua_State* L) const { lua_close(L); }
    };
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    int RunData(std::string_view text);
    int ReadData(std::string_view text, bool isAlone);
    int RunChunk(std::string_view text);
    void KeepTable(std::string_view text, std::size_t bytes);
    int PlaceFor(std::size_t bytes);
    void Keep(std::string_view text, int place, std::size_t bytes);
    void DropKept();

    std::optional<TextLimits> m_optLimits; // the state's memory, so that it goes last
    std::unique_ptr<lua_State, Close> m_pState;
    std::unordered_map<std::string, int, Hash, std::equal_to<>> m_mapKept; // places of chunks, or of tables
    std::size_t m_nKeptBytes = 0;
    LuaTexts* m_pTexts = nullptr; // counts the writes of cursors; null until the first text is taken as data
    std::uint64_t m_nWrites = 0;  // that had been counted when the first of the kept tables was kept
    bool m_bKeepsTables = true;
};

} // namespace qev
