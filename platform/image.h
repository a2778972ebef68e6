/// \file
/// Pictures from the bytes of an image file.
#pragma once

#include <cstddef>

#include <qev/platform.h>

namespace platform {

/// Reads BMP, PNG, JPEG, GIF (its first picture) and TIFF. False, and the image as it was, for anything else,
/// for damaged bytes and when there is not enough memory. The bytes are not kept.
bool LoadImageBytes(const void* bytes, std::size_t size, CImage& image);

} // namespace platform
