/// \file
/// Pictures from files.
#pragma once

#include <qev/export.h>
#include <qev/platform.h>

namespace qev {

/// Loads a picture of at most 10,485,760 bytes, in one of five formats that its first bytes tell: BMP, PNG,
/// JPEG, GIF (its first frame) and TIFF. The file is read in one piece and is not kept open; what lies behind
/// the end of the picture is not looked at. False, and the image as it was, for a null or empty path, for
/// what is no ordinary file (a folder, a pipe or a device is not even opened), for a file that cannot be
/// read, is empty, too large or of another format, for a picture that breaks off or has more than a hundred
/// million pixels, and when memory is refused. Nothing is thrown.
QEVCOMMON_API bool LoadImageFile(CImage& image, const char* path);

} // namespace qev
