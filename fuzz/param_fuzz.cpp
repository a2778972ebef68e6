// Parameter strings that are put together of pairs, and numbers as texts of dialogs: a key has its first
// value, a text is as near as its digits say, and what is shown is shown again as it is.
#include <map>
#include <optional>

#include "input.h"
#include "support/dialog.h"

namespace {

using fuzz::Expect, fuzz::Input;

void ExpectFirstValues(Input& in) {
    constexpr std::array kParts{"A", "Type", "", "b c", "-1.5e3", "x=y", "0x1", "7"};
    constexpr std::array kBlanks{"", " ", "\t ", "\r\n"};
    const auto part = [&] { return kParts[in.Int(0, kParts.size() - 1)]; };
    std::map<std::string, std::string> first;
    std::string text;
    for (int i = in.Int(0, 9); i > 0; --i) {
        const std::string key = part(), value = part();
        if (key == "x=y") continue;
        for (const std::string& each : {key, std::string("="), value, std::string(";")})
            text.append(kBlanks[in.Int(0, kBlanks.size() - 1)]).append(each);
        first.emplace(key, value);
    }
    for (const char* key : kParts) {
        const auto own = first.find(key);
        const auto found = qev::CParam::FindKey(text, key);
        Expect(found == (own == first.end() ? std::nullopt : std::optional<std::string_view>(own->second)),
               "a key has its first value");
        const double number = qev::CParam::GetKey_DBL_FromString(text.c_str(), key);
        const double expected = found == "7" ? 7 : found == "-1.5e3" ? -1500 : std::nan("");
        Expect(number == expected || (std::isnan(number) && std::isnan(expected)), "a number as a whole");
    }
}

void ExpectTexts(double value, int precision, const std::string& typed) {
    const double off = std::abs(std::strtod(ToStringPrecision(value, precision), nullptr) - value);
    Expect(!(off > 0.50001 * std::pow(10, -std::max(0, precision)) + 1e-15 * std::abs(value)),
           "a text is as near as its digits say");
    static const test::Dialog dialog({101});
    CString stored, again;
    SetDlgItemTextUnit(dialog.Get(), 101, typed.c_str());
    GetDlgItemTextUnit(dialog.Get(), 101, stored);
    for (CString* next : {&stored, &again}) {
        SetDlgItemTextUnit(dialog.Get(), 101, stored);
        GetDlgItemTextUnit(dialog.Get(), 101, *next);
    }
    Expect(stored == again, "what is shown is shown again as it is");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    const double value = in.Number() * std::pow(10, in.Int(-12, 12));
    const int precision = in.Int(-1, 20);
    ExpectFirstValues(in);
    std::string typed(in.Rest());
#ifdef _WIN32 // where Wine's edit control reads beyond its fonts' tables at some letters
    for (char& letter : typed) letter &= 0x7f;
#endif
    ExpectTexts(value, precision, typed);
    return 0;
}
