// The C library converts: it has the code pages as modules, which are loaded while a conversion is open. A
// byte that belongs to no letter is passed over by itself, as it is more often a stray byte than the first of
// two.

#include "../encoding.h"

#include <array>
#include <memory>
#include <type_traits>

#include <iconv.h>

namespace qev::platform {
namespace {

struct Close {
    void operator()(iconv_t conversion) const { iconv_close(conversion); }
};
using Conversion = std::unique_ptr<std::remove_pointer_t<iconv_t>, Close>;

constexpr int kWestern = 1252; // which every system has

Conversion Open(int codePage) {
    iconv_t conversion = iconv_open("UTF-8", ("CP" + std::to_string(codePage)).c_str());
    // NOLINTNEXTLINE(performance-no-int-to-ptr): so the C library defines it
    if (conversion != reinterpret_cast<iconv_t>(-1)) return Conversion(conversion);
    return codePage == kWestern ? nullptr : Open(kWestern);
}

} // namespace

std::string ToUtf8(std::string_view text, int codePage) {
    const Conversion conversion = Open(codePage);
    if (!conversion) return std::string(text);
    std::string converted;
    char* from = const_cast<char*>(text.data()); // which it only reads
    std::size_t left = text.size();
    while (left > 0) {
        std::array<char, 256> buffer{};
        char* to = buffer.data();
        std::size_t room = buffer.size();
        const bool isStuck =
            iconv(conversion.get(), &from, &left, &to, &room) == static_cast<std::size_t>(-1);
        converted.append(buffer.data(), to);
        if (!isStuck || to != buffer.data()) continue; // the buffer was full, or the next call is stuck again
        converted += "\xEF\xBF\xBD";
        ++from;
        --left;
    }
    return converted;
}

} // namespace qev::platform
