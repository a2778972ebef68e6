#include <gtest/gtest.h>

#include "platform/encoding.h"

using qev::platform::ToUtf8;

TEST(Encoding, CodePagesOfDrawings) {
    const struct {
        int codePage;
        const char *bytes, *utf8;
    } cases[] = {
        {1252, "a\xE4\x80", "a\xC3\xA4\xE2\x82\xAC"},
        {1251, "\xCD", "\xD0\x9D"},
        {936, "\xC4\xE3\xBA\xC3", "\xE4\xBD\xA0\xE5\xA5\xBD"},
        {932, "\x93\xFA", "\xE6\x97\xA5"},
        {949, "\xC7\xD1", "\xED\x95\x9C"},
        {950, "\xA4\xA4", "\xE4\xB8\xAD"},
        {1361, "\xD0\x65", "\xED\x95\x9C"},
        {850, "\x84", "\xC3\xA4"},
        {12345, "\xE4", "\xC3\xA4"},
        {936, "", ""},
    };
    for (const auto& [codePage, bytes, utf8] : cases) EXPECT_EQ(ToUtf8(bytes, codePage), utf8) << codePage;
    EXPECT_EQ(ToUtf8(std::string(5000, '\xE4'), 1252).size(), 10'000u);
    EXPECT_EQ(ToUtf8("\xFFz", 936).back(), 'z') << "a byte that is none hides no other";
}
