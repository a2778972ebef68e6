#include "../recursive_lock.h"

#include <mutex>

namespace qev::platform {

struct RecursiveLock::Native {
    std::recursive_mutex mutex;
};

RecursiveLock::RecursiveLock() : m_native(std::make_unique<Native>()) {}

RecursiveLock::~RecursiveLock() = default;

void RecursiveLock::lock() {
    m_native->mutex.lock();
}

bool RecursiveLock::try_lock() {
    return m_native->mutex.try_lock();
}

void RecursiveLock::unlock() {
    m_native->mutex.unlock();
}

} // namespace qev::platform
