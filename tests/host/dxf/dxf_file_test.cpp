#include "host/drawings.h"

using namespace test;

namespace {

struct DamageCase {
    const char* name;
    std::string file;
    const char* message; // a part of the one line that says what is wrong, and where
};

void ExpectErrors(const std::vector<DamageCase>& cases) {
    for (const DamageCase& damage : cases) {
        SCOPED_TRACE(damage.name);
        try {
            const DrawingOf read(damage.file);
            ADD_FAILURE() << "no error";
        } catch (const host::DrawingError& error) {
            const std::string text = error.what();
            EXPECT_NE(text.find(damage.message), std::string::npos) << text;
            EXPECT_EQ(text.find('\n'), std::string::npos) << text;
        }
    }
}

const std::string kLine = DxfFile("0 LINE 10 1 20 2 11 4 21 6");

TEST(DxfFiles, BytesThatAreNoFile) {
    const std::string binary = BinaryFile(kLine);
    ExpectErrors({
        {"no bytes", "", "holds no section"},
        {"another format", "\x7f\x45LF\x01\n\n", "line 1: '?ELF?' is no group code"},
        {"no EOF mark", kLine.substr(0, kLine.size() - 6), "ends before its EOF mark"},
        {"cut in a group", kLine.substr(0, kLine.size() / 2), "line 11: the file ends"},
        {"cut in the first group", Groups("0 EOF").substr(0, 3), "line 2"},
        {"binary, cut at its end", binary.substr(0, binary.size() - 3), "the file ends within a group"},
        {"binary, cut early", binary.substr(0, 40), "byte "},
        {"binary, noise", binary.substr(0, 22) + std::string(40, '\xff'), "byte "},
    });
}

TEST(DxfFiles, EntitiesThatCannotBeMade) {
    ExpectErrors({
        {"huge", DxfFile("0 LINE 10 1e300 20 2 11 4 21 6"), "line 16: the number '1e300' is out of range"},
        {"not finite", DxfFile("0 POINT 10 nan 20 2"), "is out of range"},
        {"no number", DxfFile("0 LINE 10 1x 20 2 11 4 21 6"), "'1x' is not a number"},
        {"no whole number", DxfFile("0 LWPOLYLINE 70 0.5 10 1 20 1"), "is not a whole number"},
        {"missing group", DxfFile("0 LINE 10 1 20 2 11 4"), "line 14: LINE lacks its group 21"},
        {"one vertex", DxfFile("0 LWPOLYLINE 90 1 70 0 10 1 20 1"), "LWPOLYLINE has fewer than two points"},
        {"spline", DxfFile("0 SPLINE 71 99 10 0 20 0 10 1 20 1"), "SPLINE has an unusable degree"},
        {"no block", DxfFile("0 INSERT 2 nowhere 10 0 20 0"), "INSERT names the block 'nowhere'"},
    });
}

// Ten inserts of each level in the next: a drawing of 10^11 of what B0 holds.
std::string Bomb(const std::string& innermost) {
    std::string blocks = "0 BLOCK 2 B0 " + innermost + " 0 ENDBLK";
    for (int i = 1; i < 12; ++i) {
        blocks += " 0 BLOCK 2 B" + std::to_string(i);
        for (int k = 0; k < 10; ++k) blocks += " 0 INSERT 10 0 20 0 2 B" + std::to_string(i - 1);
        blocks += " 0 ENDBLK";
    }
    return blocks;
}

TEST(DxfFiles, DrawingsThatMultiply) {
    const std::string line = "0 LINE 10 1 20 2 11 4 21 6", insert = "0 INSERT 2 B11 10 0 20 0";
    std::string vertices = "0 LWPOLYLINE 70 0";
    for (int i = 0; i < 600'000; ++i) vertices += " 10 1 20 2";
    ExpectErrors({
        {"a block in itself", DxfFile(insert, "0 BLOCK 2 B11 " + insert + " 0 ENDBLK"),
         "deeper than 32 inserts"},
        {"inserts of a line", DxfFile(insert, Bomb(line)), "more than 100000 inserts"},
        {"inserts of nothing", DxfFile(insert, Bomb("")), "more than 100000 inserts"},
        {"a grid", DxfFile("0 INSERT 2 B0 10 0 20 0 41 1e9 70 30000 71 30000 44 1e9", Bomb(line)),
         "out of range"},
        {"a long polyline", DxfFile(vertices), "larger than 500000 segments"},
    });
}

TEST(DxfFiles, LenientReadingKeepsWhatCameBefore) {
    const std::string whole = DxfFile("0 CIRCLE 10 0 20 0 40 1 0 LINE 10 1 20 2");
    const DrawingOf read(whole.substr(0, whole.find("0\nENDSEC\n0\nEOF") + 3), true);
    EXPECT_EQ(read.objects.size(), 1u);
    ASSERT_EQ(read.log.Errors().size(), 2u);
    EXPECT_NE(read.log.Errors()[0].find("the file ends"), std::string::npos);
    EXPECT_NE(read.log.Errors()[1].find("LINE lacks"), std::string::npos);
}

} // namespace
