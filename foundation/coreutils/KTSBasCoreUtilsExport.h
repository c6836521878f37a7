#pragma once

/// Marks what the shared library KTSBasCoreUtils exports: defined while that library is built,
/// imported by everyone else on Windows, default visibility elsewhere.
#if defined(_WIN32)
#if defined(KTSBASCOREUTILS_BUILDING)
#define KTSBASCOREUTILS_API __declspec(dllexport)
#else
#define KTSBASCOREUTILS_API __declspec(dllimport)
#endif
#else
#define KTSBASCOREUTILS_API __attribute__((visibility("default")))
#endif
