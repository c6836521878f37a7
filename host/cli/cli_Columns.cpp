#include "host/cli/cli_Columns.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "host/model/hst_PartName.h"

namespace {

constexpr int kNameColumn = 40;
constexpr int kSignificantDigits = 7;  // positions are single precision
constexpr int kBetween = 2;

std::string Padded(const std::string& text, int width, bool toTheRight) {
    const std::string blanks(static_cast<std::size_t>(std::max(width - hst_DisplayWidth(text), 0)),
                             ' ');
    return toTheRight ? blanks + text : text + blanks;
}

}  // namespace

cli_NumberFormat::cli_NumberFormat(double largest) {
    const int integerDigits =
        largest > 0 ? static_cast<int>(std::floor(std::log10(largest))) + 1 : 1;
    isScientific = integerDigits > 9 || integerDigits < -4;
    decimals =
        isScientific ? kSignificantDigits - 1 : std::max(kSignificantDigits - integerDigits, 0);
}

std::string cli_NumberFormat::Text(double value) const {
    char buffer[64];
    const auto format = isScientific ? std::chars_format::scientific : std::chars_format::fixed;
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format, decimals);
    const std::string text(buffer, end.ptr);
    const bool isZero = text.find_first_of("123456789") == std::string::npos;
    return isZero && text.front() == '-' ? text.substr(1) : text;
}

void cli_Columns::Add(Cells cells) {
    widths.resize(std::max(widths.size(), cells.size()));
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const int count = hst_DisplayWidth(cells[i]);
        if (i >= names || count <= kNameColumn) widths[i] = std::max(widths[i], count);
    }
    lines.push_back(std::move(cells));
}

void cli_Columns::Print(std::ostream& stream) const {
    for (const Cells& line : lines) {
        if (line.empty()) {
            PrintRule(stream);
        } else {
            PrintLine(stream, line);
        }
    }
}

void cli_Columns::PrintRule(std::ostream& stream) const {
    int width = -kBetween;
    for (const int column : widths) width += column + kBetween;
    stream << std::string(static_cast<std::size_t>(std::max(width, 0)), '-') << '\n';
}

bool cli_Columns::FitsColumns(const Cells& cells) const {
    for (std::size_t i = 0; i < names; ++i) {
        if (hst_DisplayWidth(cells[i]) > widths[i]) return false;
    }
    return true;
}

void cli_Columns::PrintLine(std::ostream& stream, const Cells& cells) const {
    const std::string between(kBetween, ' ');
    const bool fits = FitsColumns(cells);
    for (std::size_t i = 0; i < names && !fits; ++i) {
        stream << (i > 0 ? between : "") << cells[i] << (i + 1 == names ? "\n" : "");
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const bool isName = i < names;
        stream << (i > 0 ? between : "")
               << Padded(isName && !fits ? "" : cells[i], widths[i], !isName);
    }
    stream << '\n';
}
