/// \file
/// Export macros of the three libraries. Everything is hidden unless it carries one of them.
#pragma once

/// \def QEV_EXPORT
/// What a library offers to others.
/// \def QEV_IMPORT
/// What it takes from another.
#if defined(_WIN32)
#define QEV_EXPORT __declspec(dllexport)
#define QEV_IMPORT __declspec(dllimport)
#else
#define QEV_EXPORT __attribute__((visibility("default")))
#define QEV_IMPORT QEV_EXPORT
#endif

/// \def QEVMATH_API
/// Marks what the math library exports: QEV_EXPORT while that is built, QEV_IMPORT for everybody else.
#if defined(QevMath_EXPORTS)
#define QEVMATH_API QEV_EXPORT
#else
#define QEVMATH_API QEV_IMPORT
#endif

/// \def QEVDATA_API
/// The same for the data library.
#if defined(QevData_EXPORTS)
#define QEVDATA_API QEV_EXPORT
#else
#define QEVDATA_API QEV_IMPORT
#endif

/// \def QEVCOMMON_API
/// The same for QevCommon.
#if defined(QevCommon_EXPORTS)
#define QEVCOMMON_API QEV_EXPORT
#else
#define QEVCOMMON_API QEV_IMPORT
#endif
