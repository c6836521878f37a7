#include "host/cli/cli_Json.h"

#include <charconv>
#include <nlohmann/json.hpp>

std::string cli_JsonText(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string cli_JsonNumber(double value) {
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17);
    return {buffer, end.ptr};
}

std::string cli_JsonPoint(const gsl_Point& point) {
    return '[' + cli_JsonNumber(point.GetX()) + ", " + cli_JsonNumber(point.GetY()) + ", " +
           cli_JsonNumber(point.GetZ()) + ']';
}
