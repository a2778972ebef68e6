// The system counts what a thread computes in its own code and in the kernel, in steps of the scheduler's
// tick (some 16 ms): a limit on it is passed by at most one tick.

#include "../cpu_time.h"

#include <windows.h>

namespace qev::platform {
namespace {

double Seconds(const FILETIME& time) {
    constexpr double kUnit = 1e-7; // seconds
    return (time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime) * kUnit;
}

} // namespace

double ThreadSeconds() {
    FILETIME created, ended, inSystem, inProgram;
    if (!GetThreadTimes(GetCurrentThread(), &created, &ended, &inSystem, &inProgram)) return 0;
    return Seconds(inSystem) + Seconds(inProgram);
}

} // namespace qev::platform
