/// \file
/// Pictures from files.
#pragma once

#include <qev/export.h>
#include <qev/platform.h>

namespace qev {

/// Loads a picture (BMP, PNG, JPEG, GIF, TIFF) of at most 10,485,760 bytes. The file is read in one piece and
/// is not kept open. False, and the image as it was, for a null or empty path, a file that cannot be read, is
/// empty or too large, and for what is no whole picture of at most a hundred million pixels.
QEVCOMMON_API bool LoadImageFile(CImage& image, const char* path);

} // namespace qev
