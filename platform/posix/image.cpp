// Pictures through gdk-pixbuf, which decodes all formats that hosts use and is fed with bytes, so that no
// file is opened here. It gives rows of RGB or RGBA with padding behind each; CImage takes BGRA without any.
// The loader is told the format: left to find it out, it would take every format that is installed, of which
// some are programs that run for as long as a file wants them to.
//
// A picture's size is checked as soon as its header has been read and before memory is taken for its pixels.
//
// The decoder's library is loaded with the first picture and stays: it brings an object system of several
// libraries with it, which a host without pictures shall not need to have, and which cannot be unloaded. Its
// headers are needed to build, and give the types of what is looked up by name.

#include "../image.h"

#include <memory>
#include <new>
#include <type_traits>

#include <gdk-pixbuf/gdk-pixbuf.h>

#include "../dynamic_library.h"

namespace qev::platform {
namespace {

// What is used of gdk-pixbuf and of the object system under it.
struct Decoder {
    decltype(&gdk_pixbuf_loader_new_with_type) newLoader = nullptr;
    decltype(&gdk_pixbuf_loader_write) write = nullptr;
    decltype(&gdk_pixbuf_loader_close) close = nullptr;
    decltype(&gdk_pixbuf_loader_set_size) setSize = nullptr;
    decltype(&gdk_pixbuf_loader_get_pixbuf) getPixbuf = nullptr;
    decltype(&gdk_pixbuf_get_width) getWidth = nullptr;
    decltype(&gdk_pixbuf_get_height) getHeight = nullptr;
    decltype(&gdk_pixbuf_get_n_channels) getChannels = nullptr;
    decltype(&gdk_pixbuf_get_rowstride) getRowStride = nullptr;
    decltype(&gdk_pixbuf_read_pixels) readPixels = nullptr;
    decltype(&g_signal_connect_data) connect = nullptr;
    decltype(&g_object_unref) unref = nullptr;
};

// Looks every function up; false when one is missing, which then is not called either.
bool Find(Decoder& decoder) {
    void* const library = LoadDynamicLibrary("libgdk_pixbuf-2.0.so.0");
    const auto find = [library](auto& function, const char* name) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(FindSymbol(library, name));
        return function != nullptr;
    };
    return find(decoder.newLoader, "gdk_pixbuf_loader_new_with_type")
           && find(decoder.write, "gdk_pixbuf_loader_write") && find(decoder.close, "gdk_pixbuf_loader_close")
           && find(decoder.setSize, "gdk_pixbuf_loader_set_size")
           && find(decoder.getPixbuf, "gdk_pixbuf_loader_get_pixbuf")
           && find(decoder.getWidth, "gdk_pixbuf_get_width")
           && find(decoder.getHeight, "gdk_pixbuf_get_height")
           && find(decoder.getChannels, "gdk_pixbuf_get_n_channels")
           && find(decoder.getRowStride, "gdk_pixbuf_get_rowstride")
           && find(decoder.readPixels, "gdk_pixbuf_read_pixels")
           && find(decoder.connect, "g_signal_connect_data") && find(decoder.unref, "g_object_unref");
}

// The decoder, loaded by the first call; null on a machine that has none.
const Decoder* GetDecoder() {
    static Decoder decoder;
    static const bool found = Find(decoder);
    return found ? &decoder : nullptr;
}

void CopyPixels(const Decoder& decoder, const GdkPixbuf* source, CImage& image) {
    const int width = decoder.getWidth(source);
    const int height = decoder.getHeight(source);
    const int channels = decoder.getChannels(source);
    std::vector<unsigned char> bgra;
    bgra.reserve(std::size_t{4} * width * height);
    for (int y = 0; y < height; ++y) {
        const guint8* pixel = decoder.readPixels(source) + std::size_t{1} * y * decoder.getRowStride(source);
        for (int x = 0; x < width; ++x, pixel += channels)
            bgra.insert(bgra.end(), {pixel[2], pixel[1], pixel[0], channels == 4 ? pixel[3] : guint8{255}});
    }
    image.Assign(width, height, std::move(bgra));
}

// Called before the decoder takes memory for the pixels; a picture of size 0 is refused.
void RefuseBombs(GdkPixbufLoader* loader, int width, int height, gpointer decoder) {
    if (1LL * width * height > kMostPixels) static_cast<const Decoder*>(decoder)->setSize(loader, 0, 0);
}

} // namespace

bool LoadImageBytes(const void* bytes, std::size_t size, const char* format, CImage& image) {
    const Decoder* const decoder = GetDecoder();
    if (!decoder) return false;
    const std::unique_ptr<GdkPixbufLoader, decltype(decoder->unref)> loader(
        decoder->newLoader(format, nullptr), decoder->unref);
    if (!loader) return false;
    decoder->connect(loader.get(), "size-prepared", G_CALLBACK(RefuseBombs), const_cast<Decoder*>(decoder),
                     nullptr, GConnectFlags{});
    const bool written = decoder->write(loader.get(), static_cast<const guchar*>(bytes), size, nullptr);
    const bool closed = decoder->close(loader.get(), nullptr); // also after a failure
    const GdkPixbuf* picture = written && closed ? decoder->getPixbuf(loader.get()) : nullptr;
    if (!picture) return false;
    try {
        CopyPixels(*decoder, picture, image);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

} // namespace qev::platform
