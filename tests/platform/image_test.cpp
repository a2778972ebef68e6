#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "platform/image.h"

namespace {

using Bytes = std::string;

// Two pixels, red and half transparent blue.
const Bytes
    kPng("\211\120\116\107\015\012\032\012\000\000\000\015\111\110\104\122\000\000\000\002\000\000\000\001"
         "\010\006\000\000\000\364\042\177\212\000\000\000\016\111\104\101\124\170\234\143\370\317\300\000"
         "\102\015\000\017\172\003\176\167\351\177\227\000\000\000\000\111\105\116\104\256\102\140\202",
         71);

// One column, above (4, 5, 6), below (1, 2, 3), in the order blue, green, red.
const Bytes
    kBmp("\102\115\076\000\000\000\000\000\000\000\066\000\000\000\050\000\000\000\001\000\000\000\002\000"
         "\000\000\001\000\030\000\000\000\000\000\010\000\000\000\023\013\000\000\023\013\000\000\000\000"
         "\000\000\000\000\000\000\001\002\003\000\004\005\006\000",
         62);

bool Load(const Bytes& bytes, CImage& image) {
    return platform::LoadImageBytes(bytes.data(), bytes.size(), image);
}

void ExpectPixels(const CImage& image, int width, int height, const std::vector<int>& bgra) {
    ASSERT_EQ(image.GetWidth(), width);
    ASSERT_EQ(image.GetHeight(), height);
    EXPECT_TRUE(std::equal(bgra.begin(), bgra.end(), image.GetBits()));
}

TEST(Image, PixelsFromTheTop) {
    CImage image;
    EXPECT_TRUE(image.IsNull());
    ASSERT_TRUE(Load(kPng, image));
    ExpectPixels(image, 2, 1, {0, 0, 255, 255, 255, 0, 0, 128});
    ASSERT_TRUE(Load(kBmp, image));
    ExpectPixels(image, 1, 2, {4, 5, 6, 255, 1, 2, 3, 255});
}

TEST(Image, RefusalKeepsTheImage) {
    CImage image;
    ASSERT_TRUE(Load(kBmp, image));
    for (const Bytes& bytes :
         {Bytes(), Bytes("no picture"), kPng.substr(0, kPng.size() / 2), kBmp.substr(0, 20)})
        EXPECT_FALSE(Load(bytes, image)) << bytes.size();
    EXPECT_EQ(image.GetHeight(), 2);
}

} // namespace
