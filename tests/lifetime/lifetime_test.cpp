// Loads and unloads libraries that hold singletons, as a host does. This program links none of them.
#include <array>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "log.h"
#include "platform/dynamic_library.h"
#include "platform/path.h"

namespace {

#ifdef _WIN32
constexpr char kExtension[] = ".dll";
constexpr int kRounds = 100; // a load takes 10 ms there
#else
constexpr char kExtension[] = ".so";
constexpr int kRounds = 400;
#endif

// Loads a library that stands beside this program.
HMODULE Load(const std::string& name) {
    static const char inHere = 0;
    const std::string folder = qev::platform::RemoveFileSpec(qev::platform::ModulePathOf(&inHere));
    std::string why, path = qev::platform::AppendPath(folder, name + kExtension);
    const HMODULE module = qev::platform::LoadDynamicLibrary(path.c_str(), &why);
    EXPECT_NE(module, nullptr) << why;
    return module;
}

void Use(HMODULE plugin) {
    reinterpret_cast<void (*)()>(qev::platform::FindSymbol(plugin, "Use"))();
}

void ExpectCounts(int created, int deleted, int calls) {
    const LifetimeCounts& counts = GetLifetimeCounts();
    EXPECT_EQ((std::array{counts.created, counts.deleted, counts.calls}),
              (std::array{created, deleted, calls}));
}

struct Lifetime : testing::Test {
    void SetUp() override { GetLifetimeCounts() = {}; }
};

// The host's own use of the probe ends before the plug-in's, or after it.
TEST_F(Lifetime, LastsUntilTheLastUse) {
    for (const bool hostEndsFirst : {true, false}) {
        GetLifetimeCounts() = {};
        const HMODULE probe = Load("lifetime_probe"), plugin = Load("lifetime_plugin");
        Use(plugin);
        qev::platform::FreeDynamicLibrary(hostEndsFirst ? probe : plugin);
        if (hostEndsFirst) Use(plugin);
        ExpectCounts(1, 0, 2); // the plug-in calls once more at its end
        qev::platform::FreeDynamicLibrary(hostEndsFirst ? plugin : probe);
        ExpectCounts(1, 1, hostEndsFirst ? 3 : 2);
    }
}

// The library's own engine lives as long, with what scripts have left in it.
TEST_F(Lifetime, ScriptEngine) {
    const HMODULE probe = Load("lifetime_probe");
    reinterpret_cast<void (*)()>(qev::platform::FindSymbol(probe, "WatchEngine"))();
    const HMODULE plugin = Load("lifetime_plugin");
    qev::platform::FreeDynamicLibrary(probe);
    EXPECT_EQ(GetLifetimeCounts().enginesClosed, 0);
    qev::platform::FreeDynamicLibrary(plugin);
    EXPECT_EQ(GetLifetimeCounts().enginesClosed, 1);
}

// A library that stays behind (an inline static that others see is enough on Linux) keeps its code mapped.
TEST_F(Lifetime, LibrariesLeaveNothingBehind) {
    const HMODULE probe = Load("lifetime_probe");
    const auto codeOf = reinterpret_cast<const void* (*)(int)>(qev::platform::FindSymbol(probe, "CodeOf"));
    std::vector<const void*> codes;
    for (int library = 0; codeOf(library); ++library) codes.push_back(codeOf(library));
    for (const void* code : codes) EXPECT_NE(qev::platform::ModulePathOf(code), "");
    qev::platform::FreeDynamicLibrary(probe);
    for (const void* code : codes) EXPECT_EQ(qev::platform::ModulePathOf(code), "");
}

TEST_F(Lifetime, ManyRounds) {
    for (int i = 0; i < kRounds; ++i) qev::platform::FreeDynamicLibrary(Load("lifetime_plugin"));
    ExpectCounts(kRounds, kRounds, kRounds);
}

#ifndef _WIN32 // there the end of a program comes before that of any library
bool (*s_areStaticsAlive)();
TEST_F(Lifetime, CallsAfterTheEnd) {
    // runs after the statics of what is loaded later
    std::atexit([] { s_areStaticsAlive() ? std::_Exit(1) : void(); });
    s_areStaticsAlive =
        reinterpret_cast<bool (*)()>(qev::platform::FindSymbol(Load("lifetime_probe"), "AreStaticsAlive"));
    EXPECT_TRUE(s_areStaticsAlive());
}
#endif

} // namespace
