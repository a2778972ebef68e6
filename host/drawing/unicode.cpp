// UTF-8 is read strictly: a letter that is written longer than it needs, a surrogate and a letter beyond the
// last plane are bytes without a letter. So what is UTF-8 by chance is rare enough to tell it from texts of
// code pages.

#include "unicode.h"

#include <algorithm>
#include <array>

#include "platform/encoding.h"

namespace host {
namespace {

constexpr char32_t kLastLetter = 0x10FFFF;

constexpr bool IsLetter(char32_t code) {
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code <= kLastLetter && !isSurrogate;
}

// A letter's code and the number of bytes that it takes; 0 bytes for what is none.
struct Read {
    char32_t letter = kNoLetter;
    std::size_t size = 0;
};

Read ReadLetter(std::string_view text) {
    constexpr std::array<char32_t, 5> kLeast{0, 0, 0x80, 0x800, 0x10000}; // by the number of bytes
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return {lead, 1};
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead >= 0xF8 || size > text.size()) return {};
    char32_t letter = lead & (0x7Fu >> size);
    for (const char c : text.substr(1, size - 1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0u) != 0x80u) return {};
        letter = letter << 6 | (byte & 0x3Fu);
    }
    return letter >= kLeast[size] && IsLetter(letter) ? Read{letter, size} : Read{};
}

} // namespace

std::u32string LettersOf(std::string_view utf8) {
    std::u32string letters;
    while (!utf8.empty()) {
        const Read read = ReadLetter(utf8);
        letters += read.letter;
        utf8.remove_prefix(std::max<std::size_t>(1, read.size));
    }
    return letters;
}

std::string Utf8Of(std::u32string_view letters) {
    std::string text;
    for (const char32_t code : letters) {
        const char32_t letter = IsLetter(code) ? code : kNoLetter;
        const int further = letter < 0x80 ? 0 : letter < 0x800 ? 1 : letter < 0x10000 ? 2 : 3;
        constexpr std::array<char32_t, 4> kLead{0, 0xC0, 0xE0, 0xF0};
        text += static_cast<char>(kLead[further] | letter >> 6 * further);
        for (int i = further; i-- > 0;) text += static_cast<char>(0x80 | (letter >> 6 * i & 0x3F));
    }
    return text;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const Read read = ReadLetter(text);
        if (read.size == 0) return false;
        text.remove_prefix(read.size);
    }
    return true;
}

std::string FromBridge(std::string_view text) {
    constexpr int kBridgeCodePage = 936;
    return IsUtf8(text) ? std::string(text) : qev::platform::ToUtf8(text, kBridgeCodePage);
}

} // namespace host
