#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_COW.h"
#include "cow/cow_List.h"
#include "foundation/coreutils/omi_Allocator.h"
#include "foundation/coreutils/typ_ArchCompTable.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// An array of rows of different lengths, in two flat arrays: the offset at which each row starts,
/// and all values row after row. A row ends where the next one starts, the last one at the end of
/// the values.
///
/// The offsets are taken as they are, from callers and from archives, and read with care: a start
/// is brought into 0 to the number of values n, an end into the start to n. So offsets that are
/// negative, too large or falling give short and empty rows, never one outside the values.
///
/// A copy costs one increment; the first `Get` of a shared array copies all of it. A row index or
/// column out of range ends the process (`RaiseOutOfRange`). Arrays that share storage belong to
/// one thread at a time.
class KTSOVUGEOM_API mdl_JaggedArray {
  public:
    /// No rows.
    mdl_JaggedArray() = default;
    /// `rows` rows and `values` values, all zero: every value is in the last row. A negative number
    /// is 0.
    mdl_JaggedArray(int rows, int values);
    /// Copies of `rows` offsets and `values` values. A negative number is 0.
    mdl_JaggedArray(int rows, int values, const int* rowOffsets, const double* allValues);
    /// Reads the body of a record; offsets that fit no values are kept.
    explicit mdl_JaggedArray(cls_ReadVisitor& visitor);

    [[nodiscard]] int Rows() const noexcept { return static_cast<int>(Offsets().size()); }
    /// Number of values, those in no row counted.
    [[nodiscard]] int Size() const noexcept { return static_cast<int>(Values().size()); }
    /// Number of values in `row`.
    [[nodiscard]] int RowLength(int row) const noexcept;
    /// The values of `row`, valid until this array, or a copy that shares it, is written or
    /// destroyed.
    [[nodiscard]] std::span<const double> Row(int row) const noexcept;
    /// The values of `row` as a list of its own.
    [[nodiscard]] cow_List<double> RowList(int row) const;
    /// The value at (row, column), for reading or for writing; `Get` detaches.
    [[nodiscard]] double ConstGet(int row, int column) const noexcept;
    [[nodiscard]] double& Get(int row, int column);

    /// The offsets as given and all values; valid as `Row`.
    [[nodiscard]] std::span<const int> Offsets() const noexcept;
    [[nodiscard]] std::span<const double> Values() const noexcept;

    /// True when offsets and values are equal, number by number (a NaN equals nothing).
    [[nodiscard]] bool operator==(const mdl_JaggedArray& other) const noexcept;

    /// 35:5, the one class of component 35 that is not the foundation's own.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(35, 5); }
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept { return TypeId(); }
    /// Reads an array from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Destroys what `Ctor` built.
    static void CowDtor(void* array);
    /// Writes "DDBoffsetValues", a list of integers, and "DDBvaluesValues", a list of doubles; they
    /// are the whole body of the record, one right after the other.
    void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    /// Exactly as large as what they hold: archives keep many small arrays.
    struct Content {
        std::vector<int, omi_Allocator<int>> offsets;
        std::vector<double, omi_Allocator<double>> values;
    };
    struct Extent {
        std::size_t begin;
        std::size_t end;
    };

    [[nodiscard]] Extent ExtentOf(int row) const noexcept;
    [[nodiscard]] std::size_t IndexOf(int row, int column) const noexcept;

    cow_COW<Content> content;  ///< null for an array without rows and values
};
