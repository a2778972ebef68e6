/// \file
/// A lock that its owner may take again.
#pragma once

#include <memory>

namespace qev::platform {

/// Works with std::lock_guard. The thread that holds it may lock it again, and unlocks it as often as it has
/// locked it; others wait until then. It cannot be copied.
class RecursiveLock {
public:
    /// Free at first.
    RecursiveLock();
    /// Nobody may hold it any more.
    ~RecursiveLock();
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

    /// Waits until no other thread holds the lock, then takes it.
    void lock();
    /// Gives back one lock of the calling thread, which must hold it.
    void unlock();

private:
    struct Native;
    std::unique_ptr<Native> m_pNative;
};

} // namespace qev::platform
