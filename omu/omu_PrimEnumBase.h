#pragma once

#include <cstdint>

#include "cow/cow_Map.h"
#include "omu/omu_Primitive.h"

/// One name of an enumeration. Tables of them stand in their stored order, which need not be that
/// of the values, and end with an empty entry; they live as long as the library.
struct omu_EnumEntry {
    const char* name = nullptr;
    std::int32_t value = 0;
};

/// An enumerated value, tag `c`, known to scripts by its name: the base of `omu_PrimEnum`, and by
/// itself a symbolic constant, which is permitted no name but its own. Two of them are equal when
/// their current names are.
///
/// The value is the enumerator as a 32-bit unsigned number (-2 is 4294967294), of a symbolic
/// constant its id in `omu_SymbolicConstantTable`.
class KTSOVUGEOM_API omu_PrimEnumBase : public omu_Primitive {
  public:
    /// The constant "_UNSPECIFIED".
    omu_PrimEnumBase() noexcept : omu_PrimEnumBase(nullptr, 0) {}
    /// The symbolic constant `name`. One that the table does not know raises
    /// `omu_ValueErrorException`.
    explicit omu_PrimEnumBase(const cow_String& name);
    /// Reads the record of a constant; a name that the table does not know raises
    /// `omu_ValueErrorException`.
    explicit omu_PrimEnumBase(cls_ReadVisitor& visitor);
    omu_PrimEnumBase(const omu_PrimEnumBase&) = default;

    /// The permissible names with their values.
    [[nodiscard]] virtual cow_Map<cow_String, unsigned> PermissibleValues() const;
    [[nodiscard]] unsigned EnumValue() const noexcept { return currentValue; }
    /// The name of the current value.
    [[nodiscard]] cow_String CurrentName() const;
    /// Takes the value of `name`; false, and nothing is changed, when it is not permitted.
    bool SetName(const cow_String& name);

    /// The permissible names in the order of the map: "A", "A or B", "A, B or C".
    [[nodiscard]] cow_String TypeString() const override;
    /// The current name.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimEnumBase* Copy() const override;
    /// All enumerations are archived under the class of the base, so that a field of any kind reads
    /// one back as a symbolic constant.
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes the current name as "_value".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:28.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 28);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    /// Where a name came from that is to become a value; selects the message.
    enum class Origin { String, Record, Enumeration };

    /// A value of the enumeration `names`; null: a symbolic constant.
    omu_PrimEnumBase(const omu_EnumEntry* names, std::uint32_t initial) noexcept
        : omu_Primitive(omu_PrimTag::kEnum), table(names), currentValue(initial) {}
    /// Takes the value over and keeps its own table.
    omu_PrimEnumBase& operator=(const omu_PrimEnumBase& other) noexcept {
        currentValue = other.currentValue;
        return *this;
    }

    /// The entry of a value or a name; null when `names` has none.
    [[nodiscard]] static const omu_EnumEntry* Find(const omu_EnumEntry* names,
                                                   std::int32_t wanted) noexcept;
    [[nodiscard]] static const omu_EnumEntry* Find(const omu_EnumEntry* names,
                                                   const cow_String& wanted) noexcept;
    /// The value of `name`, or of `number` itself; raises `omu_ValueErrorException` when it is not
    /// permitted.
    [[nodiscard]] static std::uint32_t Require(const omu_EnumEntry* names, const cow_String& name,
                                               Origin origin);
    [[nodiscard]] static std::uint32_t Require(const omu_EnumEntry* names, std::int32_t number);
    /// The name that a record holds.
    [[nodiscard]] static cow_String ReadName(cls_ReadVisitor& visitor);

    /// Takes `number` when it is permitted.
    bool SetNumber(std::int32_t number) noexcept;

  private:
    const omu_EnumEntry* table;
    std::uint32_t currentValue;
};
