// The system calls the handler in a thread of its own, where it waits for the lock. It never gives the lock
// back, so that nothing new begins while the system ends the process.

#include "../held_interrupts.h"

#include <windows.h>

namespace qev::platform {
namespace {

SRWLOCK g_lock = SRWLOCK_INIT;

BOOL WINAPI WaitForWork(DWORD) {
    AcquireSRWLockExclusive(&g_lock);
    return FALSE; // the next handler, which is the system's, ends the process
}

} // namespace

HeldInterrupts::HeldInterrupts() {
    static const BOOL isHandled = SetConsoleCtrlHandler(WaitForWork, TRUE);
    static_cast<void>(isHandled); // a process without a console gets no interrupts
    AcquireSRWLockExclusive(&g_lock);
}

HeldInterrupts::~HeldInterrupts() {
    ReleaseSRWLockExclusive(&g_lock);
}

} // namespace qev::platform
