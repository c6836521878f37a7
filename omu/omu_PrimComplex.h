#pragma once

#include "foundation/coreutils/omi_complex.h"
#include "omu/omu_Primitive.h"

/// A complex number, tag `x`; equal when both parts are.
class KTSOVUGEOM_API omu_PrimComplex : public omu_Primitive {
  public:
    /// 0 unless told.
    explicit omu_PrimComplex(const omi_complex& number = {}) noexcept
        : omu_Primitive(omu_PrimTag::kComplex), value(number) {}
    /// Reads the record of a complex number.
    explicit omu_PrimComplex(cls_ReadVisitor& visitor);

    [[nodiscard]] const omi_complex& Value() const noexcept { return value; }

    /// "complex".
    [[nodiscard]] cow_String TypeString() const override;
    /// The parts with up to 15 significant digits and the sign of the imaginary one: "1-2j",
    /// "0+0j". An imaginary -0.0 shows as +0, and a NaN has no sign.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimComplex* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "_real" and "_imaginary".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:24.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 24);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    omi_complex value;
};
