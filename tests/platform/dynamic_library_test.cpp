#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"

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
