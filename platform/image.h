/// \file
/// Pictures from the bytes of an image file.
#pragma once

#include <cstddef>

#include <qev/platform.h>

namespace qev::platform {

/// The most pixels that a picture may have. A small file may declare any size; these take 400 MB.
inline constexpr long long kMostPixels = 100'000'000;

/// Reads BMP, PNG, JPEG, GIF (its first picture) and TIFF. False, and the image as it was, for anything else,
/// for damaged bytes, too many pixels and when there is not enough memory. The bytes are not kept.
bool LoadImageBytes(const void* bytes, std::size_t size, CImage& image);

} // namespace qev::platform
