#pragma once

#include <string>

#include "gsl/gsl_Point.h"

/// `text` as JSON, quoted; bytes that are no UTF-8 become U+FFFD.
[[nodiscard]] std::string cli_JsonText(const std::string& text);
/// A text of 17 significant digits that reads back as the same double.
[[nodiscard]] std::string cli_JsonNumber(double value);
/// [x, y, z].
[[nodiscard]] std::string cli_JsonPoint(const gsl_Point& point);
