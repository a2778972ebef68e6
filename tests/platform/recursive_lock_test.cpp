#include <future>
#include <mutex>

#include <gtest/gtest.h>

#include "platform/recursive_lock.h"

namespace {

TEST(RecursiveLock, KeepsOthersOutUntilItIsGivenBackAsOftenAsTaken) {
    qev::platform::RecursiveLock lock;
    lock.lock();
    lock.lock();
    lock.unlock();
    auto other = std::async(std::launch::async, [&] { const std::lock_guard taken(lock); });
    EXPECT_EQ(other.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    lock.unlock();
    other.get();
}

} // namespace
