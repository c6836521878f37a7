#pragma once

#include <span>

#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_ClassRegistrar.h"

/// One class of a module: the function that describes it and the flags of its registration.
struct cls_MetadataRow {
    cls_InitializeMetadataFunction function;
    unsigned flags;
};

/// What one module registers with the foundation: its archive component and the metadata of its
/// classes, in the order of the table. Both calls of the start-up may throw; `Withdraw` undoes
/// whatever was done of them.
class KTSBASSHARED_API cls_ModuleRegistration {
  public:
    /// Component `componentId` with the class table `classTable`, and the metadata of the classes
    /// in `metadata`; both tables outlive this object.
    constexpr cls_ModuleRegistration(unsigned short componentId, typ_ArchCompEntry classTable,
                                     std::span<const cls_MetadataRow> metadata) noexcept
        : component(componentId), entry(classTable), rows(metadata) {}

    /// Records the class table under the component's id.
    void InsertComponent() const;
    /// Hands every row of the table to the metadata registrar.
    void RegisterClasses() const;
    /// Takes the metadata and the component out again, so that the foundation keeps no pointer into
    /// the module.
    void Withdraw() const noexcept;

    /// The class table.
    [[nodiscard]] constexpr typ_ArchCompEntry Entry() const noexcept { return entry; }

  private:
    unsigned short component;
    typ_ArchCompEntry entry;
    std::span<const cls_MetadataRow> rows;
};
