/// \file
/// Key=value texts such as "SegmentType=Both;AbsoluteError=0.001;".
#pragma once

#include <optional>
#include <string_view>

#include <qev/export.h>

namespace qev {

/// Reads texts such as "A=1;B=2;": keys and values joined by "=", each pair ended by ";". What has no "=" is
/// passed over.
struct QEVDATA_API CParam {
    /// The number that stands for a key; NaN when the key is absent or its value is not a number. Keys match
    /// exactly, the first of equal keys counts, blanks round keys and values are dropped, the decimal sign is
    /// always a point. Null arguments give NaN.
    static double GetKey_DBL_FromString(const char* text, const char* key);
    /// The text of the first value that stands for a key, without blanks round it, or nothing when the key is
    /// absent. It is a part of `text` and lasts as long.
    static std::optional<std::string_view> FindKey(std::string_view text, std::string_view key);
};

} // namespace qev
