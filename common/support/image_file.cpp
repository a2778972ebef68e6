// Pictures from files. A file is read whole, up to a limit, and decoded from memory, and only once the system
// has said that it is an ordinary file: to open a pipe may block for ever.
//
// The first bytes choose one of five formats. What a system can decode besides (vector graphics, icons,
// whatever is installed) is refused: programs more than pictures, some of them, that take minutes for a
// hundred bytes.
//
// Of a file that breaks off the systems' decoders show the part that is there, and report success. A half
// picture on a drawing is worse than none, so that the end of the picture is looked for here before the
// decoder is asked: where each format marks it or, in a BMP, where the rows that its header announces end.
// That also keeps a header that announces far more than the file holds from costing memory. What lies behind
// the end is not handed to the decoder. A GIF so loses all frames but the first, of which a small file may
// hold 100,000; nothing but the first is shown. That the bytes in between are sound is the decoder's
// business, which does refuse those that it cannot read.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include <qev/support/image_file.h>

#include "platform/file_status.h"
#include "platform/image.h"

namespace qev {
namespace {

constexpr long long kLargestFile = 10'485'760; // bytes

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// The bytes of a file as numbers; those behind its end read as 0.
class Bytes {
public:
    explicit Bytes(std::string_view bytes) : m_strBytes(bytes) {}
    std::size_t Size() const { return m_strBytes.size(); }
    std::uint32_t At(std::size_t i) const {
        return i < Size() ? static_cast<unsigned char>(m_strBytes[i]) : 0U;
    }
    std::uint32_t Little16(std::size_t i) const { return At(i) | At(i + 1) << 8; }
    std::uint32_t Little32(std::size_t i) const { return Little16(i) | Little16(i + 2) << 16; }
    std::uint32_t Big16(std::size_t i) const { return At(i) << 8 | At(i + 1); }
    std::uint32_t Big32(std::size_t i) const { return Big16(i) << 16 | Big16(i + 2); }

private:
    std::string_view m_strBytes;
};

// The end of a GIF's first frame: a header of 13 bytes with flags at byte 10, a table of colours where the
// highest flag says so, then extensions and frames of which each is a run of pieces with their sizes in
// front, ended by a size of 0.
std::size_t EndOfGif(const Bytes& gif) {
    constexpr std::size_t kHeader = 13, kFrame = 11, kExtension = 2; // bytes before what follows them
    // The bytes of the table of colours that the flags at a place announce.
    const auto colours = [&](std::size_t flags) {
        return gif.At(flags) & 0x80 ? std::size_t{6} << (gif.At(flags) & 7) : 0;
    };
    std::size_t i = kHeader + colours(10);
    for (bool isFrame = false; !isFrame;) {
        isFrame = gif.At(i) == ',';
        if (!isFrame && gif.At(i) != '!') return 0;
        i += isFrame ? kFrame + colours(i + 9) : kExtension;
        while (gif.At(i) != 0) i += gif.At(i) + 1;
        ++i;
    }
    return i <= gif.Size() ? i : 0;
}

// The end of a PNG's last chunk, "IEND". A chunk has its length in front, four letters, and a check behind.
std::size_t EndOfPng(const Bytes& png) {
    constexpr std::size_t kSignature = 8, kAround = 12;
    constexpr std::uint32_t kEnd = 0x49'45'4E'44;
    std::size_t i = kSignature;
    while (i < png.Size() && png.Big32(i + 4) != kEnd) i += kAround + png.Big32(i);
    return i < png.Size() ? i + kAround : 0;
}

// The end mark of a JPEG. Segments begin with FF, a kind and their length. The coded data behind a scan, in
// which an FF stands before a 0, a restart (D0 to D7) or another FF, is passed over as whatever else stands
// between segments. A preview has an end mark of its own, but lies inside a segment.
std::size_t EndOfJpeg(const Bytes& jpeg) {
    constexpr std::uint32_t kEnd = 0xD9, kFirstRestart = 0xD0, kLastRestart = 0xD7;
    for (std::size_t i = 2; i + 1 < jpeg.Size();) {
        const std::uint32_t kind = jpeg.At(i + 1);
        const bool isRestart = kind >= kFirstRestart && kind <= kLastRestart;
        if (jpeg.At(i) != 0xFF || kind == 0 || kind == 0xFF || isRestart)
            ++i;
        else if (kind == kEnd)
            return i + 2;
        else
            i += 2 + jpeg.Big16(i + 2);
    }
    return 0;
}

// The end of the runs of a BMP that is packed: pairs of a count and a pixel, or of 0 and what is special: 0
// ends a row, 1 the picture, 2 is followed by a step in two bytes, more is the number of pixels that follow,
// filled up to an even number of bytes. Rows may also end the picture by their number.
std::size_t EndOfRuns(const Bytes& bmp, std::size_t i, std::uint32_t rows, std::uint32_t bitsPerPixel) {
    for (std::uint32_t ended = 0; ended < rows;) {
        const std::uint32_t count = bmp.At(i), special = bmp.At(i + 1);
        i += 2;
        if (i > bmp.Size()) return 0;
        if (count > 0) continue;
        if (special == 0) ++ended;
        if (special == 1) break;
        if (special == 2) i += 2;
        if (special > 2) i += (std::size_t{special} * bitsPerPixel + 15) / 16 * 2;
    }
    return i;
}

// The end of a BMP's pixels, by its header: where they begin, then in an old header of 12 bytes or a later
// one the width, the height (below 0 where the top row comes first) and the bits of a pixel. Rows are filled
// up to 4 bytes. The size that it says the file has is often wrong, and not asked; but for a header that it
// says is larger than the file a decoder takes memory.
std::size_t EndOfBmp(const Bytes& bmp) {
    constexpr std::uint32_t kOldHeader = 12, kPacked8 = 1, kPacked4 = 2, kLongestRun = 255;
    const std::uint32_t header = bmp.Little32(14);
    const bool isOld = header == kOldHeader;
    const std::uint64_t width = isOld ? bmp.Little16(18) : bmp.Little32(18);
    const auto height = static_cast<std::int32_t>(isOld ? bmp.Little16(20) : bmp.Little32(22));
    const std::uint32_t rows = height < 0 ? 0U - bmp.Little32(22) : static_cast<std::uint32_t>(height);
    const std::uint32_t bitsPerPixel = bmp.Little16(isOld ? 24 : 28);
    const std::uint32_t packing = isOld ? 0 : bmp.Little32(30);
    const std::size_t begin = bmp.Little32(10);
    if (rows == 0 || begin > bmp.Size() || header > bmp.Size()) return 0;
    const std::uint64_t bytesForRow = (bmp.Size() - begin) / rows;
    if (packing != kPacked8 && packing != kPacked4)
        return (width * bitsPerPixel + 31) / 32 * 4 <= bytesForRow ? bmp.Size() : 0;
    const bool mayFill = width * rows <= (bmp.Size() - begin) / 2 * kLongestRun;
    return mayFill ? EndOfRuns(bmp, begin, rows, bitsPerPixel) : 0;
}

// The decoders of a TIFF, whose parts may lie anywhere, refuse a file that lacks one.
std::size_t EndOfTiff(const Bytes& tiff) {
    return tiff.Size();
}

struct Format {
    const char* name;
    std::string_view begin;                // the first bytes of a file
    std::size_t (*end)(const Bytes& file); // the number of bytes up to the end, 0 when the file breaks off
    std::string_view trailer;              // what then has to follow
};

constexpr Format kFormats[] = {{"bmp", "BM", EndOfBmp, ""},           {"png", "\x89PNG", EndOfPng, ""},
                               {"jpeg", "\xFF\xD8", EndOfJpeg, ""},   {"gif", "GIF8", EndOfGif, ";"},
                               {"tiff", {"II*\0", 4}, EndOfTiff, ""}, {"tiff", {"MM\0*", 4}, EndOfTiff, ""}};

// The bytes of a file; none when it is no ordinary file, empty or too large, or cannot be read.
std::string Contents(const char* path) {
    const long long size = path && *path ? platform::FileSize(path) : -1;
    if (size <= 0 || size > kLargestFile) return {};
    std::string bytes(size, '\0');
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path, "rb"));
    const bool isRead = file && std::fread(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return isRead ? bytes : std::string();
}

} // namespace

bool LoadImageFile(CImage& image, const char* path) try {
    std::string bytes = Contents(path);
    const auto* const format =
        std::ranges::find_if(kFormats, [&](const Format& f) { return bytes.starts_with(f.begin); });
    if (format == std::end(kFormats)) return false;
    const std::size_t end = format->end(Bytes(bytes));
    if (end == 0) return false;
    bytes.resize(std::min(end, bytes.size()));
    bytes += format->trailer;
    return platform::LoadImageBytes(bytes.data(), bytes.size(), format->name, image);
} catch (const std::bad_alloc&) {
    return false;
}

} // namespace qev
