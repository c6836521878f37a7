#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// What a database keeps of a clearance check besides the pairs and their annotations.
struct hst_CheckRecord {
    double gap = 0;    ///< the required clearance, in model units
    double touch = 0;  ///< the length within which surfaces count as touching
    double seconds = 0;
    unsigned pairsChecked = 0;
    std::vector<std::string> parts;  ///< the names of all, in the order of the results' numbers
    std::set<std::string> flat;      ///< parts without area
    std::set<std::string> unclear;   ///< parts of which it was not clear what lies inside

    hst_CheckRecord() = default;
    /// Reads the record of a check; what it lacks stays empty.
    explicit hst_CheckRecord(cls_ReadVisitor& visitor);

    /// Whether the numbers can be those of a check.
    [[nodiscard]] bool IsSound() const noexcept;

    [[nodiscard]] static std::uint32_t TypeId() noexcept;
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept { return TypeId(); }
    /// Reads a record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_gap", "_touch", "_seconds", "_pairsChecked", "_parts", "_flat", "_unclear".
    void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};
