#include <mutex>
#include <thread>

#include <gtest/gtest.h>

#include "platform/recursive_lock.h"

// The same thread takes it again, another one only after as many releases.
TEST(RecursiveLock, Recursion) {
    qev::platform::RecursiveLock lock;
    const auto freeForAnother = [&] {
        bool taken = false;
        std::thread([&] {
            taken = lock.try_lock();
            if (taken) lock.unlock();
        }).join();
        return taken;
    };
    const std::lock_guard outer(lock);
    {
        const std::lock_guard inner(lock);
        EXPECT_TRUE(lock.try_lock());
        lock.unlock();
        EXPECT_FALSE(freeForAnother());
    }
    EXPECT_FALSE(freeForAnother());
    lock.unlock();
    EXPECT_TRUE(freeForAnother());
    lock.lock();
}
