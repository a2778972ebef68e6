/// \file
/// Pictures from the bytes of an image file.
#pragma once

#include <cstddef>

#include <qev/platform.h>

namespace qev::platform {

/// The most pixels that a picture may have. A small file may declare any size; these take 400 MB.
inline constexpr long long kMostPixels = 100'000'000;

/// Decodes the first picture in the bytes of a file of a format: "bmp", "png", "jpeg", "gif" or "tiff". The
/// bytes begin as such files do. False, and the image as it was, for what the system's decoder refuses, for
/// more than kMostPixels and when there is not enough memory. The bytes are not kept.
bool LoadImageBytes(const void* bytes, std::size_t size, const char* format, CImage& image);

} // namespace qev::platform
