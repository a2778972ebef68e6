/// \file
/// Export macros of the three libraries. Everything is hidden unless it carries one of them.
#pragma once

#if defined(_WIN32)
#define QEV_EXPORT __declspec(dllexport)
#define QEV_IMPORT __declspec(dllimport)
#else
#define QEV_EXPORT __attribute__((visibility("default")))
#define QEV_IMPORT QEV_EXPORT
#endif

#if defined(QevMath_EXPORTS)
#define QEVMATH_API QEV_EXPORT
#else
#define QEVMATH_API QEV_IMPORT
#endif

#if defined(QevData_EXPORTS)
#define QEVDATA_API QEV_EXPORT
#else
#define QEVDATA_API QEV_IMPORT
#endif

#if defined(QevCommon_EXPORTS)
#define QEVCOMMON_API QEV_EXPORT
#else
#define QEVCOMMON_API QEV_IMPORT
#endif
