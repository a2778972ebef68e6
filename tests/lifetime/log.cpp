#include "log.h"

LifetimeCounts g_lifetimeCounts;

int CountClosedEngine(lua_State*) {
    ++g_lifetimeCounts.enginesClosed;
    return 0;
}
