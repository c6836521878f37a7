#include "host/clearance/clr_SavedCheck.h"

#include <array>
#include <cmath>

namespace {

constexpr int kColumns = 10;
using Row = std::array<double, kColumns>;

Row RowOf(const clr_Finding& pair) {
    const clr_PairResult& r = pair.result;
    return {static_cast<double>(r.kind),
            static_cast<double>(pair.first),
            static_cast<double>(pair.second),
            r.length,
            r.onFirst.x,
            r.onFirst.y,
            r.onFirst.z,
            r.onSecond.x,
            r.onSecond.y,
            r.onSecond.z};
}

/// Whether the number is a whole one from 0 to below `count`.
bool IsIndex(double number, std::size_t count) {
    return number >= 0 && number < static_cast<double>(count) && number == std::floor(number);
}

bool IsSound(const Row& row, std::size_t partCount) {
    for (const double value : row) {
        if (!std::isfinite(value)) return false;
    }
    return IsIndex(row[0], static_cast<std::size_t>(clr_Kind::Clear)) &&
           IsIndex(row[1], partCount) && IsIndex(row[2], partCount) && row[1] != row[2] &&
           row[3] >= 0;
}

clr_Finding FindingOf(const Row& row) {
    clr_Finding pair{static_cast<std::size_t>(row[1]), static_cast<std::size_t>(row[2]), {}};
    pair.result.kind = static_cast<clr_Kind>(static_cast<int>(row[0]));
    pair.result.length = row[3];
    pair.result.onFirst = {row[4], row[5], row[6]};
    pair.result.onSecond = {row[7], row[8], row[9]};
    return pair;
}

}  // namespace

mdl_PropertyTable clr_ResultTable(const clr_Report& report) {
    const int rows = static_cast<int>(report.pairs.size());
    cow_2DArray<double> values(rows, kColumns);
    for (int i = 0; i < rows; ++i) {
        const Row row = RowOf(report.pairs[static_cast<std::size_t>(i)]);
        for (int j = 0; j < kColumns; ++j) values.Get(i, j) = row[static_cast<std::size_t>(j)];
    }
    return mdl_PropertyTable(values);
}

std::optional<std::vector<clr_Finding>> clr_ReadResultTable(const mdl_PropertyTable& table,
                                                            std::size_t partCount) {
    if (table.Rows() > 0 && table.Cols() != kColumns) return std::nullopt;
    std::vector<clr_Finding> pairs;
    for (int i = 0; i < table.Rows(); ++i) {
        Row row;
        for (int j = 0; j < kColumns; ++j) {
            row[static_cast<std::size_t>(j)] = table.ConstGetTable().ConstGet(i, j);
        }
        if (!IsSound(row, partCount)) return std::nullopt;
        pairs.push_back(FindingOf(row));
    }
    return pairs;
}
