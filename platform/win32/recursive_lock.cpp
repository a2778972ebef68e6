// A critical section, the system's own recursive lock, behind a pointer so that the header needs nothing of
// either system.

#include "../recursive_lock.h"

#include <windows.h>

namespace qev::platform {

struct RecursiveLock::Native {
    CRITICAL_SECTION section;
};

RecursiveLock::RecursiveLock() : m_pNative(std::make_unique<Native>()) {
    InitializeCriticalSection(&m_pNative->section);
}

RecursiveLock::~RecursiveLock() {
    DeleteCriticalSection(&m_pNative->section);
}

void RecursiveLock::lock() {
    EnterCriticalSection(&m_pNative->section);
}

void RecursiveLock::unlock() {
    LeaveCriticalSection(&m_pNative->section);
}

} // namespace qev::platform
