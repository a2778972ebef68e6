/// \file
/// What a technics text may use up where texts are taken as data.
#pragma once

#include <cstddef>

#include <lua.hpp>

namespace qev {

/// The limits of one interpreter. They hold between Start and Stop, while a text is read.
class TextLimits {
public:
    /// Bytes of a text. Longer ones are refused before they are read; real ones have some kilobytes.
    static constexpr std::size_t kLongestText = 1 << 20;
    /// Keys of a table that do not continue its list 1, 2, 3, ...; real ones have some ten.
    static constexpr int kMostKeys = 1024;
    /// Tables in each other. The cursor enters 16.
    static constexpr int kDeepest = 200;
    /// Bytes of the text between two looks at the clock.
    static constexpr std::ptrdiff_t kCheckEach = 1024;

    /// The allocator of the interpreter, as lua_newstate takes it; `self` is its TextLimits. Null, with the
    /// block as it was, where a limit is passed or the system has no memory.
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize);

    /// Begins a text in L: from now on the limits hold, with its time and its memory counted from here.
    /// Collects first what earlier texts have left, if that is much.
    void Start(lua_State* L);
    /// Ends the text in L: the limits no longer hold.
    void Stop(lua_State* L);
    /// Bytes that the interpreter has taken.
    std::size_t BytesInUse() const { return m_nInUse; }
    /// Raises an error in L when the time is up.
    void CheckTime(lua_State* L) const;

private:
    static constexpr std::size_t kMemory = 14 << 20;      // bytes that a text may take
    static constexpr std::size_t kLeft = 2 << 20;         // bytes that earlier texts may leave behind
    static constexpr std::size_t kLargestBlock = 4 << 20; // bytes; the old block lives while it grows
    static constexpr double kTime = 0.05;                 // seconds; a user does not notice it

    std::size_t m_nInUse = 0;
    std::size_t m_nMost = 0; // that m_nInUse may reach
    bool m_bOn = false;
    double m_dEnd = 0; // ThreadSeconds
};

} // namespace qev
