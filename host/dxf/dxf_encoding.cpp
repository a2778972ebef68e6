// Programs since 2007 write UTF-8; older ones wrote in the code page that the header names, and what it lacks
// as a code. Of a file that names none, what is UTF-8 throughout is taken for it, as no other text looks like
// it by chance.

#include "dxf_encoding.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "host/drawing/unicode.h"
#include "platform/encoding.h"

namespace host {
namespace {

constexpr int kWestern = 1252; // the code page of a file that names none

// The number of a code page by its name, "ANSI_1252" or "DOS850".
int CodePageOf(std::string_view name) {
    const struct {
        std::string_view name;
        int number;
    } named[] = {{"GB2312", 936}, {"GBK", 936}, {"BIG5", 950}, {"KSC5601", 949}, {"JOHAB", 1361}};
    std::string capitals(name);
    for (char& c : capitals) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    for (const auto& row : named)
        if (capitals == row.name) return row.number;
    const bool isNumbered = capitals.starts_with("ANSI") || capitals.starts_with("DOS");
    int number = 0;
    for (const char c : capitals)
        if (c >= '0' && c <= '9' && number < 100'000) number = number * 10 + (c - '0');
    return isNumbered && number > 0 ? number : kWestern;
}

// Reads "\\U+0416" at the beginning of a text; false when there is no such code.
bool ReadCode(std::string_view text, char32_t& letter) {
    constexpr std::string_view kBegin = "\\U+";
    constexpr std::size_t kDigits = 4;
    if (!text.starts_with(kBegin) || text.size() < kBegin.size() + kDigits) return false;
    const char* const first = text.data() + kBegin.size();
    unsigned code = 0;
    const auto [end, error] = std::from_chars(first, first + kDigits, code, 16);
    letter = code;
    return error == std::errc() && end == first + kDigits;
}

} // namespace

DxfEncoding::DxfEncoding(const DxfFile& file) {
    const DxfGroup* version = file.FindVariable("$ACADVER");
    const DxfGroup* codePage = file.FindVariable("$DWGCODEPAGE");
    m_bIsUtf8 = !codePage || (version && version->text >= "AC1021");
    m_nCodePage = codePage ? CodePageOf(codePage->text) : kWestern;
}

std::string DxfEncoding::TextOf(std::string_view bytes) const {
    const bool isAscii =
        std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    if (isAscii || (m_bIsUtf8 && IsUtf8(bytes))) return std::string(bytes);
    return qev::platform::ToUtf8(bytes, m_nCodePage);
}

std::string DxfEncoding::NameOf(std::string_view bytes) const {
    std::string name = TextOf(bytes);
    for (std::size_t at = name.find('\\'); at != std::string::npos; at = name.find('\\', at + 1)) {
        char32_t letter = 0;
        if (ReadCode(std::string_view(name).substr(at), letter))
            name.replace(at, 7, Utf8Of(std::u32string_view(&letter, 1))); // as many bytes as a code has
    }
    return name;
}

} // namespace host
