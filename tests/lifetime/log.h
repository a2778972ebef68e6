/// \file
/// Counts what the probe creates and deletes; a library of its own, which outlives the probe.
#pragma once

#include <qev/export.h>

#if defined(lifetime_log_EXPORTS)
#define LIFETIME_API QEV_EXPORT
#else
#define LIFETIME_API QEV_IMPORT
#endif

struct LifetimeCounts {
    int created = 0;
    int deleted = 0;
    int calls = 0; ///< of the plug-in into the living instance
    int enginesClosed = 0;
};

LIFETIME_API LifetimeCounts& GetLifetimeCounts();

struct lua_State;
/// For Lua to call when an engine closes, at a time when the probe may be gone.
LIFETIME_API int CountClosedEngine(lua_State* L);
