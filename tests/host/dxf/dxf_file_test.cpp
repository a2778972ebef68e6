#include "host/fixture.h"

using namespace test;

namespace {

// Name, file, and a part of the first line that says what is wrong, and where.
void ExpectErrors(const Table<const char*, std::string, const char*>& cases) {
    for (const auto& [name, file, message] : cases) {
        SCOPED_TRACE(name);
        const DrawingOf read(file);
        ASSERT_FALSE(read.log.Errors().empty());
        ExpectContains(read.log.Errors()[0], {message});
        EXPECT_EQ(read.log.Errors()[0].find('\n'), std::string::npos);
    }
}

TEST(DxfFiles, BytesThatAreNoFile) {
    const std::string line = DxfFile("0 LINE 10 1 20 2 11 4 21 6"), binary = BinaryFile(line);
    ExpectErrors({
        {"another format", "\x7f\x45LF\x01\n\n", "line 1: '?ELF?' is no group code"},
        {"no EOF mark", line.substr(0, line.size() - 6), "ends before its EOF mark"},
        {"cut in a group", line.substr(0, line.size() / 2), "line 11: the file ends"},
        {"binary, cut at its end", binary.substr(0, binary.size() - 3), "the file ends within a group"},
        {"binary, noise", binary.substr(0, 22) + std::string(40, '\xff'), "byte "},
    });
}

TEST(DxfFiles, EntitiesThatCannotBeMade) {
    ExpectErrors({
        {"huge", DxfFile("0 LINE 10 1e300 20 2 11 4 21 6"), "line 16: the number '1e300' is out of range"},
        {"no number", DxfFile("0 LINE 10 1x 20 2 11 4 21 6"), "'1x' is not a number"},
        {"missing group", DxfFile("0 LINE 10 1 20 2 11 4"), "line 14: LINE lacks its group 21"},
        {"binary", BinaryFile(DxfFile("0 LINE 10 1 20 2 11 4")), "byte 80: LINE lacks its group 21"},
        {"one vertex", DxfFile("0 LWPOLYLINE 90 1 70 0 10 1 20 1"), "LWPOLYLINE has fewer than two points"},
        {"spline", DxfFile("0 SPLINE 71 99 10 0 20 0 10 1 20 1"), "SPLINE has an unusable degree"},
        {"no block", DxfFile("0 INSERT 2 nowhere 10 0 20 0"), "INSERT names the block 'nowhere'"},
    });
}

TEST(DxfFiles, DrawingsThatMultiply) {
    const std::string insert = "0 INSERT 2 B 10 0 20 0", block = "0 BLOCK 2 B 0 ENDBLK";
    std::string vertices = "0 LWPOLYLINE 70 0";
    for (int i = 0; i < 100'000; ++i) vertices += " 10 1 20 2";
    EXPECT_TRUE(DrawingOf(DxfFile(vertices)).log.Errors().empty()) << "it does not multiply";
    ExpectErrors({
        {"in itself", DxfFile(insert, "0 BLOCK 2 B " + insert + " 0 ENDBLK"), "deeper than 32 inserts"},
        {"a grid", DxfFile(insert + " 70 30000 71 30000", block), "more than 100000 inserts"},
        {"long polylines", DxfFile(insert + " 70 99", "0 BLOCK 2 B " + vertices + " 0 ENDBLK"),
         "makes the drawing larger than 263 MB"},
        {"a comment",
         DxfFile(insert + " 70 99", "0 BLOCK 2 B 0 X 999 " + std::string(4'000'000, 'x') + " 8 a 0 ENDBLK"),
         "makes the host read more than 286 MB"},
    });
}

} // namespace
