/// \file
/// What writing a file beside its place and moving it there needs of the system.
#pragma once

#include <string>

namespace qev::platform {

/// Whether a path names something that is there and is no ordinary file: a folder, a pipe or a device. What
/// is written to such a thing cannot be moved over it.
bool IsSpecial(const char* path);

/// A path in the folder of the given one that no other running process is given, for a file that is to be
/// moved to the given one.
std::string PathBeside(const char* path);

/// Gives a file another path in its folder, in one step: whoever opens the new path gets the file that was
/// there before, or this one whole. False when the system refuses; both files are then as they were.
bool MoveOver(const char* from, const char* to);

} // namespace qev::platform
