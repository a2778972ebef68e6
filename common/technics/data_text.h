/// \file
/// Technics texts that are data and no program.
#pragma once

#include <string_view>

#include <lua.hpp>

#include "text_limits.h"

namespace qev {

/// Reads a text as data and pushes its table T, or nil when it sets none.
///
/// Such a text is a run of `name = value`, with or without semicolons, in the notation of Lua 5.2: a value is
/// nil, true, false, a number, a text, a constructor of a table, the name of a value that was set before, or
/// a minus before a number. Comments are skipped. Everything else of the language is refused.
///
/// Raises an error in L, which names the line, for a text that is no data or passes a limit. So it runs in a
/// protected call. `room` has space for as many bytes as the text has, and one more.
void ReadDataText(lua_State* L, std::string_view text, char* room, const TextLimits& limits);

} // namespace qev
