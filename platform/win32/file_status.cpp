// The attributes by path, in the system's code page as fopen takes it. Names of devices, such as NUL, and
// pipes either have no attributes or a size of 0.

#include "../file_status.h"

#include <windows.h>

namespace qev::platform {

long long FileSize(const char* path) {
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
    WIN32_FILE_ATTRIBUTE_DATA status{};
    if (!GetFileAttributesExA(path, GetFileExInfoStandard, &status)) return -1;
    if (status.dwFileAttributes & kNoFile) return -1;
    return static_cast<long long>(status.nFileSizeHigh) << 32 | status.nFileSizeLow;
}

} // namespace qev::platform
