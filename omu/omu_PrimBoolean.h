#pragma once

#include <concepts>

#include "omu/omu_Primitive.h"

/// A truth value, tag `b`; never equal to a number.
class KTSOVUGEOM_API omu_PrimBoolean : public omu_Primitive {
  public:
    /// False unless told. (Exactly `bool`: numbers and pointers do not convert.)
    omu_PrimBoolean() noexcept : omu_PrimBoolean(false) {}
    template <std::same_as<bool> Boolean>
    explicit omu_PrimBoolean(Boolean boolean) noexcept
        : omu_Primitive(omu_PrimTag::kBoolean), value(boolean) {}
    /// Reads the record of a truth value.
    explicit omu_PrimBoolean(cls_ReadVisitor& visitor);

    [[nodiscard]] bool Value() const noexcept { return value; }

    /// "Boolean".
    [[nodiscard]] cow_String TypeString() const override;
    /// "True" or "False".
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimBoolean* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "_value".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:23.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 23);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    bool value;
};
