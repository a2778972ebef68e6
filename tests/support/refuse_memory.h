/// \file
/// Refused memory: operator new of the whole program, counted and refused at will. Linked only into the tests
/// that use it; not for Windows, where each library has an operator new of its own.
#pragma once

#include <new>

#include <gtest/gtest.h>

namespace test {

/// Number of blocks that operator new has handed out in this program and operator delete has not taken back.
long LiveBlocks();

/// While it lives, operator new hands out so many blocks more, to all threads together, and then throws
/// std::bad_alloc. One at a time.
class RefuseMemory {
public:
    explicit RefuseMemory(long blocks);
    ~RefuseMemory();
    RefuseMemory(const RefuseMemory&) = delete;
    RefuseMemory& operator=(const RefuseMemory&) = delete;

    /// Whether a block has been refused.
    bool HasRefused() const;
};

/// Runs call() with no memory, with one block, with two, and so on until it gets through without a refusal.
/// It may throw std::bad_alloc, or swallow it, but has to give back every block each time, and the next call,
/// to which nothing is refused, has to answer what the first one did. So has each that throws nothing, unless
/// it answers NaN, which says that it could not.
template <class Call>
void ExpectNothingLeaksWhenRefused(const Call& call) {
    constexpr long kEnough = 100'000;
    const double expected = call(); // what lasts as long as the program is made here
    bool refused = true;
    for (long blocks = 0; refused && blocks < kEnough; ++blocks) {
        const long before = LiveBlocks();
        double answer = expected;
        {
            const RefuseMemory refusal(blocks);
            try {
                answer = call();
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(refusal.HasRefused()) << "it throws without need";
            }
            refused = refusal.HasRefused();
        }
        ASSERT_EQ(LiveBlocks() - before, 0) << "blocks lost when number " << blocks << " is refused";
        if (answer == answer) ASSERT_EQ(answer, expected) << "when number " << blocks << " is refused";
        ASSERT_EQ(call(), expected) << "after number " << blocks << " was refused";
    }
    EXPECT_FALSE(refused) << "it never gets through";
}

} // namespace test
