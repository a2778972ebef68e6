/// \file
/// Copying a table from one Lua state into another.
#pragma once

#include <qev/export.h>

struct lua_State;

namespace qev {

/// Copies every entry of the table on top of one state's stack into the table on top of another's; tables in
/// it are copied entry by entry into those of the same key. A table that the source holds in several places
/// is copied to each of them. Both stacks end as they were. The same state twice is nothing to do. A number
/// key becomes the int that its text with six digits begins with: 2.7 becomes 2, and 1000000, which reads
/// 1e+06, becomes 1. False when there is no table to copy.
///
/// Throws a plain `char*` text when a key is neither number nor text, when a value is neither boolean,
/// number, text nor table, when tables nest deeper than 200 or contain themselves, when the tables that it
/// holds in several places have more than 250,000 entries over all further places, and when memory is
/// refused; what was copied until then stays.
QEVCOMMON_API bool CopyLuaTable(lua_State* from, lua_State* to);

} // namespace qev
