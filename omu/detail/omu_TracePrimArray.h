#pragma once

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

/// Prints a line of the arrays' trace on standard error while `ZRX_DBG_PRIMARRAY` is set.
[[gnu::format(printf, 1, 2)]] inline void omu_TracePrimArray(const char* format, ...) noexcept {
    if (!std::getenv("ZRX_DBG_PRIMARRAY")) return;
    std::va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}
