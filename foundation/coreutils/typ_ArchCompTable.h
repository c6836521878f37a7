#pragma once

#include <cstdint>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"
#include "foundation/coreutils/cow_String.h"

/// What a row of an archive component's class table stands for.
enum typ_ArchRowKindEnm : std::uint32_t {
    typ_EMPTY_ROW = 0,
    typ_EXCEPTION_CLASS = 4,
    typ_PERSISTENT_CLASS = 7,
};

/// Builds a type id: the archive component id in the high 16 bits, the row in the low 16.
[[nodiscard]] constexpr std::uint32_t typ_TypeId(std::uint32_t component, std::uint32_t row) {
    return component << 16 | row;
}

/// The parent of a class without a parent in an application component: component 0, row 1.
inline constexpr std::uint32_t typ_NO_PARENT = 1;

/// One class of an archive component. Rows keep their place for good; row 0 is empty, so that rows
/// count from 1.
struct typ_ArchRow {
    std::uint32_t kind = typ_EMPTY_ROW;    ///< a `typ_ArchRowKindEnm`
    std::uint32_t parent = typ_NO_PARENT;  ///< type id of the archive parent
    const char* name = nullptr;            ///< class name; null for an empty row
};

/// The class table of one archive component: a static table of its module and the row count.
struct typ_ArchCompEntry {
    const typ_ArchRow* rows = nullptr;
    int rowCount = 0;
};

/// The process-wide table of archive components, through which archives map a type id to a class
/// name and to its parent. It keeps copies: nothing points into a module that was unloaded.
class KTSBASCOREUTILS_API typ_ArchCompTable {
  public:
    /// Records a copy of `entry` under component `id`; an earlier entry of that id is replaced.
    static void InsertEntry(unsigned short id, typ_ArchCompEntry entry);
    /// Forgets component `id`; nothing when it is unknown.
    static void WithdrawEntry(unsigned short id) noexcept;

    /// The class name of `typeId`, "" when it is unknown or its row is empty.
    [[nodiscard]] static cow_String Name(std::uint32_t typeId);
    /// The kind of the row (`typ_ArchRowKindEnm`), `typ_EMPTY_ROW` when it is unknown.
    [[nodiscard]] static std::uint32_t Kind(std::uint32_t typeId) noexcept;
    /// The parent's type id, `typ_NO_PARENT` when `typeId` is unknown.
    [[nodiscard]] static std::uint32_t Parent(std::uint32_t typeId) noexcept;
    /// True when `ancestor` is `typeId` itself or is reached from it through parents. Circular
    /// tables end the walk with false.
    [[nodiscard]] static bool IsParent(std::uint32_t ancestor, std::uint32_t typeId) noexcept;
    /// Number of rows of component `id`, 0 when it is unknown.
    [[nodiscard]] static int RowCount(unsigned short id) noexcept;
};
