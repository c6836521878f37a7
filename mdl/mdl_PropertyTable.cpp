#include "mdl/mdl_PropertyTable.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <vector>

#include "cow/cow_2DArrayArchive.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_Visitors.h"
#include "foundation/shared/nex_Exception.h"

namespace {

constexpr cls_FieldHandle kTable("table");
constexpr cls_FieldHandle kAllowEmptyFirstRow("allowEmptyFirstRow");

/// Finds the order that an insertion sort gives the rows of a table, column by column.
///
/// While the sort inserts one row after the other, the rows so far stand in ascending order of the
/// last column between those with a NaN there: nothing passes a NaN. A new row passes all that are
/// greater in that column, comes to those that are equal, and goes on among them by the columns
/// before alone; at one that is less it stops in any case. So each run of rows that are equal in
/// the last column is sorted by itself, by the same rule and in the order in which its rows came.
class RowSorter {
  public:
    /// For a table of `columnCount` columns at `first`, row by row.
    RowSorter(const double* first, int rowCount, int columnCount)
        : values(first), columns(static_cast<std::size_t>(columnCount)) {
        order.resize(static_cast<std::size_t>(rowCount));
        std::iota(order.begin(), order.end(), std::size_t{0});
    }

    /// The rows in the order by the columns from the last one down to `lowestColumn`.
    [[nodiscard]] const std::vector<std::size_t>& Sorted(std::size_t lowestColumn) {
        keys.resize(order.size());
        pending.push_back({0, order.size(), columns - 1});
        while (!pending.empty()) {
            const Run run = pending.back();
            pending.pop_back();
            SortRun(run, lowestColumn);
        }
        return order;
    }

  private:
    struct Key {
        double value;
        std::size_t row;
    };
    /// Places of the order whose rows are equal in all columns behind `column`.
    struct Run {
        std::size_t begin;
        std::size_t end;
        std::size_t column;
    };

    void SortRun(const Run& run, std::size_t lowestColumn) {
        for (std::size_t i = run.begin; i < run.end; ++i) {
            keys[i] = {values[order[i] * columns + run.column], order[i]};
        }
        for (std::size_t i = run.begin; i < run.end; ++i) {
            if (std::isnan(keys[i].value)) continue;
            const std::size_t begin = i;
            while (i < run.end && !std::isnan(keys[i].value)) ++i;
            SortNumbers(begin, i);
            if (run.column > lowestColumn) AddEqual(begin, i, run.column - 1);
        }
    }

    void SortNumbers(std::size_t begin, std::size_t end) {
        const auto at = [this](std::size_t i) {
            return keys.begin() + static_cast<std::ptrdiff_t>(i);
        };
        std::ranges::stable_sort(at(begin), at(end), {}, &Key::value);
        for (std::size_t i = begin; i < end; ++i) order[i] = keys[i].row;
    }

    void AddEqual(std::size_t begin, std::size_t end, std::size_t nextColumn) {
        for (std::size_t i = begin; i < end;) {
            const std::size_t first = i++;
            while (i < end && keys[i].value == keys[first].value) ++i;
            if (i - first > 1) pending.push_back({first, i, nextColumn});
        }
    }

    const double* values;
    std::size_t columns;
    std::vector<std::size_t> order;
    std::vector<Key> keys;
    std::vector<Run> pending;
};

}  // namespace

mdl_PropertyTable::mdl_PropertyTable(int rows, int columns)
    : table(std::max(rows, 0), std::max(columns, 0)) {}

mdl_PropertyTable::mdl_PropertyTable(cls_ReadVisitor& visitor)
    : table(cow_Read2DArray(visitor, kTable)) {
    visitor.Read(kAllowEmptyFirstRow, allowEmptyFirstRow);
}

mdl_PropertyTable* mdl_PropertyTable::Copy() const { return new mdl_PropertyTable(*this); }

void mdl_PropertyTable::AssertValid() const {
    if (Cols() == 0) return;
    for (int r = allowEmptyFirstRow ? 1 : 0; r < Rows(); ++r) {
        const double* const row = RowAt(r);
        if (std::any_of(row, row + Cols(), [](double value) { return value != 0; })) continue;
        KTSBasThrow(
            nex_PrimException("Tabular data for at least one option or suboption\n"
                              "has either blank or zero valued row(s)."));
    }
}

void mdl_PropertyTable::Sort(int keyColumns) {
    if (keyColumns <= 0 || Rows() < 2 || Cols() == 0) return;
    const int lowestColumn = Cols() - std::min(keyColumns, Cols());
    RowSorter sorter(RowAt(0), Rows(), Cols());
    const std::vector<std::size_t>& order = sorter.Sorted(static_cast<std::size_t>(lowestColumn));
    if (std::ranges::is_sorted(order)) return;
    cow_2DArray<double> sorted(Rows(), Cols());
    double* out = &sorted.Get(0, 0);
    for (const std::size_t row : order) {
        out = std::copy_n(RowAt(static_cast<int>(row)), Cols(), out);
    }
    table.Swap(sorted);
}

bool mdl_PropertyTable::operator==(const mdl_PropertyTable& other) const noexcept {
    if (Rows() != other.Rows() || Cols() != other.Cols()) return false;
    if (allowEmptyFirstRow != other.allowEmptyFirstRow) return false;
    if (Cols() == 0) return true;
    for (int r = 0; r < Rows(); ++r) {
        if (!std::equal(RowAt(r), RowAt(r) + Cols(), other.RowAt(r))) return false;
    }
    return true;
}

void* mdl_PropertyTable::Ctor(cls_ReadVisitor& visitor) { return new mdl_PropertyTable(visitor); }

void mdl_PropertyTable::CowDtor(void* propertyTable) {
    delete static_cast<mdl_PropertyTable*>(propertyTable);
}

void mdl_PropertyTable::DBWrite(cls_WriteVisitor& visitor) const {
    cow_Write2DArray(visitor, kTable, table);
    visitor.Write(kAllowEmptyFirstRow, allowEmptyFirstRow);
}

void mdl_PropertyTable::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("mdl_PropertyTable", TypeId(), &Ctor);
    metadata.SetCowDtor(&CowDtor)
        .AddAttribute(kTable.Name(), cls_KIND_EMBEDDED_OBJ, cls_2D_ARRAY_CLASS)
        .AddAttribute(kAllowEmptyFirstRow.Name(), cls_KIND_BOOL);
    registrar.AddClass(metadata);
}
