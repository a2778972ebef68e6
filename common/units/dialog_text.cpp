// Numbers as texts and back, for the controls of dialogs. The C library's functions would read and write the
// decimal point of the user's locale, so that a length typed on one machine would be another on the next; the
// standard's from_chars and to_chars know no locale, and the few things that atof takes beyond them (blanks,
// a sign and 0x in front) are taken off first.
//
// Lengths are stored as texts with 16 digits behind the point, enough for the text that was
// entered to be shown again as it was.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

#include <qev/units/dialog_text.h>
#include <qev/units/unit_system.h>

#include "platform/dialog.h"

namespace {

// What a double has at most: the smallest one behind the point, the largest one before it.
constexpr int kMostDecimals = 1074;
constexpr int kMostDigits = 309;

// As printf's "%.*f" in the "C" locale.
std::string FixedText(double value, int decimals) {
    std::array<char, 1 + kMostDigits + 1 + kMostDecimals> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed,
                                   std::clamp(decimals, 0, kMostDecimals));
    return std::string(text.data(), end.ptr);
}

// As the C standard's atof in the "C" locale, hexadecimal digits behind 0x included, which not every system's
// own atof reads; but 0 for a number that no double holds.
double NumberAtStart(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    double number = 0;
    const auto reads = [&number](std::string_view digits, std::chars_format format) {
        if (digits.starts_with('-')) return false;
        return std::from_chars(digits.data(), digits.data() + digits.size(), number, format).ec
               == std::errc();
    };
    const bool mayBeHex = text.starts_with("0x") || text.starts_with("0X");
    const bool isNumber = (mayBeHex && reads(text.substr(2), std::chars_format::hex))
                          || reads(text, std::chars_format::general);
    return isNumber && isNegative ? -number : number;
}

bool IsNumberText(std::string_view text) {
    return !text.empty() && text.find_first_not_of("+-.0123456789") == std::string_view::npos;
}

} // namespace

CString ToStringPrecision(double value, int precision) {
    std::string text = FixedText(value, precision);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text.c_str();
}

void SetDlgItemTextUnit(HWND dialog, int id, const char* text) {
    const UnitSystem* const units = UnitSystem::GetUnitSystem(); // null when the library's statics are gone
    if (!units || !text || !IsNumberText(text)) return qev::platform::SetItemText(dialog, id, text);
    const double shown = units->MetricToUiUnit(NumberAtStart(text), CONVERT_LENGTH);
    qev::platform::SetItemText(dialog, id, ToStringPrecision(shown, units->GetDefaultPrecision()));
}

void GetDlgItemTextUnit(HWND dialog, int id, CString& value) {
    constexpr int kDecimals = 16;
    const UnitSystem* const units = UnitSystem::GetUnitSystem();
    const double shown = NumberAtStart(qev::platform::GetItemText(dialog, id).GetString());
    const double stored = units ? units->UiUnitToMetric(shown) : shown;
    // A text that begins like "infinite" or "name" is no number.
    value = FixedText(std::isfinite(stored) ? stored : 0.0, kDecimals).c_str();
}
