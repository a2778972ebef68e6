/// \file
/// The version of the library, at compile time and at run time. The build reads it from here.
#pragma once

#include <qev/export.h>

/// First number of the version of these headers: 0 until the interface is fixed.
#define QEV_VERSION_MAJOR 0
/// Second number of the version of these headers. Before 1.0, libraries with another one are not
/// interchangeable.
#define QEV_VERSION_MINOR 2
/// Third number of the version of these headers: corrections that need no new compilation of the callers.
#define QEV_VERSION_PATCH 0
/// Version of these headers as a text, "major.minor.patch".
#define QEV_VERSION_STRING "0.2.0"

namespace qev {

/// Version of the library that runs, as "major.minor.patch"; a host compares it with QEV_VERSION_STRING, the
/// version of the headers that it was compiled with. The text is the library's and ends with it. Never null.
QEVMATH_API const char* GetVersion() noexcept;

} // namespace qev
