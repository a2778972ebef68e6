// Pictures through gdk-pixbuf, which decodes all formats that hosts use and is fed with bytes, so that no
// file is opened here. It gives rows of RGB or RGBA with padding behind each; CImage takes BGRA without any.
// The loader is told the format: left to find it out, it would take every format that is installed, of which
// some are programs that run for as long as a file wants them to.
//
// A picture's size is checked as soon as its header has been read and before memory is taken for its pixels.

#include "../image.h"

#include <memory>
#include <new>

#include <gdk-pixbuf/gdk-pixbuf.h>

namespace qev::platform {
namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Loader = std::unique_ptr<GdkPixbufLoader, Unref>;

void CopyPixels(const GdkPixbuf* source, CImage& image) {
    const int width = gdk_pixbuf_get_width(source);
    const int height = gdk_pixbuf_get_height(source);
    const int channels = gdk_pixbuf_get_n_channels(source);
    std::vector<unsigned char> bgra;
    bgra.reserve(std::size_t{4} * width * height);
    for (int y = 0; y < height; ++y) {
        const guint8* pixel =
            gdk_pixbuf_read_pixels(source) + std::size_t{1} * y * gdk_pixbuf_get_rowstride(source);
        for (int x = 0; x < width; ++x, pixel += channels)
            bgra.insert(bgra.end(), {pixel[2], pixel[1], pixel[0], channels == 4 ? pixel[3] : guint8{255}});
    }
    image.Assign(width, height, std::move(bgra));
}

// Called before the decoder takes memory for the pixels; a picture of size 0 is refused.
void RefuseBombs(GdkPixbufLoader* loader, int width, int height, gpointer) {
    if (1LL * width * height > kMostPixels) gdk_pixbuf_loader_set_size(loader, 0, 0);
}

} // namespace

bool LoadImageBytes(const void* bytes, std::size_t size, const char* format, CImage& image) {
    const Loader loader(gdk_pixbuf_loader_new_with_type(format, nullptr));
    if (!loader) return false;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(RefuseBombs), nullptr);
    const bool written =
        gdk_pixbuf_loader_write(loader.get(), static_cast<const guchar*>(bytes), size, nullptr);
    const bool closed = gdk_pixbuf_loader_close(loader.get(), nullptr); // also after a failure
    const GdkPixbuf* picture = written && closed ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    if (!picture) return false;
    try {
        CopyPixels(picture, image);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

} // namespace qev::platform
