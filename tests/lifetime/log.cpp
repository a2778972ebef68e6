#include "log.h"

LifetimeCounts& GetLifetimeCounts() {
    static LifetimeCounts counts;
    return counts;
}

int CountClosedEngine(lua_State*) {
    ++GetLifetimeCounts().enginesClosed;
    return 0;
}
