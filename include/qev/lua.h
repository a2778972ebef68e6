/// \file
/// The Lua bridge: a cursor over tables, calls, copying between states, the script engine.
///
/// Include Lua's own lua.h where its functions are called; these headers only know that there is a lua_State.
#pragma once

#include <qev/script/access.h>
#include <qev/script/copy_table.h>
#include <qev/script/script_engine.h>
