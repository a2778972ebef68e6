/// \file
/// What an object works out once, when it is asked, and keeps.
#pragma once

#include <atomic>
#include <memory>
#include <new>

namespace qev {

/// Holds a value from the first time on that it is made. Threads that only ask may do so at the same time:
/// two may make one each, and the first that is ready is kept. A copy starts without a value.
template <class T>
class Lazy {
public:
    Lazy() = default;
    /// Without a value.
    Lazy(const Lazy&) noexcept {}
    /// Drops the value; the other's is not taken.
    Lazy& operator=(const Lazy& other) {
        if (this != &other) Drop();
        return *this;
    }
    ~Lazy() { Drop(); }

    /// The value, or null when there is none yet.
    const T* Get() const { return m_pValue.load(std::memory_order_acquire); }
    /// The value or, without one, what make() gives, a std::unique_ptr to it: null when that is null and when
    /// memory is refused. It lasts until Drop.
    template <class Make>
    const T* GetOr(Make make) const {
        if (const T* value = Get()) return value;
        try {
            std::unique_ptr<const T> made = make();
            const T* kept = nullptr;
            return made && m_pValue.compare_exchange_strong(kept, made.get(), std::memory_order_acq_rel)
                       ? made.release()
                       : kept;
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    }
    /// Forgets the value. Nobody may ask at the same time.
    void Drop() {
        if (Get()) delete m_pValue.exchange(nullptr, std::memory_order_relaxed);
    }

private:
    mutable std::atomic<const T*> m_pValue = nullptr; // owned
};

} // namespace qev
