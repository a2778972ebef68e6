// The standard's own mutex, behind a pointer so that the header needs nothing of either system.

#include "../recursive_lock.h"

#include <mutex>

namespace qev::platform {

struct RecursiveLock::Native {
    std::recursive_mutex mutex;
};

RecursiveLock::RecursiveLock() : m_pNative(std::make_unique<Native>()) {}

RecursiveLock::~RecursiveLock() = default;

void RecursiveLock::lock() {
    m_pNative->mutex.lock();
}

void RecursiveLock::unlock() {
    m_pNative->mutex.unlock();
}

} // namespace qev::platform
