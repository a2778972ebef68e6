// Loads and unloads plug-ins, and with them the libraries and their singletons, as a host does. This program
// links none of them.
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "log.h"
#include "platform/dynamic_library.h"
#include "platform/path.h"

namespace {

// Loads a library that stands beside this program.
HMODULE Load(const std::string& name) {
    static const char inHere = 0;
    const std::string folder = qev::platform::RemoveFileSpec(qev::platform::ModulePathOf(&inHere));
    std::string why, path = qev::platform::AppendPath(folder, name + EXTENSION);
    const HMODULE module = qev::platform::LoadDynamicLibrary(path.c_str(), &why);
    EXPECT_NE(module, nullptr) << why;
    return module;
}

template <class Function>
Function Find(HMODULE plugin, const char* name) {
    return reinterpret_cast<Function>(qev::platform::FindSymbol(plugin, name));
}

// Two plug-ins use the libraries, whose engine lives until the last one has gone, whichever that is. Nothing
// stays behind: an inline static that others see would keep a library mapped on Linux.
TEST(Lifetime, LastsUntilTheLastUse) {
    for (int round = 0; round < 100; ++round) { // a load takes 10 ms on Windows
        g_lifetimeCounts = {};
        const HMODULE plugins[] = {Load("lifetime_second"), Load("lifetime_first")};
        Find<void (*)()>(plugins[0], "WatchEngine")();
        const auto codeOf = Find<const void* (*)(int)>(plugins[0], "CodeOf");
        const void* const codes[] = {codeOf(0), codeOf(1), codeOf(2)};
        qev::platform::FreeDynamicLibrary(plugins[round % 2]);
        ASSERT_EQ(g_lifetimeCounts.enginesClosed, 0) << round;
        qev::platform::FreeDynamicLibrary(plugins[1 - round % 2]);
        ASSERT_EQ(g_lifetimeCounts.enginesClosed, 1) << round;
        ASSERT_EQ(g_lifetimeCounts.enginesSeen, 2) << round;
        for (const void* code : codes) ASSERT_EQ(qev::platform::ModulePathOf(code), "");
    }
}

#ifndef _WIN32 // there the end of a program comes before that of any library
int (*s_countStaticsAlive)();
TEST(Lifetime, CallsAfterTheEnd) {
    // runs after the statics of what is loaded later
    std::atexit([] { s_countStaticsAlive() > 0 ? std::_Exit(1) : void(); });
    s_countStaticsAlive = Find<int (*)()>(Load("lifetime_first"), "CountStaticsAlive");
    EXPECT_EQ(s_countStaticsAlive(), 2);
}
#endif

} // namespace
