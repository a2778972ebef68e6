#include <mutex>
#include <thread>

#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"
#include "platform/recursive_lock.h"

#ifdef _WIN32
constexpr char kFolder[] = "C:\\plug.ins";
constexpr char kInFolder[] = "C:\\plug.ins\\cut.tar.dll";
#else
constexpr char kFolder[] = "/plug.ins";
constexpr char kInFolder[] = "/plug.ins/cut.tar.dll";
#endif

TEST(Path, PartsAndTheLengthLimit) {
    EXPECT_EQ(qev::platform::StripPath(kInFolder), "cut.tar.dll");
    EXPECT_EQ(qev::platform::StripPath("cut"), "cut");
    EXPECT_EQ(qev::platform::RemoveExtension("cut.tar.dll"), "cut.tar");
    EXPECT_EQ(qev::platform::RemoveExtension("cut"), "cut");
    const std::string bare = qev::platform::AppendPath(kFolder, "cut"); // the dot is the folder's
    EXPECT_EQ(qev::platform::RemoveExtension(bare), bare);
    EXPECT_EQ(qev::platform::RemoveFileSpec(kInFolder), kFolder);
    EXPECT_EQ(qev::platform::RemoveFileSpec("cut.dll"), "");
    EXPECT_EQ(qev::platform::AppendPath(kFolder, "cut.tar.dll"), kInFolder);
    for (const char* relative : {"sub/cut.dll", ""}) EXPECT_TRUE(qev::platform::IsRelativePath(relative));
    EXPECT_FALSE(qev::platform::IsRelativePath(kInFolder));
    const std::string longest(qev::platform::kLongestPath, 'x');
    EXPECT_EQ(qev::platform::StripPath(longest), longest);
    for (const auto part :
         {qev::platform::StripPath, qev::platform::RemoveExtension, qev::platform::RemoveFileSpec})
        EXPECT_EQ(part(kInFolder + longest), "");
    EXPECT_EQ(qev::platform::AppendPath(kFolder, longest), "");
    EXPECT_TRUE(qev::platform::IsRelativePath(kInFolder + longest));
}

TEST(DynamicLibrary, RefusalsAndThePathOfThisProgram) {
    std::string why;
    EXPECT_EQ(qev::platform::LoadDynamicLibrary("no such library", &why), nullptr);
    EXPECT_FALSE(why.empty());
    EXPECT_EQ(qev::platform::FindSymbol(nullptr, "main"), nullptr);
    qev::platform::FreeDynamicLibrary(nullptr);
    static const char inHere = 0;
    const std::string path = qev::platform::ModulePathOf(&inHere);
    EXPECT_FALSE(qev::platform::IsRelativePath(path));
    EXPECT_EQ(qev::platform::RemoveExtension(qev::platform::StripPath(path)), "platform_tests");
    EXPECT_EQ(qev::platform::ModulePathOf(nullptr), "");
}

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
