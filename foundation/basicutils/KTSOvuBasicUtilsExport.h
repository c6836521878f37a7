#pragma once

/// Marks what the shared library KTSOvuBasicUtils exports: defined while that library is built,
/// imported by everyone else on Windows, default visibility elsewhere.
#if defined(_WIN32)
#if defined(KTSOVUBASICUTILS_BUILDING)
#define KTSOVUBASICUTILS_API __declspec(dllexport)
#else
#define KTSOVUBASICUTILS_API __declspec(dllimport)
#endif
#else
#define KTSOVUBASICUTILS_API __attribute__((visibility("default")))
#endif
