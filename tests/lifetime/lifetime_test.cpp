// Loads and unloads plug-ins, and with them the libraries and their singletons, as a host does. This program
// links none of them.
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

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

template <class Function>
Function Find(HMODULE plugin, const char* name) {
    return reinterpret_cast<Function>(qev::platform::FindSymbol(plugin, name));
}

// Two plug-ins use the libraries, whose engine lives until the last one has gone, whichever that is.
TEST(Lifetime, LastsUntilTheLastUse) {
    for (const char* last : {"lifetime_first", "lifetime_second"}) {
        GetLifetimeCounts() = {};
        HMODULE plugins[] = {Load("lifetime_second"), Load("lifetime_first")};
        Find<void (*)()>(plugins[0], "WatchEngine")();
        if (last == std::string("lifetime_second")) std::swap(plugins[0], plugins[1]);
        qev::platform::FreeDynamicLibrary(plugins[0]);
        EXPECT_EQ(GetLifetimeCounts().enginesClosed, 0) << last;
        qev::platform::FreeDynamicLibrary(plugins[1]);
        EXPECT_EQ(GetLifetimeCounts().enginesClosed, 1) << last;
        EXPECT_EQ(GetLifetimeCounts().enginesSeen, 2) << last;
    }
}

// A library that stays behind (an inline static that others see is enough on Linux) keeps its code mapped.
TEST(Lifetime, LibrariesLeaveNothingBehind) {
    const HMODULE plugin = Load("lifetime_first");
    const auto codeOf = Find<const void* (*)(int)>(plugin, "CodeOf");
    std::vector<const void*> codes;
    for (int library = 0; codeOf(library); ++library) codes.push_back(codeOf(library));
    for (const void* code : codes) EXPECT_NE(qev::platform::ModulePathOf(code), "");
    qev::platform::FreeDynamicLibrary(plugin);
    for (const void* code : codes) EXPECT_EQ(qev::platform::ModulePathOf(code), "");
}

TEST(Lifetime, ManyRounds) {
    GetLifetimeCounts() = {};
    for (int i = 0; i < kRounds; ++i) {
        const HMODULE plugin = Load("lifetime_first");
        Find<void (*)()>(plugin, "WatchEngine")();
        qev::platform::FreeDynamicLibrary(plugin);
    }
    EXPECT_EQ(GetLifetimeCounts().enginesClosed, kRounds);
}

#ifndef _WIN32 // there the end of a program comes before that of any library
bool (*s_areStaticsAlive)();
TEST(Lifetime, CallsAfterTheEnd) {
    // runs after the statics of what is loaded later
    std::atexit([] { s_areStaticsAlive() ? std::_Exit(1) : void(); });
    s_areStaticsAlive = Find<bool (*)()>(Load("lifetime_first"), "AreStaticsAlive");
    EXPECT_TRUE(s_areStaticsAlive());
}
#endif

} // namespace
