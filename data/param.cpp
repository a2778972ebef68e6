// Settings are read where they stand: no copy, no locale (a comma is never a decimal sign), no exception. A
// value has to be a number to its last character, since half a number is more likely a mistake than a wish.
#include <algorithm>
#include <charconv>
#include <limits>

#include <qevdata/param.h>

namespace qev {
namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

double ToNumber(std::string_view text) {
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? number : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

std::optional<std::string_view> CParam::FindKey(std::string_view text, std::string_view key) {
    while (!text.empty()) {
        const std::string_view item = text.substr(0, text.find(';'));
        text.remove_prefix(std::min(text.size(), item.size() + 1));
        const std::size_t sign = item.find('=');
        if (sign != std::string_view::npos && Trimmed(item.substr(0, sign)) == key)
            return Trimmed(item.substr(sign + 1));
    }
    return std::nullopt;
}

double CParam::GetKey_DBL_FromString(const char* text, const char* key) {
    const auto value = text && key ? FindKey(text, key) : std::nullopt;
    return value ? ToNumber(*value) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace qev
