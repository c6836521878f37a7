#include "host/cli/cli_PartTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "host/model/hst_PartName.h"

namespace {

constexpr int kNameColumn = 40;
constexpr int kSignificantDigits = 7;  // positions are single precision

/// How all lengths of one table are written.
class NumberFormat {
  public:
    explicit NumberFormat(double largest) {
        const int integerDigits =
            largest > 0 ? static_cast<int>(std::floor(std::log10(largest))) + 1 : 1;
        isScientific = integerDigits > 9 || integerDigits < -4;
        decimals =
            isScientific ? kSignificantDigits - 1 : std::max(kSignificantDigits - integerDigits, 0);
    }

    [[nodiscard]] std::string Text(double value) const {
        char buffer[64];
        const auto format = isScientific ? std::chars_format::scientific : std::chars_format::fixed;
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format, decimals);
        const std::string text(buffer, end.ptr);
        const bool isZero = text.find_first_of("123456789") == std::string::npos;
        return isZero && text.front() == '-' ? text.substr(1) : text;
    }

  private:
    bool isScientific;
    int decimals;
};

std::string Padded(const std::string& text, int width, bool toTheRight) {
    const std::string blanks(static_cast<std::size_t>(std::max(width - hst_DisplayWidth(text), 0)),
                             ' ');
    return toTheRight ? blanks + text : text + blanks;
}

using Cells = std::vector<std::string>;

/// Writes lines of cells in columns of equal width: the first to the left, the others to the right.
class Columns {
  public:
    void Add(Cells cells) {
        widths.resize(std::max(widths.size(), cells.size()));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const int count = hst_DisplayWidth(cells[i]);
            if (i > 0 || count <= kNameColumn) widths[i] = std::max(widths[i], count);
        }
        lines.push_back(std::move(cells));
    }

    void Print(std::ostream& stream) const {
        for (std::size_t line = 0; line < lines.size(); ++line) {
            const bool isTotal = line + 1 == lines.size();
            if (line == 1 || isTotal) PrintRule(stream);
            PrintLine(stream, lines[line]);
        }
    }

  private:
    void PrintRule(std::ostream& stream) const {
        std::size_t width = 0;
        for (const int column : widths) width += static_cast<std::size_t>(column) + 2;
        stream << std::string(width - 2, '-') << '\n';
    }

    void PrintLine(std::ostream& stream, const Cells& cells) const {
        const bool fits = hst_DisplayWidth(cells[0]) <= widths[0];
        if (!fits) stream << cells[0] << '\n';
        stream << Padded(fits ? cells[0] : "", widths[0], false);
        for (std::size_t i = 1; i < cells.size(); ++i) {
            stream << "  " << Padded(cells[i], widths[i], true);
        }
        stream << '\n';
    }

    std::vector<int> widths;
    std::vector<Cells> lines;
};

std::string JsonText(const std::string& text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string JsonNumber(double value) {
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17);
    return {buffer, end.ptr};
}

std::string JsonPoint(const gsl_Point& point) {
    return '[' + JsonNumber(point.GetX()) + ", " + JsonNumber(point.GetY()) + ", " +
           JsonNumber(point.GetZ()) + ']';
}

std::string JsonMatrix(const gsl_Matrix& matrix) {
    double entries[4][4];
    matrix.AsArray(entries);
    std::string text;
    for (const auto& row : entries) {
        text += text.empty() ? "[" : ", ";
        text += '[' + JsonNumber(row[0]) + ", " + JsonNumber(row[1]) + ", " + JsonNumber(row[2]) +
                ", " + JsonNumber(row[3]) + ']';
    }
    return text + ']';
}

std::string JsonMeasures(long long triangles, const gsl_BBox& box) {
    return "\"triangles\": " + std::to_string(triangles) + ", \"low\": " + JsonPoint(box.Low()) +
           ", \"high\": " + JsonPoint(box.High()) + ", \"diagonal\": " + JsonNumber(box.Size()) +
           ", \"centre\": " + JsonPoint(box.Center());
}

}  // namespace

cli_PartTable::cli_PartTable(const std::vector<hst_Part>& parts) {
    for (const hst_Part& part : parts) {
        rows.push_back({part.Name(), part.TriangleCount(), part.PlacedBox(), part.Placement()});
        total.triangles += part.TriangleCount();
        total.box.Add(rows.back().box);
    }
    total.name = "total: " + std::to_string(rows.size()) + (rows.size() == 1 ? " part" : " parts");
}

double cli_PartTable::LargestNumber() const {
    double largest = total.box.Size();
    for (int axis = 0; axis < 3; ++axis) {
        largest =
            std::max({largest, std::abs(total.box.Low()[axis]), std::abs(total.box.High()[axis])});
    }
    return largest;
}

void cli_PartTable::Print(std::ostream& stream) const {
    const NumberFormat format(LargestNumber());
    const auto cells = [&format](const Row& row) {
        Cells line = {row.name, std::to_string(row.triangles)};
        const gsl_Point centre = row.box.Center();
        for (int axis = 0; axis < 3; ++axis) line.push_back(format.Text(row.box.Low()[axis]));
        for (int axis = 0; axis < 3; ++axis) line.push_back(format.Text(row.box.High()[axis]));
        line.push_back(format.Text(row.box.Size()));
        for (int axis = 0; axis < 3; ++axis) line.push_back(format.Text(centre[axis]));
        return line;
    };
    Columns columns;
    columns.Add({"part", "triangles", "low x", "low y", "low z", "high x", "high y", "high z",
                 "diagonal", "centre x", "centre y", "centre z"});
    for (const Row& row : rows) columns.Add(cells(row));
    columns.Add(cells(total));
    columns.Print(stream);
}

void cli_PartTable::PrintJson(std::ostream& stream) const {
    stream << "{\n  \"parts\": [";
    const char* separator = "\n";
    for (const Row& row : rows) {
        stream << separator << "    {\"name\": " << JsonText(row.name) << ", "
               << JsonMeasures(row.triangles, row.box)
               << ", \"placement\": " << JsonMatrix(row.placement) << '}';
        separator = ",\n";
    }
    stream << "\n  ],\n  \"total\": {\"parts\": " << rows.size() << ", "
           << JsonMeasures(total.triangles, total.box) << "}\n}\n";
}
