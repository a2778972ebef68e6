/// \file
/// Dynamic libraries and where they lie.
#pragma once

#include <string>

#include <qev/platform.h>

namespace qev::platform {

/// The longest path, in bytes, that the system's path functions take; longer ones are refused on all systems.
inline constexpr int kLongestPath = 259;

/// Loads a library, or counts one more use of it; null on failure, and then why, when given, gets the
/// system's reason. The caller frees it.
HMODULE LoadDynamicLibrary(const char* path, std::string* why = nullptr);
/// Gives one use of a library back; the last one unloads it. Null is allowed.
void FreeDynamicLibrary(HMODULE module);
/// A library's exported function or variable; null when there is none.
void* FindSymbol(HMODULE module, const char* name);
/// The path of the library or program that holds a piece of code; empty when none does or the path is too
/// long.
std::string ModulePathOf(const void* code);

} // namespace qev::platform
