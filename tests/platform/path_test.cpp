#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "platform/path.h"

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
