/// \file
/// Parts of paths, by the rules of the system. A path longer than kLongestPath gives the empty text, and
/// counts as relative.
#pragma once

#include <string>

namespace qev::platform {

/// The path without the folders before its last part.
std::string StripPath(const std::string& path);
/// The path without the extension of its last part.
std::string RemoveExtension(const std::string& path);
/// The folder of a path; the empty text when it names none.
std::string RemoveFileSpec(const std::string& path);
/// Whether a path needs a folder to start from.
bool IsRelativePath(const std::string& path);
/// A relative path behind a folder, with one separator between; the empty text when the result is too long.
std::string AppendPath(const std::string& folder, const std::string& relative);

} // namespace qev::platform
