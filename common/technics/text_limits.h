/// \file
/// What a technics text may use up where texts are taken as data.
#pragma once

#include <cstddef>

#include <lua.hpp>

namespace qev {

/// The limits of one interpreter. They hold between Start and Stop, while a text is read and run.
///
/// A count of instructions is the same on every machine but does not bound the time: one instruction may
/// compare two long strings or rehash a table of keys that were chosen to collide, and reading a text with a
/// hundred thousand labels takes quadratic time. So the time spent computing is limited too, strings are kept
/// short, and each check has little to overrun.
class TextLimits {
public:
    /// The allocator of the interpreter, as lua_newstate takes it; `self` is its TextLimits. Null, with the
    /// block as it was, where a limit is passed or the system has no memory.
    static void* Allocate(void* self, void* block, std::size_t oldSize, std::size_t newSize);

    /// Begins a text in L: from now on the limits hold, with its time and its instructions counted from here.
    /// What earlier texts have left counts as memory in use; it is collected first if it takes half of the
    /// limit.
    void Start(lua_State* L);
    /// Ends the text in L: the limits no longer hold.
    void Stop(lua_State* L);
    /// Raises an error in L when the time is up. For a reader, between two pieces.
    void CheckTime(lua_State* L) const;

private:
    static void CountInstructions(lua_State* L, lua_Debug*);
    bool Grants(std::size_t growth, bool isString);

    static constexpr std::size_t kMemory = 16 << 20;        // bytes; real texts take some kilobytes
    static constexpr std::size_t kLongestString = 64 << 10; // bytes; compared or joined in microseconds
    static constexpr int kInstructions = 1'000'000;         // real texts run a few for each of their fields
    static constexpr int kCheckEach = 100;                  // instructions between two looks at the clock
    static constexpr double kTime = 0.05;                   // seconds; a user does not notice it

    std::size_t m_nInUse = 0;
    bool m_bOn = false;
    bool m_bSpent = false;   // refused once, so that a text at its limit does not collect garbage forever
    int m_nInstructions = 0; // left
    double m_dEnd = 0;       // ThreadSeconds
};

} // namespace qev
