/// \file
/// Texts as Unicode letters and as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace host {

/// What stands for a letter that cannot be read.
inline constexpr char32_t kNoLetter = 0xFFFD;

/// The letters of a UTF-8 text. Each byte that belongs to none becomes kNoLetter.
std::u32string LettersOf(std::string_view utf8);

/// Letters as UTF-8. What is no letter (a surrogate, or beyond U+10FFFF) becomes kNoLetter.
std::string Utf8Of(std::u32string_view letters);

/// Whether a text is UTF-8 throughout; ASCII is.
bool IsUtf8(std::string_view text);

/// A text of the library's Lua bridge as UTF-8, for a terminal. The bridge's own texts are in code page 936;
/// one that is UTF-8 already stays as it is.
std::string FromBridge(std::string_view text);

} // namespace host
