#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_2DArray.h"
#include "foundation/coreutils/typ_ArchCompTable.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A table of doubles: a row for each data point, a column for each quantity, such as stress and
/// plastic strain. Nothing is checked until `AssertValid` is called.
///
/// A copy shares the values and costs one increment. Tables that share values belong to one thread
/// at a time.
class KTSOVUGEOM_API mdl_PropertyTable {
  public:
    /// No rows.
    mdl_PropertyTable() = default;
    /// Zeros in `rows` x `columns` places; a negative number is 0.
    mdl_PropertyTable(int rows, int columns);
    /// Shares the values of `values`.
    explicit mdl_PropertyTable(const cow_2DArray<double>& values) : table(values) {}
    /// Reads the record of a table. Values that do not fill the stored rows and columns give a
    /// table without rows, and a line on standard error.
    explicit mdl_PropertyTable(cls_ReadVisitor& visitor);
    /// A copy that shares the values; new, owned by the caller.
    [[nodiscard]] mdl_PropertyTable* Copy() const;

    [[nodiscard]] int Rows() const noexcept { return table.Rows(); }
    [[nodiscard]] int Cols() const noexcept { return table.Cols(); }
    /// The values; a copy shares them.
    [[nodiscard]] const cow_2DArray<double>& ConstGetTable() const noexcept { return table; }
    void SetTable(const cow_2DArray<double>& values) { table = values; }
    /// Whether row 0 may be empty; false at first.
    [[nodiscard]] bool AllowEmptyFirstRow() const noexcept { return allowEmptyFirstRow; }
    void SetAllowEmptyFirstRow(bool allow) noexcept { allowEmptyFirstRow = allow; }

    /// Raises `nex_PrimException` when a row is empty: when every value in it equals 0 (a NaN does
    /// not). Row 0 may be empty when that is allowed. A table without rows or columns is valid.
    void AssertValid() const;

    /// Sorts the rows by their last `keyColumns` columns, the last column first, then the one
    /// before it, ascending. 0 and less do nothing; a number beyond the columns means all of them.
    /// Rows that are equal in all of these keep their order.
    ///
    /// The order is exactly that of an insertion sort from row 1 on, in which a row moves up past
    /// the rows that order after it and stops at the first that does not. Two rows compare by the
    /// first column, from the last one on, in which they differ; a NaN differs from everything and
    /// orders neither way. So where a NaN makes the comparison no order at all, the result still is
    /// that of the insertion sort: among the rows that agree in the columns compared before, one
    /// with a NaN stays where it is and lets no other pass.
    ///
    /// n rows take O(k n log n) steps for k key columns, with and without NaNs. Holders of the
    /// values as they were keep them so, and rows already in order keep their storage. When memory
    /// runs out the table is unchanged.
    ///
    /// Kept: row 0 is sorted with the others although it alone may be empty, where one would have
    /// expected it to stay in front: a valid table with an empty row 0 can be invalid once sorted.
    /// Callers sort first and then look at what came to the top.
    void Sort(int keyColumns);

    /// True when rows, columns, flag and values are equal; a NaN makes a table unequal to itself.
    [[nodiscard]] bool operator==(const mdl_PropertyTable& other) const noexcept;

    /// 10:14.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(10, 14); }
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept { return TypeId(); }
    /// Reads a table from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Destroys what `Ctor` built.
    static void CowDtor(void* propertyTable);
    /// Writes "table" and "allowEmptyFirstRow".
    void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] const double* RowAt(int row) const noexcept { return &table.ConstGet(row, 0); }

    cow_2DArray<double> table;
    bool allowEmptyFirstRow = false;
};
