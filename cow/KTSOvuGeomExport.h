#pragma once

/// Marks what the shared library KTSOvuGeom exports: defined while that library is built, imported
/// by everyone else on Windows, default visibility elsewhere.
#if defined(_WIN32)
#if defined(KTSOVUGEOM_BUILDING)
#define KTSOVUGEOM_API __declspec(dllexport)
#else
#define KTSOVUGEOM_API __declspec(dllimport)
#endif
#else
#define KTSOVUGEOM_API __attribute__((visibility("default")))
#endif
