// Pictures through GDI+, from a stream over a copy of the bytes. The system converts every format to BGRA
// while it copies the pixels out. A picture decodes only when its pixels are asked for, so that its size can
// be checked before memory is taken for them. It knows the format by the bytes that a file begins with, and
// need not be told.

#include "../image.h"

#include <cstring>
#include <memory>
#include <new>

#include <windows.h>
// after the system's types
#include <gdiplus.h>

namespace qev::platform {
namespace {

namespace gdi = Gdiplus;

// GDI+ runs only while a picture is read: nothing of it is left when the library unloads.
class GdiPlus {
public:
    GdiPlus() { m_eStatus = gdi::GdiplusStartup(&m_nToken, &m_stInput, nullptr); }
    ~GdiPlus() {
        if (IsRunning()) gdi::GdiplusShutdown(m_nToken);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;
    bool IsRunning() const { return m_eStatus == gdi::Ok; }

private:
    gdi::GdiplusStartupInput m_stInput;
    ULONG_PTR m_nToken = 0;
    gdi::Status m_eStatus;
};

struct Release {
    void operator()(IStream* stream) const { stream->Release(); }
};
using Stream = std::unique_ptr<IStream, Release>;

// A stream that owns a copy of the bytes.
Stream StreamOf(const void* bytes, std::size_t size) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!block) return nullptr;
    IStream* stream = nullptr;
    if (void* memory = GlobalLock(block)) {
        std::memcpy(memory, bytes, size);
        GlobalUnlock(block);
        CreateStreamOnHGlobal(block, TRUE, &stream);
    }
    if (!stream) GlobalFree(block);
    return Stream(stream);
}

bool CopyPixels(gdi::Bitmap& bitmap, CImage& image) {
    const int width = static_cast<int>(bitmap.GetWidth());
    const int height = static_cast<int>(bitmap.GetHeight());
    if (1LL * width * height > kMostPixels) return false;
    const gdi::Rect whole(0, 0, width, height);
    std::vector<unsigned char> bgra(std::size_t{4} * width * height);
    gdi::BitmapData target{};
    target.Width = width;
    target.Height = height;
    target.Stride = 4 * width;
    target.PixelFormat = PixelFormat32bppARGB;
    target.Scan0 = bgra.data();
    const UINT mode = gdi::ImageLockModeRead | gdi::ImageLockModeUserInputBuf;
    if (bitmap.LockBits(&whole, mode, PixelFormat32bppARGB, &target) != gdi::Ok) return false;
    bitmap.UnlockBits(&target);
    image.Assign(width, height, std::move(bgra));
    return true;
}

} // namespace

bool LoadImageBytes(const void* bytes, std::size_t size, const char* /*format*/, CImage& image) {
    if (size == 0) return false;
    const GdiPlus gdiPlus;
    const Stream stream = gdiPlus.IsRunning() ? StreamOf(bytes, size) : nullptr;
    if (!stream) return false;
    try {
        gdi::Bitmap bitmap(stream.get());
        return bitmap.GetLastStatus() == gdi::Ok && CopyPixels(bitmap, image);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace qev::platform
