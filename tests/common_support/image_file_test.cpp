#include <qev/support.h>

#include "support/shapes.h"
#include "support/temp_path.h"

namespace {

using namespace std::string_literals;

bool Loads(const std::string& bytes, CImage& image) {
    const std::string path = test::TempPath("image");
    std::ofstream(path, std::ios::binary) << bytes;
    const bool loads = qev::LoadImageFile(image, path.c_str());
    return std::remove(path.c_str()) == 0 && loads;
}

// Two pixels, red and half transparent blue.
const std::string
    kPng("\211\120\116\107\015\012\032\012\000\000\000\015\111\110\104\122\000\000\000\002\000\000\000\001"
         "\010\006\000\000\000\364\042\177\212\000\000\000\016\111\104\101\124\170\234\143\370\317\300\000"
         "\102\015\000\017\172\003\176\167\351\177\227\000\000\000\000\111\105\116\104\256\102\140\202",
         71);

// The picture has two colours, its frame four of its own.
const std::string kGif = "GIF89a\1\0\1\0\x80\0\0\0\0\0\7\7\7,\0\0\0\0\1\0\1\0\201four colours\2\2\x44\1\0;"s;
// One column, above (4, 5, 6), below (1, 2, 3), in the order blue, green, red. The first header puts the
// upper row first.
const std::string kBmp = "BM\x3E\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\xFE\xFF\xFF\xFF\1\0\x18\0"s
                         + std::string(24, '\0') + "\4\5\6\0\1\2\3\0"s;
const std::string kOldBmp = "BM\0\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\1\0\2\0\1\0\x18\0\1\2\3\0\4\5\6\0"s;
// Two rows of three indices of colours, which all are black: a run, and three as they are.
const auto kRuns = "BM\0\0\0\0\0\0\0\0\x3E\0\0\0\x28\0\0\0\3\0\0\0\2\0\0\0\1\0\x08\0\1"s
                   + std::string(15, '\0') + "\2"s + std::string(15, '\0')
                   + "\0\2\0\0\3\0\0\0\0\3\0\1\1\0\0\1"s;
// A grey block, behind a preview with an end of its own.
const std::string kCodes = "\1"s + std::string(17, '\0');
const std::string kJpeg = "\xFF\xD8\xFF\xE1\0\4\xFF\xD9\xFF\xDB\0\x43\0"s + std::string(64, '\1')
                          + "\xFF\xC0\0\x0B\x08\0\x08\0\x08\1\1\x11\0\xFF\xC4\0\x14\0"s + kCodes
                          + "\xFF\xC4\0\x14\x10"s + kCodes + "\xFF\xDA\0\x08\1\1\0\0\x3F\0\x3F\xFF\xD9"s;

// Whole pictures load, and no part of one that lacks more bytes than its decoder can do without.
TEST(ImageFile, WholePicturesAlone) {
    CImage image, refused;
    for (const auto& [format, bytes, spare] : // spare bytes of the end, which only close the file
         test::Table<const char*, std::string, std::size_t>{{"old BMP", kOldBmp, 0},
                                                            {"packed BMP", kRuns, 0},
                                                            {"GIF", kGif, 1},
                                                            {"JPEG", kJpeg, 0},
                                                            {"PNG", kPng, 4}}) {
        for (std::size_t size = 0; size < bytes.size() - spare; ++size)
            EXPECT_FALSE(Loads(bytes.substr(0, size), refused)) << format << " of " << size;
        EXPECT_TRUE(Loads(bytes.substr(0, bytes.size() - spare), image)) << format;
        EXPECT_TRUE(Loads(bytes + bytes + "\xFF\xDA", image)) << format << " with more behind it";
    }
    EXPECT_TRUE(refused.IsNull());
}

TEST(ImageFile, Pixels) {
    CImage image;
    const auto pixels = [&] { return std::string(image.GetBits(), image.GetBits() + 8); };
    EXPECT_TRUE(Loads(kBmp, image));
    EXPECT_EQ(pixels(), "\4\5\6\xFF\1\2\3\xFF");
    EXPECT_TRUE(Loads(kPng, image));
    EXPECT_EQ(image.GetWidth(), 2);
    EXPECT_EQ(image.GetHeight(), 1);
    EXPECT_FALSE(Loads("no picture", image));
    EXPECT_EQ(pixels(), "\0\0\xFF\xFF\xFF\0\0\x80"s);
}

TEST(ImageFile, Limits) {
    CImage image;
    EXPECT_TRUE(Loads(kBmp + std::string(10'485'760 - kBmp.size(), '\0'), image));
    EXPECT_FALSE(Loads(kBmp + std::string(10'485'761 - kBmp.size(), '\0'), image));
}

// A picture of so many frames.
std::string Frames(int count) {
    std::string bytes = kGif.substr(0, 19);
    for (int i = 0; i < count; ++i) bytes += kGif.substr(19, 27);
    return bytes + ';';
}

TEST(ImageFile, WhatIsNoSoundPicture) {
    const std::string huge = "\x11\x27\x10\x27";          // the screen and the frame of a GIF
    const std::string many = "\x10\x27\0\0\x10\x27\0\0"s; // 10,000 by 10,000
    CImage image;
    for (const auto& [name, bytes, loads] : test::Table<const char*, std::string, bool>{
             {"a wrong size", std::string(kBmp).replace(2, 4, "\xFF\xFF\xFF\x7F"), true},
             {"many frames", Frames(200'000), true},
             {"a broken PNG", std::string(kPng).replace(45, 1, "z"), false},
             {"a second frame that is broken", std::string(kGif).replace(46, 1, ",no frame"), true},
             {"a program", "<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1'/>", false},
             {"10,001 by 10,000", std::string(kGif).replace(6, 4, huge).replace(24, 4, huge), false},
             {"more pixels than bytes", std::string(kBmp).replace(18, 8, many), false},
             {"more pixels than runs", std::string(kRuns).replace(18, 8, many), false}})
        EXPECT_EQ(Loads(bytes, image), loads) << name;
}

TEST(ImageFile, OrdinaryFilesAlone) {
    CImage image;
    for (const char* path : {"", ".", "/dev/zero", "no such file", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(qev::LoadImageFile(image, path));
#ifndef _WIN32
    const std::string pipe = test::TempPath("pipe");
    ASSERT_EQ(std::system(("mkfifo " + pipe).c_str()), 0);
    EXPECT_FALSE(qev::LoadImageFile(image, pipe.c_str())); // which nobody writes to
    std::remove(pipe.c_str());
#endif
}

} // namespace
