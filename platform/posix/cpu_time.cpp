// The kernel keeps a clock for each thread that stands while the thread waits.

#include "../cpu_time.h"

#include <ctime>

namespace qev::platform {

double ThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace qev::platform
