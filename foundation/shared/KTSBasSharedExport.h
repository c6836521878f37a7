#pragma once

/// Marks what the shared library KTSBasShared exports: defined while that library is built,
/// imported by everyone else on Windows, default visibility elsewhere.
#if defined(_WIN32)
#if defined(KTSBASSHARED_BUILDING)
#define KTSBASSHARED_API __declspec(dllexport)
#else
#define KTSBASSHARED_API __declspec(dllimport)
#endif
#else
#define KTSBASSHARED_API __attribute__((visibility("default")))
#endif
