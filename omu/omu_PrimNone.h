#pragma once

#include "omu/omu_Primitive.h"

/// The `None` of scripts, tag `n`: has no value and equals every other one.
class KTSOVUGEOM_API omu_PrimNone : public omu_Primitive {
  public:
    omu_PrimNone() noexcept : omu_Primitive(omu_PrimTag::kNone) {}
    /// Reads the record, which has no fields.
    explicit omu_PrimNone(cls_ReadVisitor& visitor);

    /// "None".
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimNone* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;

    /// 19:27.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 27);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};
