#include "foundation/coreutils/aio_FormatDouble.h"

#include <algorithm>
#include <charconv>
#include <cmath>

cow_String aio_FormatDouble(double value, int precision) {
    if (std::isnan(value)) return "nan";
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                   std::chars_format::general, std::clamp(precision, 1, 17));
    return std::string_view(buffer, end.ptr);
}
