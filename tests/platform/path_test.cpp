#include <fstream>

#include <gtest/gtest.h>

#include "platform/dynamic_library.h"
#include "platform/output_path.h"
#include "platform/path.h"

using namespace qev::platform;

TEST(Path, PartsAndTheLengthLimit) {
    static const char inHere = 0;
    const std::string program = ModulePathOf(&inHere), name = StripPath(program);
    EXPECT_EQ(AppendPath(RemoveFileSpec(program), name), program);
    EXPECT_FALSE(IsRelativePath(program));
    EXPECT_EQ(RemoveFileSpec(name), "");
    EXPECT_EQ(RemoveExtension("cut.tar.dll"), "cut.tar");
    const std::string bare = AppendPath("plug.ins", "cut"); // the dot is the folder's
    EXPECT_EQ(RemoveExtension(bare), bare);
    const std::string longest(kLongestPath, 'x');
    EXPECT_EQ(StripPath(longest), longest);
    for (const auto part : {StripPath, RemoveExtension, RemoveFileSpec})
        EXPECT_EQ(part(program + longest), "");
    EXPECT_EQ(AppendPath(program, longest), "");
    EXPECT_TRUE(IsRelativePath(program + longest));
}

TEST(OutputPath, AFileMovesToAnotherPath) {
    std::ofstream("path_test.from");
    EXPECT_TRUE(MoveOver("path_test.from", "path_test.to"));
    EXPECT_EQ(std::remove("path_test.to"), 0) << "it is not there";
}
