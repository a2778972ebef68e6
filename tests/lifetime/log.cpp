#include "log.h"

LifetimeCounts& GetLifetimeCounts() {
    static LifetimeCounts counts;
    return counts;
}
