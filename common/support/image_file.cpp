// Pictures from files. A file is read whole, up to a limit, and decoded from memory: the size is what was
// read, so that it cannot change between being asked for and reading.
//
// Of a file that breaks off the systems' decoders show the part that is there, and report success. A half
// picture on a drawing is worse than none, so that the end of the file is looked for here, as each format
// marks it, before the decoder is asked. That the bytes in between are sound is the decoder's business, which
// does refuse those that it cannot read.

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

// Whether the chain of a GIF's blocks ends with its trailer: a header of 13 bytes with flags at byte 10, a
// table of colours where the highest flag says so, then extensions and frames of which each is a run of
// pieces with their sizes in front, ended by a size of 0, and a semicolon behind the last. Bytes behind the
// end read as 0.
bool ReachesTrailer(std::string_view gif) {
    const auto at = [gif](std::size_t i) { return i < gif.size() ? static_cast<unsigned char>(gif[i]) : 0U; };
    // The bytes of the table of colours that the flags at a place announce.
    const auto colours = [&](std::size_t flags) {
        return at(flags) & 0x80 ? std::size_t{6} << (at(flags) & 7) : 0;
    };
    constexpr std::size_t kHeader = 13, kFrame = 11, kExtension = 2; // bytes before what follows them
    std::size_t i = kHeader + colours(10);
    while (at(i) == '!' || at(i) == ',') { // an extension or a frame
        i += at(i) == '!' ? kExtension : kFrame + colours(i + 9);
        while (at(i) != 0) i += at(i) + 1;
        ++i;
    }
    return at(i) == ';';
}

// Whether a picture reaches the end that its format marks: GIF its trailer, PNG its last chunk, JPEG its end
// mark, BMP the size that it declares. TIFF has no such mark and needs none, because its decoders refuse a
// file that lacks a part. Bytes of no known format count as whole; the decoder refuses them.
bool IsWhole(std::string_view bytes) {
    constexpr auto kNone = std::string_view::npos;
    if (bytes.starts_with("GIF8")) return ReachesTrailer(bytes);
    if (bytes.starts_with("\x89PNG")) return bytes.rfind("IEND") != kNone;
    if (bytes.starts_with("\xFF\xD8")) {
        // A preview inside the file has an end mark of its own, so that only one behind the last scan counts.
        const std::size_t end = bytes.rfind("\xFF\xD9");
        return end != kNone && end > bytes.rfind("\xFF\xDA");
    }
    if (!bytes.starts_with("BM") || bytes.size() < 6) return true;
    std::uint32_t declared = 0; // little-endian, as all systems of the library are
    std::memcpy(&declared, bytes.data() + 2, sizeof declared);
    return declared <= bytes.size();
}

} // namespace

bool LoadImageFile(CImage& image, const char* path) {
    const std::unique_ptr<std::FILE, Close> file(path && *path ? std::fopen(path, "rb") : nullptr);
    const std::unique_ptr<char[]> bytes(file ? new (std::nothrow) char[kLargestFile + 1] : nullptr);
    if (!bytes) return false;
    const std::size_t size = std::fread(bytes.get(), 1, kLargestFile + 1, file.get());
    const bool isRead = size > 0 && size <= kLargestFile && !std::ferror(file.get());
    return isRead && IsWhole({bytes.get(), size}) && platform::LoadImageBytes(bytes.get(), size, image);
}

} // namespace qev
