// Parts of paths through the shell library, whose functions work in a buffer of the system's longest path.

#include "../path.h"

#include <windows.h>
// after the system's types
#include <shlwapi.h>

#include "../dynamic_library.h"

namespace qev::platform {
namespace {

// What a function of the shell library makes of a path in its buffer.
template <class Edit>
std::string Edited(const std::string& path, const Edit& edit) {
    if (path.size() > kLongestPath) return {};
    char buffer[kLongestPath + 1];
    path.copy(buffer, path.size());
    buffer[path.size()] = '\0';
    edit(buffer);
    return buffer;
}

} // namespace

std::string StripPath(const std::string& path) {
    return Edited(path, PathStripPathA);
}

std::string RemoveExtension(const std::string& path) {
    return Edited(path, PathRemoveExtensionA);
}

std::string RemoveFileSpec(const std::string& path) {
    return Edited(path, [](char* buffer) {
        if (!PathRemoveFileSpecA(buffer)) *buffer = '\0';
    });
}

bool IsRelativePath(const std::string& path) {
    return path.size() > kLongestPath || PathIsRelativeA(path.c_str());
}

std::string AppendPath(const std::string& folder, const std::string& relative) {
    return Edited(folder, [&](char* buffer) {
        if (!PathAppendA(buffer, relative.c_str())) *buffer = '\0';
    });
}

} // namespace qev::platform
