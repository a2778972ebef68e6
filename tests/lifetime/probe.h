/// \file
/// A library that keeps a singleton the way the system's libraries do: created when the library loads,
/// deleted when it unloads.
#pragma once

#include <qev/export.h>

#include "log.h"

#if defined(lifetime_probe_EXPORTS)
#define PROBE_API QEV_EXPORT
#else
#define PROBE_API QEV_IMPORT
#endif

class PROBE_API Probe {
public:
    static Probe* GetInstance();
    void Call();

private:
    struct AutoRelease;

    Probe() { ++GetLifetimeCounts().created; }
    ~Probe() { ++GetLifetimeCounts().deleted; }

    static Probe* ms_pInstance;
    static AutoRelease ms_autoRelease;
};
