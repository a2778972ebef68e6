/// \file
/// What an object works out once, when it is asked, and keeps. Not installed: for the library itself.
#pragma once

#include <atomic>
#include <memory>
#include <new>

namespace qev {

/// The value that `kept` owns, made by make() (a std::unique_ptr to it) when there is none yet: null when
/// that is null and when memory is refused. It lasts until it is dropped. Threads may ask at the same time:
/// two may make one each, and the first that is ready is kept.
template <class T, class Make>
const T* GetOrMake(std::atomic<const T*>& kept, Make make) {
    if (const T* value = kept.load(std::memory_order_acquire)) return value;
    try {
        std::unique_ptr<const T> made = make();
        const T* other = nullptr;
        return made && kept.compare_exchange_strong(other, made.get(), std::memory_order_acq_rel)
                   ? made.release()
                   : other;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// Deletes the value that `kept` owns, if there is one. Nobody may ask for it at the same time.
template <class T>
void Drop(std::atomic<const T*>& kept) {
    if (kept.load(std::memory_order_relaxed)) delete kept.exchange(nullptr, std::memory_order_relaxed);
}

} // namespace qev
