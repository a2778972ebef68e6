/// \file
/// Texts of old encodings as Unicode.
#pragma once

#include <string>
#include <string_view>

namespace qev::platform {

/// A text of a code page, by its number as Windows counts them (1252, 936, 850 ...), as UTF-8. Bytes that are
/// no letter there become U+FFFD or another letter that stands for none. A code page that the system does not
/// have is taken as 1252.
std::string ToUtf8(std::string_view text, int codePage);

} // namespace qev::platform
