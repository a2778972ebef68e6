#include <future>
#include <mutex>

#include <gtest/gtest.h>

#include "platform/recursive_lock.h"

namespace {

TEST(RecursiveLock, KeepsOthersOutUntilItIsGivenBackAsOftenAsTaken) {
    qev::platform::RecursiveLock lock;
    lock.lock();
    lock.lock();
    auto other = std::async(std::launch::async, [&] { const std::lock_guard taken(lock); });
    const auto isOut = [&] {
        return other.wait_for(std::chrono::milliseconds(50)) == std::future_status::timeout;
    };
    EXPECT_TRUE(isOut());
    lock.unlock();
    EXPECT_TRUE(isOut()) << "taken twice, given back once";
    lock.unlock();
    other.get();
}

} // namespace
