// Blocks come from malloc, so that sanitizers still see every one of them. The aligned forms stay the
// system's: nothing here is aligned beyond the usual.
#include "support/refuse_memory.h"

#include <atomic>
#include <cstdlib>

namespace {

constexpr long kUnlimited = -1;
std::atomic<long> g_nLive = 0;
std::atomic<long> g_nLeft = kUnlimited;
std::atomic<bool> g_bRefused = false;

bool MayTake() {
    long left = g_nLeft;
    while (left > 0 && !g_nLeft.compare_exchange_weak(left, left - 1)) {
    }
    if (left == 0) g_bRefused = true;
    return left != 0;
}

void* Take(std::size_t size) {
    void* block = MayTake() ? std::malloc(size > 0 ? size : 1) : nullptr;
    if (block) ++g_nLive;
    return block;
}

void* TakeOrThrow(std::size_t size) {
    if (void* block = Take(size)) return block;
    throw std::bad_alloc();
}

void GiveBack(void* block) {
    if (block) --g_nLive;
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) {
    return TakeOrThrow(size);
}
void* operator new[](std::size_t size) {
    return TakeOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Take(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Take(size);
}
void operator delete(void* block) noexcept {
    GiveBack(block);
}
void operator delete[](void* block) noexcept {
    GiveBack(block);
}
void operator delete(void* block, std::size_t) noexcept {
    GiveBack(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    GiveBack(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    GiveBack(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    GiveBack(block);
}

namespace test {

long LiveBlocks() {
    return g_nLive;
}

RefuseMemory::RefuseMemory(long blocks) {
    g_bRefused = false;
    g_nLeft = blocks;
}

RefuseMemory::~RefuseMemory() {
    g_nLeft = kUnlimited;
}

bool RefuseMemory::HasRefused() const {
    return g_bRefused;
}

} // namespace test
