#include "host/cli/cli_PartTable.h"

#include <algorithm>
#include <cmath>

#include "host/cli/cli_Columns.h"
#include "host/cli/cli_Json.h"

namespace {

std::string JsonMatrix(const gsl_Matrix& matrix) {
    double entries[4][4];
    matrix.AsArray(entries);
    std::string text;
    for (const auto& row : entries) {
        text += text.empty() ? "[" : ", ";
        text += '[' + cli_JsonNumber(row[0]) + ", " + cli_JsonNumber(row[1]) + ", " +
                cli_JsonNumber(row[2]) + ", " + cli_JsonNumber(row[3]) + ']';
    }
    return text + ']';
}

std::string JsonMeasures(long long triangles, const gsl_BBox& box) {
    return "\"triangles\": " + std::to_string(triangles) +
           ", \"low\": " + cli_JsonPoint(box.Low()) + ", \"high\": " + cli_JsonPoint(box.High()) +
           ", \"diagonal\": " + cli_JsonNumber(box.Size()) +
           ", \"centre\": " + cli_JsonPoint(box.Center());
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
    const cli_NumberFormat format(LargestNumber());
    const auto cells = [&format](const Row& row) {
        cli_Columns::Cells line = {row.name, std::to_string(row.triangles)};
        const gsl_Point centre = row.box.Center();
        for (int axis = 0; axis < 3; ++axis) line.push_back(format.Text(row.box.Low()[axis]));
        for (int axis = 0; axis < 3; ++axis) line.push_back(format.Text(row.box.High()[axis]));
        line.push_back(format.Text(row.box.Size()));
        for (int axis = 0; axis < 3; ++axis) line.push_back(format.Text(centre[axis]));
        return line;
    };
    cli_Columns columns(1);
    columns.Add({"part", "triangles", "low x", "low y", "low z", "high x", "high y", "high z",
                 "diagonal", "centre x", "centre y", "centre z"});
    columns.AddRule();
    for (const Row& row : rows) columns.Add(cells(row));
    columns.AddRule();
    columns.Add(cells(total));
    columns.Print(stream);
}

void cli_PartTable::PrintJson(std::ostream& stream) const {
    stream << "{\n  \"parts\": [";
    const char* separator = "\n";
    for (const Row& row : rows) {
        stream << separator << "    {\"name\": " << cli_JsonText(row.name) << ", "
               << JsonMeasures(row.triangles, row.box)
               << ", \"placement\": " << JsonMatrix(row.placement) << '}';
        separator = ",\n";
    }
    stream << "\n  ],\n  \"total\": {\"parts\": " << rows.size() << ", "
           << JsonMeasures(total.triangles, total.box) << "}\n}\n";
}
