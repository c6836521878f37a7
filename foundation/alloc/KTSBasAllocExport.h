#pragma once

/// Marks what the shared library KTSBasAlloc exports: defined while that library is built, imported
/// by everyone else on Windows, default visibility elsewhere.
#if defined(_WIN32)
#if defined(KTSBASALLOC_BUILDING)
#define KTSBASALLOC_API __declspec(dllexport)
#else
#define KTSBASALLOC_API __declspec(dllimport)
#endif
#else
#define KTSBASALLOC_API __attribute__((visibility("default")))
#endif
