/// \file
/// Export macros of the three libraries. Everything is hidden unless it carries one of them.
#pragma once

/// \def QEV_EXPORT
/// Marks what a dynamic library offers to others, as the entries of a plug-in.
/// \def QEV_IMPORT
/// Marks what a program or library takes from another dynamic library.
#if defined(_WIN32)
#define QEV_EXPORT __declspec(dllexport)
#define QEV_IMPORT __declspec(dllimport)
#else
#define QEV_EXPORT __attribute__((visibility("default")))
#define QEV_IMPORT QEV_EXPORT
#endif

/// \def QEVMATH_API
/// Marks what QevMath exports: QEV_EXPORT while that library is built, QEV_IMPORT for everybody else. It is
/// empty where the libraries are static (QEV_STATIC, which the CMake targets and the pkg-config file define).
#if defined(QEV_STATIC)
#define QEVMATH_API
#elif defined(QevMath_EXPORTS)
#define QEVMATH_API QEV_EXPORT
#else
#define QEVMATH_API QEV_IMPORT
#endif

/// \def QEVDATA_API
/// Marks what QevData exports: QEV_EXPORT while that library is built, QEV_IMPORT for everybody else. It is
/// empty where the libraries are static (QEV_STATIC, which the CMake targets and the pkg-config file define).
#if defined(QEV_STATIC)
#define QEVDATA_API
#elif defined(QevData_EXPORTS)
#define QEVDATA_API QEV_EXPORT
#else
#define QEVDATA_API QEV_IMPORT
#endif

/// \def QEVCOMMON_API
/// Marks what QevCommon exports: QEV_EXPORT while that library is built, QEV_IMPORT for everybody else. It is
/// empty where the libraries are static (QEV_STATIC, which the CMake targets and the pkg-config file define).
#if defined(QEV_STATIC)
#define QEVCOMMON_API
#elif defined(QevCommon_EXPORTS)
#define QEVCOMMON_API QEV_EXPORT
#else
#define QEVCOMMON_API QEV_IMPORT
#endif
