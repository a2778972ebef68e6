#include "host/drawing/unicode.h"
#include "support/shapes.h"

using namespace test;

TEST(Unicode, LettersComeBackFromUtf8) {
    for (Random random; random.Rounds(500);) {
        std::u32string letters;
        for (int i = random.Int(0, 8); i-- > 0;) {
            const auto letter = static_cast<char32_t>(random.Int(0, 1 << random.Int(7, 20)));
            if (letter < 0xD800 || letter >= 0xE000) letters += letter;
        }
        EXPECT_EQ(host::LettersOf(host::Utf8Of(letters)), letters);
        EXPECT_TRUE(host::IsUtf8(host::Utf8Of(letters)));
    }
}

TEST(Unicode, WhatIsNoLetter) {
    for (const char* bytes : {"\xFF", "\x80", "\xC3", "\xC1\x81", "\xE0\x81\x81", "\xED\xA0\x80",
                              "\xF4\x90\x80\x80", "\xE4\xBD"}) {
        EXPECT_FALSE(host::IsUtf8(bytes)) << bytes;
        EXPECT_EQ(host::LettersOf(bytes), std::u32string(std::string(bytes).size(), host::kNoLetter))
            << bytes;
    }
    EXPECT_EQ(host::Utf8Of(U"\x110000"), "\xEF\xBF\xBD");
}

TEST(Unicode, TextsOfTheBridge) {
    EXPECT_EQ(host::FromBridge("T.x = 5 \xB3\xAC\xB3\xF6\xB7\xB6\xCE\xA7"),
              "T.x = 5 \xE8\xB6\x85\xE5\x87\xBA\xE8\x8C\x83\xE5\x9B\xB4");
    EXPECT_EQ(host::FromBridge("Stra\xC3\x9F"
                               "e"),
              "Stra\xC3\x9F"
              "e");
}
