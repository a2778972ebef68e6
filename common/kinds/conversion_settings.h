/// \file
/// The settings text of a conversion. Private to the library.
#pragma once

#include <charconv>
#include <string>
#include <string_view>

namespace qev {

/// The text that the converter of the data library reads its settings from:
/// "SegmentType=<word>;AbsoluteError=%14.6f;", the error in mm, with a decimal point whatever locale the host
/// has set.
inline std::string ConversionSettings(std::string_view segmentType, double absoluteError) {
    constexpr std::size_t kWidth = 14;
    constexpr int kDecimals = 6;
    char digits[400]; // the largest double takes 309 digits before its point
    char* const end =
        std::to_chars(digits, digits + sizeof digits, absoluteError, std::chars_format::fixed, kDecimals).ptr;
    const auto length = static_cast<std::size_t>(end - digits);
    std::string text = "SegmentType=";
    text.append(segmentType).append(";AbsoluteError=");
    text.append(length < kWidth ? kWidth - length : 0, ' ').append(digits, length).append(";");
    return text;
}

} // namespace qev
