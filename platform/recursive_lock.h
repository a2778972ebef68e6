/// \file
/// A lock that its owner may take again.
#pragma once

#include <memory>

namespace qev::platform {

/// Works with std::lock_guard. Unlocked as often as locked, by the same thread; never copied.
class RecursiveLock {
public:
    RecursiveLock();
    ~RecursiveLock();
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

    void lock();
    bool try_lock();
    void unlock();

private:
    struct Native;
    std::unique_ptr<Native> m_native;
};

} // namespace qev::platform
