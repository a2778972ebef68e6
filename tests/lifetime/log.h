/// \file
/// Counts what happens while libraries unload; a library of its own, which outlives them.
#pragma once

#include <qev/export.h>

#if defined(lifetime_log_EXPORTS)
#define LIFETIME_API QEV_EXPORT
#else
#define LIFETIME_API QEV_IMPORT
#endif

struct LifetimeCounts {
    int enginesClosed = 0;
    int enginesSeen = 0; ///< by plug-ins at their end
};

LIFETIME_API extern LifetimeCounts g_lifetimeCounts;

struct lua_State;
/// For Lua to call when an engine closes, at a time when the plug-ins may be gone.
LIFETIME_API int CountClosedEngine(lua_State* L);
