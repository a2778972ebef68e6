#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include <qev/support/image_file.h>

#include "platform/image.h"

namespace qev {
namespace {

constexpr std::size_t kLargestFile = 10'485'760; // bytes

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Whether the chain of a GIF's blocks ends with its trailer.
bool ReachesTrailer(std::string_view gif) {
    const auto at = [gif](std::size_t i) { return i < gif.size() ? static_cast<unsigned char>(gif[i]) : 0U; };
    const auto colours = [&](std::size_t i) {
        return at(i) & 0x80 ? std::size_t{6} << (at(i) & 7) : 0;
    };                                     // bytes
    std::size_t i = 13 + colours(10);      // behind the header
    while (at(i) == '!' || at(i) == ',') { // an extension or a frame
        i += at(i) == '!' ? 2 : 11 + colours(i + 9);
        while (at(i) != 0) i += at(i) + 1; // pieces, led by their sizes
        ++i;
    }
    return at(i) == ';';
}

// Decoders show what there is of these when they break off. TIFF is read to the end.
bool IsWhole(std::string_view bytes) {
    constexpr auto kNone = std::string_view::npos;
    if (bytes.starts_with("GIF8")) return ReachesTrailer(bytes);
    if (bytes.starts_with("\x89PNG")) return bytes.rfind("IEND") != kNone;
    if (bytes.starts_with("\xFF\xD8")) { // its end stands behind its last scan; a small preview has its own
        const std::size_t end = bytes.rfind("\xFF\xD9");
        return end != kNone && end > bytes.rfind("\xFF\xDA");
    }
    if (!bytes.starts_with("BM") || bytes.size() < 6) return true;
    std::uint32_t declared = 0; // little-endian, as all systems of the library are
    std::memcpy(&declared, bytes.data() + 2, sizeof declared);
    return declared <= bytes.size();
}

} // namespace

// The size is what was read, so that it cannot change between being asked for and reading.
bool LoadImageFile(CImage& image, const char* path) {
    const std::unique_ptr<std::FILE, Close> file(path && *path ? std::fopen(path, "rb") : nullptr);
    const std::unique_ptr<char[]> bytes(file ? new (std::nothrow) char[kLargestFile + 1] : nullptr);
    if (!bytes) return false;
    const std::size_t size = std::fread(bytes.get(), 1, kLargestFile + 1, file.get());
    const bool isRead = size > 0 && size <= kLargestFile && !std::ferror(file.get());
    return isRead && IsWhole({bytes.get(), size}) && platform::LoadImageBytes(bytes.get(), size, image);
}

} // namespace qev
