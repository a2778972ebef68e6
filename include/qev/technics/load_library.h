/// \file
/// Loading libraries that stand beside this one.
#pragma once

#include <qev/export.h>
#include <qev/platform.h>

namespace qev {

/// Loads a library by the system's search and, when that fails and the name is relative, from this library's
/// own folder. Null when neither has it, and for null and an empty name. The caller frees
/// the library. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API HINSTANCE _LoadLibrary(const char* name);

} // namespace qev
