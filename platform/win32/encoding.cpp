// Windows converts between a code page and UTF-16, and from there to UTF-8.

#include "../encoding.h"

#include <windows.h>

namespace qev::platform {
namespace {

constexpr UINT kWestern = 1252; // which every system has

} // namespace

std::string ToUtf8(std::string_view text, int codePage) {
    if (text.empty()) return {};
    const UINT from = IsValidCodePage(static_cast<UINT>(codePage)) ? static_cast<UINT>(codePage) : kWestern;
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0'); // no letter of a code page takes more than one unit for each byte
    const int letters = MultiByteToWideChar(from, 0, text.data(), size, wide.data(), size);
    std::string converted(3 * static_cast<std::size_t>(letters), '\0'); // the most that a unit takes
    converted.resize(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), letters, converted.data(),
                                                     static_cast<int>(converted.size()), nullptr, nullptr)));
    return converted;
}

} // namespace qev::platform
