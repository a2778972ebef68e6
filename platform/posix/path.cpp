// Parts of paths by their slashes and dots alone; no file is asked for. The functions answer what those of
// the other system answer for its own paths, up to the limit on the length, so that a plug-in is named and
// refused alike.

#include "../path.h"

#include "../dynamic_library.h"

namespace qev::platform {
namespace {

std::string UnlessTooLong(const std::string& path) {
    return path.size() <= kLongestPath ? path : std::string();
}

// Where the last part starts.
std::size_t LastPart(const std::string& path) {
    return path.rfind('/') + 1; // 0 when there is no slash
}

} // namespace

std::string StripPath(const std::string& path) {
    return UnlessTooLong(path).substr(LastPart(UnlessTooLong(path)));
}

std::string RemoveExtension(const std::string& path) {
    const std::string whole = UnlessTooLong(path);
    const std::size_t dot =
        whole.find('.', LastPart(whole)) == std::string::npos ? whole.size() : whole.rfind('.');
    return whole.substr(0, dot);
}

std::string RemoveFileSpec(const std::string& path) {
    const std::string whole = UnlessTooLong(path);
    const std::size_t part = LastPart(whole);
    return whole.substr(0, part > 1 ? part - 1 : part); // the root keeps its slash
}

bool IsRelativePath(const std::string& path) {
    return !UnlessTooLong(path).starts_with('/');
}

std::string AppendPath(const std::string& folder, const std::string& relative) {
    const std::size_t first = relative.find_first_not_of('/');
    const std::string part = first == std::string::npos ? std::string() : relative.substr(first);
    const bool needsSlash = !folder.empty() && !folder.ends_with('/') && !part.empty();
    return UnlessTooLong(folder + (needsSlash ? "/" : "") + part);
}

} // namespace qev::platform
