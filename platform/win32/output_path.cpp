// Names of devices, such as NUL, have no attributes; their full path tells them.

#include "../output_path.h"

#include <array>

#include <windows.h>

namespace qev::platform {

bool IsSpecial(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    const bool isThere = attributes != INVALID_FILE_ATTRIBUTES;
    if (isThere && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE))) return true;
    std::array<char, MAX_PATH> full{};
    GetFullPathNameA(path, MAX_PATH, full.data(), nullptr);
    return std::string(full.data()).starts_with("\\\\.\\");
}

std::string PathBeside(const char* path) {
    return std::string(path) + "." + std::to_string(GetCurrentProcessId()) + ".part";
}

bool MoveOver(const char* from, const char* to) {
    return MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING) != 0;
}

} // namespace qev::platform
