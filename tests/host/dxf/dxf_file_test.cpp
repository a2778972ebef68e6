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
        {"no EOF mark", line.substr(0, line.size() - 6), "ends before its EOF mark"},
        {"cut in a group", line.substr(0, line.size() / 2), "line 11: the file ends"},
        {"binary, cut at its end", binary.substr(0, binary.size() - 3), "the file ends within a group"},
    });
}

TEST(DxfFiles, BytesOfOtherFormatsAreRefusedByEveryLog) {
    for (const auto& [name, bytes, message] : Table<const char*, std::string, const char*>{
             {"a program", "\x7f\x45LF\x01\n\n", "line 1: '?ELF?' is no group code"},
             {"a DWG", std::string("AC1015\0\0\0", 9), "is a DWG drawing"},
             {"no section", "0\nEOF2\n", "holds no section"},
             {"binary, noise", BinaryFile("").substr(0, 22) + std::string(40, '\xff'), "byte "},
         }) {
        SCOPED_TRACE(name);
        host::ErrorLog lenient(true);
        host::Drawing drawing;
        try {
            host::ReadDxfBytes(bytes, lenient, drawing);
            ADD_FAILURE() << "it was read";
        } catch (const host::DrawingError& error) {
            ExpectContains(error.what(), {message});
        }
    }
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

TEST(DxfFiles, LinesAsOtherProgramsWriteThem) {
    const std::string file =
        DxfFile("0 INSERT 2 b 10 0 20 0", "0 BLOCK 2 B 0 LINE 8 cut 10 1 20 2 11 4 21 6");
    for (const auto& [name, bytes] : Table<const char*, std::string>{
             {"CR and LF", Replaced(file, "\n", "\r\n")},
             {"CR alone", Replaced(file, "\n", "\r")},
             {"a mark of the byte order", "\xef\xbb\xbf" + file},
             {"blank lines before it", "\n \r\n" + file},
             {"blanks behind names", Replaced(file, "\n", "  \n")},
         }) {
        SCOPED_TRACE(name);
        const DrawingOf read(bytes);
        EXPECT_EQ(read.log.Errors(), std::vector<std::string>());
        ASSERT_EQ(read.objects.size(), 1u);
        EXPECT_EQ(read.objects[0]->GetLength(), 5);
        EXPECT_STREQ(read.objects[0]->GetKey("Layer"), "cut");
    }
}

TEST(DxfFiles, EntitiesWithNothingToDrawAreOnlyRemarked) {
    host::ErrorLog strict(false);
    host::Drawing drawing;
    host::ReadDxfBytes(DxfFile("0 LWPOLYLINE 70 0 10 1 20 1 0 LINE 10 1 20 2 11 4 21 6"), strict, drawing);
    EXPECT_EQ(drawing.Objects().size(), 1u);
    ASSERT_EQ(strict.Remarks().size(), 1u);
    ExpectContains(strict.Remarks()[0], {"line 14: LWPOLYLINE has fewer than two points"});
}

TEST(DxfFiles, EntitiesThatCannotBeMade) {
    ExpectErrors({
        {"huge", DxfFile("0 LINE 10 1e300 20 2 11 4 21 6"), "line 16: the number '1e300' is out of range"},
        {"no number", DxfFile("0 LINE 10 1x 20 2 11 4 21 6"), "'1x' is not a number"},
        {"missing group", DxfFile("0 LINE 10 1 20 2 11 4"), "line 14: LINE lacks its group 21"},
        {"binary", BinaryFile(DxfFile("0 LINE 10 1 20 2 11 4")), "byte 80: LINE lacks its group 21"},
        {"spline", DxfFile("0 SPLINE 71 99 10 0 20 0 10 1 20 1"), "SPLINE has an unusable degree"},
        {"no block", DxfFile("0 INSERT 2 nowhere 10 0 20 0"), "INSERT names the block 'nowhere'"},
    });
}

TEST(DxfFiles, DrawingsThatMultiply) {
    const std::string insert = "0 INSERT 2 B 10 0 20 0", block = "0 BLOCK 2 B 0 ENDBLK";
    std::string vertices = "0 LWPOLYLINE 70 0";
    for (int i = 0; i < 100'000; ++i) vertices += i % 2 ? " 10 1 20 2" : " 10 2 20 2";
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
