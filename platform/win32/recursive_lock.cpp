#include "../recursive_lock.h"

#include <windows.h>

namespace qev::platform {

struct RecursiveLock::Native {
    CRITICAL_SECTION section;
};

RecursiveLock::RecursiveLock() : m_native(std::make_unique<Native>()) {
    InitializeCriticalSection(&m_native->section);
}

RecursiveLock::~RecursiveLock() {
    DeleteCriticalSection(&m_native->section);
}

void RecursiveLock::lock() {
    EnterCriticalSection(&m_native->section);
}

bool RecursiveLock::try_lock() {
    return TryEnterCriticalSection(&m_native->section);
}

void RecursiveLock::unlock() {
    LeaveCriticalSection(&m_native->section);
}

} // namespace qev::platform
