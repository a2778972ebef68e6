// The debug heap of Windows under every test of a program, where QEV_DEBUG_HEAP is set (./check windows heap,
// which also has the heap put a pattern behind each block and into freed ones). The heap then looks at a
// block's ends whenever the block is freed or grown, and at all of its blocks after each test. It tells what
// it finds on the error output.
#include <array>
#include <cstdlib>

#include <gtest/gtest.h>
#include <windows.h>

namespace {

// A heap created with this flag checks the block in each call. Those that were created without are told so
// where 64-bit Windows keeps a heap's flags, and Wine as well.
constexpr DWORD kCheckEachCall = 0x10000000;
constexpr std::ptrdiff_t kFlagsAt = 0x70;

const std::array<HANDLE, 2> kHeaps{GetProcessHeap(), reinterpret_cast<HANDLE>(_get_heap_handle())};

class DebugHeap : public testing::EmptyTestEventListener {
public:
    DebugHeap() {
        for (const HANDLE heap : kHeaps)
            *reinterpret_cast<DWORD*>(static_cast<char*>(heap) + kFlagsAt) |= kCheckEachCall;
    }

private:
    void OnTestEnd(const testing::TestInfo& test) override {
        for (const HANDLE heap : kHeaps) EXPECT_TRUE(HeapValidate(heap, 0, nullptr)) << test.name();
    }
};

struct TellsAByteBehindABlock : testing::Test {
    void TestBody() override {
        for (const HANDLE heap : kHeaps) {
            constexpr std::size_t kSize = 1000;
            char* const block = static_cast<char*>(HeapAlloc(heap, 0, kSize));
            volatile char* const behind = block + kSize;
            *behind = static_cast<char>(*behind ^ 1);
            EXPECT_FALSE(HeapValidate(heap, 0, nullptr));
            EXPECT_FALSE(HeapFree(heap, 0, block));
            *behind = static_cast<char>(*behind ^ 1);
            EXPECT_TRUE(HeapFree(heap, 0, block));
        }
    }
};

[[maybe_unused]] const bool kOn = [] {
    if (!std::getenv("QEV_DEBUG_HEAP")) return false;
    testing::UnitTest::GetInstance()->listeners().Append(new DebugHeap);
    testing::RegisterTest("DebugHeap", "TellsAByteBehindABlock", nullptr, nullptr, __FILE__, __LINE__,
                          []() -> testing::Test* { return new TellsAByteBehindABlock; });
    return true;
}();

} // namespace
